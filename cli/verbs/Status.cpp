#include <array>

#include "cli/Answers.h"
#include "cli/Looks.h"
#include "cli/Refusals.h"
#include "cli/Units.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct StatusArguments {
    bool watch = false;
    unsigned times = 0;  ///< with --watch; 0 is without end
    std::string interval = "1s";
};

struct StatusRow {
    std::string_view words;
    std::string_view parameter;
    std::string_view unit;  ///< where the applet publishes none
};

constexpr std::array statusRows{
    StatusRow{"Buffer fill level", "FG_FILLLEVEL", "%"},
    StatusRow{"Buffer overflow", "FG_OVERFLOW", ""},
    StatusRow{"Camera", "FG_CAMSTATUS", ""},
    StatusRow{"Camera signals", "FG_CAMSTATUS_EXTENDED", ""},
    StatusRow{"FPGA temperature", "FG_SYSTEMMONITOR_FPGA_TEMPERATURE", "°C"},
    StatusRow{"FPGA core voltage", "FG_SYSTEMMONITOR_FPGA_VCC_INT", "V"},
    StatusRow{"FPGA auxiliary voltage", "FG_SYSTEMMONITOR_FPGA_VCC_AUX", "V"},
    StatusRow{"FPGA block RAM voltage", "FG_SYSTEMMONITOR_FPGA_VCC_BRAM", "V"},
    StatusRow{"PCIe link width", "FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH", "lanes"},
    StatusRow{"PCIe link speed", "FG_SYSTEMMONITOR_CURRENT_LINK_SPEED", "GB/s"},
    StatusRow{"PCIe payload size", "FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE", "byte"},
    StatusRow{"PCIe generation 2", "FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE", ""},
    StatusRow{"Link partner generation 2", "FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE", ""},
    StatusRow{"Extension connector", "FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT", ""},
    StatusRow{"Alternative board", "FG_ALTERNATIVE_BOARD_DETECTION", ""},
    StatusRow{"FPGA serial number", "FG_SYSTEMMONITOR_FPGA_DNA", ""},
    StatusRow{"Digital inputs", "FG_DIGIO_INPUT", ""},
    StatusRow{"Image trigger", "FG_IMGTRIGGER_IS_BUSY", ""},
};

constexpr std::array cameraSignals{"pixel clock", "line valid",       "frame valid",
                                   "CC1",         "external trigger", "buffer overflow"};

/// The camera's status bits; the two highest are the fill level in quarters.
std::string cameraSignalsInWords(std::uint64_t bits) {
    std::string words;
    for (std::size_t bit = 0; bit < cameraSignals.size(); ++bit) {
        if ((bits >> bit & 1) != 0) {
            words += (words.empty() ? "" : ", ") + std::string(cameraSignals[bit]);
        }
    }
    const std::uint64_t quarter = bits >> 6 & 3;
    return (words.empty() ? "none" : words) + "; buffer in quarter " + std::to_string(quarter + 1) + " of 4";
}

std::string twelveInputs(std::uint64_t bits) {
    std::string words;
    for (unsigned input = 0; input < 12; ++input) {
        words += (input == 8 ? "  front " : "") + std::string((bits >> input & 1) != 0 ? "1" : "0");
    }
    return words + "  (input 0 first)";
}

std::string statusInWords(const StatusRow& row, const Parameter& parameter, const Value& value) {
    const Json json = toJson(value);
    const std::uint64_t bits = json.is_number_integer() ? json.get<std::uint64_t>() : 0;
    if (row.parameter == "FG_OVERFLOW") {
        return bits != 0 ? "yes, lines were lost" : "no";
    }
    if (row.parameter == "FG_CAMSTATUS") {
        return bits != 0 ? "present" : "not there";
    }
    if (row.parameter == "FG_CAMSTATUS_EXTENDED") {
        return cameraSignalsInWords(bits);
    }
    if (row.parameter == "FG_DIGIO_INPUT") {
        return twelveInputs(bits);
    }
    const std::string unit(row.unit);
    const bool plainNumber = json.is_number() && enumeratorOf(parameter, value).empty() && !unit.empty();
    return plainNumber ? numberInWords(value) + " " + unit : inWords(parameter, value);
}

Json answerOf(const StatusRow& row, const Parameter& parameter, const Value& value, int code,
              const std::string& words) {
    Json json = valueOf(parameter, code == 0 ? value : Value());
    if (!row.unit.empty() && !json.contains("unit")) {
        put(json, "unit", std::string(row.unit));
    }
    put(json, "words", words);
    if (code != 0) {
        put(json, "refused", toJson(explainGet(code)));
    }
    return json;
}

/// One look at everything; answers whether all of it could be read.
bool look(Session& session, Console& console) {
    session.applet();  // puts the design on the board
    const double time = session.board().signalTime();
    Rows rows{{"Board", "software board, no hardware; " + timeInWords(time) + " of its time have passed"}};
    Json json = object({{"board", "software board"}, {"time", inMicroseconds(time)}});
    bool complete = true;
    for (const StatusRow& row : statusRows) {
        const Parameter parameter = findParameter(session.applet(), row.parameter);
        Value value;
        const int code = readValue(session.applet(), parameter, value);
        complete = complete && code == 0;
        const std::string words = code == 0 ? statusInWords(row, parameter, value) : client::describeCode(code);
        rows.push_back({std::string(row.words), words});
        put(json, parameter.name, answerOf(row, parameter, value, code, words));
    }
    if (session.options().json) {
        printJson(console, json);
    } else {
        printRows(console.out, rows);
    }
    return complete;
}

ExitStatus status(Session& session, Console& console, const StatusArguments& arguments) {
    console.jsonPerLine = console.jsonPerLine || arguments.watch;
    bool complete = true;
    bool first = true;
    const double interval = parseSeconds(arguments.interval);
    constexpr double shortest = 0.01;
    constexpr double longest = 3600;
    if (interval < shortest || interval > longest) {
        throw UsageError("--interval " + arguments.interval + ": from 10ms to 3600s");
    }
    Looks looks(console.out, interval, arguments.watch ? arguments.times : 1);
    do {
        console.out << (first || session.options().json ? "" : "\n");
        first = false;
        complete = look(session, console) && complete;
    } while (looks.next());
    return complete ? Done : Refused;
}

}  // namespace

void addStatusVerb(Verbs& verbs) {
    auto arguments = std::make_shared<StatusArguments>();
    Verb verb =
        verbs.add("status", "Tell the state of buffer, camera, FPGA and PCIe link in words",
                  "  quillon status\n"
                  "  quillon status --watch                     again every second, until interrupted\n"
                  "  quillon status --watch --times 3 --interval 500ms\n"
                  "  quillon status --watch --json              a line of JSON for each look",
                  [arguments](Session& session, Console& console) { return status(session, console, *arguments); });
    verb.add("--watch", &arguments->watch, "Look again and again");
    verb.add("--times", &arguments->times, "With --watch: this many looks").shownAs("N");
    verb.add("--interval", &arguments->interval, "With --watch: time between looks, as 500ms; a bare number is seconds")
        .shownAs("TIME");
}

}  // namespace quillon::cli
