#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>

#include "cli/Arguments.h"
#include "cli/ConfigurationFile.h"
#include "cli/Refusals.h"
#include "cli/Suggestions.h"
#include "cli/Verb.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

/// Something to say about a file. A note does not keep the file from doing what it says.
struct Complaint {
    int line;  ///< 0 for what is not there
    std::string key;
    std::string text;
    bool note = false;
};

/// The simulator's sizes and rates are computed from one another. A load hands those of the chosen speed mode to the
/// design in one go, with FG_CAMERASIMULATOR_SELECT_MODE, and that is where they are refused; one by one they would
/// change each other. What belongs to another mode is no error, as long as some mode accepts it.
struct SimulatorValue {
    std::string_view key;
    double least;
    double most;
};
constexpr double AnyRate = std::numeric_limits<double>::infinity();
constexpr double NoRate = std::numeric_limits<double>::denorm_min();
constexpr std::array SimulatorValues{
    SimulatorValue{"FG_CAMERASIMULATOR_WIDTH", 1, 294920},
    SimulatorValue{"FG_CAMERASIMULATOR_LINE_GAP", 0, 294920},
    SimulatorValue{"FG_CAMERASIMULATOR_HEIGHT", 1, 65536},
    SimulatorValue{"FG_CAMERASIMULATOR_FRAME_GAP", 0, 65535},
    SimulatorValue{"FG_CAMERASIMULATOR_PIXEL_FREQUENCY", 0, 4000},
    SimulatorValue{"FG_CAMERASIMULATOR_LINERATE", NoRate, AnyRate},
    SimulatorValue{"FG_CAMERASIMULATOR_FRAMERATE", NoRate, AnyRate},
};

bool isSimulatorValue(std::string_view key) {
    return std::any_of(SimulatorValues.begin(), SimulatorValues.end(),
                       [key](const SimulatorValue& one) { return one.key == key; });
}

double numberOf(const Value& value) {
    return std::visit(
        [](const auto& held) -> double {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(held)>>) {
                return static_cast<double>(held);
            } else {
                return std::numeric_limits<double>::quiet_NaN();
            }
        },
        value);
}

/// Looks for what a load does not tell: it stops at the first missing key, and keeps refused values to itself.
class Checker {
public:
    Checker(Session& session, const std::filesystem::path& path)
        : session_(session), applet_(session.applet()), path_(path), file_(path), known_(savedState(applet_)) {}

    std::vector<Complaint> check() {
        checkName();
        checkHeader();
        checkKeys();
        const bool loads = complaints_.empty();
        checkLines();
        if (loads) {
            checkValues();
        } else {
            checkNumbers();
        }
        std::stable_sort(complaints_.begin(), complaints_.end(),
                         [](const Complaint& left, const Complaint& right) { return left.line < right.line; });
        return complaints_;
    }

private:
    void complain(int line, const std::string& key, const std::string& text, bool note = false) {
        complaints_.push_back({line, key, text, note});
    }

    void checkName() {
        if (path_.string().find(".mcf") == std::string::npos) {
            complain(0, "", "the name must contain .mcf");
        }
    }

    void checkHeader() {
        for (const char* key : {"Hersteller", "Typ", "AktivePort"}) {
            if (file_.findInHeader(key) == nullptr) {
                complain(0, key, "the header lacks this key");
            }
        }
        const ConfigurationLine* type = file_.findInHeader("Typ");
        const std::string expected = session_.library().infoText(QuillonInfoName);
        if (type != nullptr && type->value != expected) {
            complain(type->number, "Typ",
                     "the file is for the applet \"" + type->value + "\", not for \"" + expected + "\"");
        }
    }

    void checkKeys() {
        for (const ConfigurationLine& known : known_) {
            if (isLoaded(known.key) && file_.find(known.key) == nullptr) {
                complain(0, known.key,
                         "missing; at the start it is " + valueInWords(applet_, known) + nearbyText(known.key));
            }
        }
    }

    /// Where the key stands in a form that a load does not find.
    std::string nearbyText(const std::string& key) const {
        for (const ConfigurationLine& line : file_.lines()) {
            if (line.key != key && trimmed(line.key) == key) {
                return "; line " + std::to_string(line.number) + " has it with blanks, which hides it";
            }
            if (line.key == key && !line.inPort) {
                return "; line " + std::to_string(line.number) + " has it before [Port A], which hides it";
            }
        }
        return "";
    }

    void checkLines() {
        for (const int line : file_.overlongLines()) {
            complain(line, "", "the line has more than 255 characters and is read in pieces");
        }
        std::vector<std::string> names;
        for (const ConfigurationLine& known : known_) {
            names.push_back(known.key);
        }
        for (const ConfigurationLine& line : file_.lines()) {
            if (!line.inPort) {
                continue;
            }
            if (std::find(names.begin(), names.end(), trimmed(line.key)) == names.end()) {
                complain(line.number, line.key, "unknown key, not looked at" + didYouMean(line.key, names), true);
            } else if (line.key == trimmed(line.key) && file_.find(line.key)->number != line.number) {
                const std::string first = std::to_string(file_.find(line.key)->number);
                complain(line.number, line.key, "not looked at, since line " + first + " has the key already", true);
            }
        }
    }

    /// Values of a file that does not load: only whether they are values at all.
    void checkNumbers() {
        for (const ConfigurationLine& known : known_) {
            const ConfigurationLine* line = isLoaded(known.key) ? file_.find(known.key) : nullptr;
            if (line != nullptr) {
                parse(*line);
            }
        }
    }

    std::optional<std::pair<Parameter, Value>> parse(const ConfigurationLine& line) {
        const Parameter parameter = findParameter(applet_, line.key);
        const bool isWhole = parameter.kind == ParameterKind::Int || parameter.kind == ParameterKind::Int64;
        if (isWhole && !parseWholeNumber(line.value)) {
            complain(line.number, line.key,
                     "\"" + line.value + "\" is no whole number and is taken for what its beginning says");
            return std::nullopt;
        }
        try {
            return std::pair(parameter, parseValue(applet_, parameter, line.value));
        } catch (const UsageError& error) {
            complain(line.number, line.key, error.what());
            return std::nullopt;
        }
    }

    /// Loads the file, so that all values are in place together, and then sets each once more: what is refused now was
    /// refused without a word by the load.
    void checkValues() {
        loadConfiguration(applet_, path_);
        const std::size_t before = complaints_.size();
        for (const SimulatorValue& bounds : SimulatorValues) {
            checkSimulatorValue(*file_.find(std::string(bounds.key)), bounds);
        }
        // The mode is refused for a value of its own, which is told already.
        const bool simulatorIsBad = complaints_.size() != before;
        for (const ConfigurationLine& known : known_) {
            const ConfigurationLine* line = isLoaded(known.key) ? file_.find(known.key) : nullptr;
            if (line == nullptr || isSimulatorValue(known.key) ||
                (simulatorIsBad && known.key == "FG_CAMERASIMULATOR_SELECT_MODE")) {
                continue;
            }
            const auto parsed = parse(*line);
            if (parsed && !isText(parsed->first)) {
                checkValue(*line, parsed->first, parsed->second);
            }
        }
    }

    void checkValue(const ConfigurationLine& line, const Parameter& parameter, const Value& value) {
        if (const int code = writeValue(applet_, parameter, value); code != 0) {
            complain(line.number, line.key,
                     inWords(parameter, value) + " " +
                         inWords(explainSet(applet_, parameter, value, code, &session_.board())));
        }
    }

    static bool isText(const Parameter& parameter) { return parameter.kind == ParameterKind::String; }

    /// What no speed mode accepts. A load only puts these values in place, so that nothing else would tell.
    void checkSimulatorValue(const ConfigurationLine& line, const SimulatorValue& bounds) {
        const auto parsed = parse(line);
        if (!parsed) {
            return;
        }
        const double value = numberOf(parsed->second);
        if (!(value >= bounds.least && value <= bounds.most)) {
            const std::string range =
                bounds.most == AnyRate
                    ? "more than 0"
                    : client::shortest(bounds.least) + " to " +
                          inWords(parsed->first, parseValue(applet_, parsed->first, client::shortest(bounds.most)));
            complain(line.number, line.key,
                     inWords(parsed->first, parsed->second) + " is accepted in no speed mode\n  accepted: " + range);
        }
    }

    Session& session_;
    client::Applet& applet_;
    std::filesystem::path path_;
    ConfigurationFile file_;
    std::vector<ConfigurationLine> known_;
    std::vector<Complaint> complaints_;
};

void print(const std::filesystem::path& file, const std::vector<Complaint>& complaints, Console& console) {
    for (const Complaint& complaint : complaints) {
        const std::string place = file.string() + (complaint.line > 0 ? ":" + std::to_string(complaint.line) : "");
        const std::string kind = complaint.note ? console.outPainter.paint(Style::Faint, "note")
                                                : console.outPainter.paint(Style::Bad, "error");
        console.out << place << ": " << kind << ": " << complaint.key << (complaint.key.empty() ? "" : ": ")
                    << complaint.text << '\n';
    }
    if (complaints.empty()) {
        console.out << file.string() << ": no complaint\n";
    }
}

ExitStatus check(Session& session, Console& console, const std::filesystem::path& file) {
    const std::vector<Complaint> complaints = Checker(session, file).check();
    const bool sound = std::all_of(complaints.begin(), complaints.end(), [](const Complaint& one) { return one.note; });
    if (session.options().json) {
        Json list = emptyList();
        for (const Complaint& complaint : complaints) {
            append(list, object({{"line", complaint.line > 0 ? Json(complaint.line) : Json(nullptr)},
                                 {"key", complaint.key},
                                 {"kind", complaint.note ? "note" : "error"},
                                 {"text", complaint.text}}));
        }
        printJson(console.out, object({{"file", file.string()}, {"sound", sound}, {"complaints", list}}));
    } else {
        print(file, complaints, console);
    }
    return sound ? Done : Refused;
}

}  // namespace

void addCheckVerb(Verbs& verbs) {
    auto file = std::make_shared<std::filesystem::path>();
    Verb verb = verbs.add("check",
                          "Tell before a load what a configuration holds that a load would refuse or keep silent about",
                          "  quillon check conveyor.mcf\n"
                          "  quillon check conveyor.mcf --json",
                          [file](Session& session, Console& console) { return check(session, console, *file); });
    verb.add("FILE", file.get(), "File to check (.mcf)").required();
}

}  // namespace quillon::cli
