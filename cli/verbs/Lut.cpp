#include <algorithm>
#include <array>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/Chart.h"
#include "cli/LookupTableFile.h"
#include "cli/MemoryFile.h"
#include "cli/PartFile.h"
#include "cli/Provenance.h"
#include "cli/Refusals.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

constexpr std::int32_t CustomType = 0;
constexpr std::size_t TableSize = 16384;

struct LutArguments {
    std::string load;
    std::string save;
    std::string picture;
    std::string range;  ///< of the entries to tell in JSON
    std::vector<std::string> compare;
};

struct Channel {
    const char* name;
    int id;
    char mark;
    Colour colour;
};

constexpr std::array channels{Channel{"red", 300009, 'R', {0.8, 0.1, 0.1}},
                              Channel{"green", 300010, 'G', {0.1, 0.6, 0.1}},
                              Channel{"blue", 300011, 'B', {0.1, 0.2, 0.8}}};

using Table = std::vector<std::uint32_t>;
using Tables = std::array<Table, channels.size()>;

void expect(client::Applet& applet, const std::string& what, int code, int id) {
    if (code != 0) {
        const Refusal refusal = explainSet(applet, findParameter(applet, std::to_string(id)), code);
        refuse(what + " " + inWords(refusal), refusal);
    }
}

Tables readTables(client::Applet& applet) {
    Tables tables;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        tables[i].resize(TableSize);
        expect(applet, "the " + std::string(channels[i].name) + " table", applet.getField(channels[i].id, tables[i]),
               channels[i].id);
    }
    return tables;
}

void loadTables(client::Applet& applet, const std::string& file) {
    requireTable(file);
    expect(applet, "FG_LUT_TYPE", applet.setInt(FG_LUT_TYPE, CustomType), FG_LUT_TYPE);
    expect(applet, file, applet.setText(FG_LUT_CUSTOM_FILE, file), FG_LUT_CUSTOM_FILE);
}

/// The applet remembers the name, which nothing asks for.
void saveTables(client::Applet& applet, const std::string& file) {
    const MemoryFile memory("tables.lut");
    expect(applet, file, applet.setText(FG_LUT_SAVE_FILE, memory.path().string()), FG_LUT_SAVE_FILE);
    writeWhole(file, memory.contentFor(file));
}

Curve curveOf(const std::string& name, char mark, const Colour& colour, const Table& table) {
    Curve curve{name, mark, colour, {}};
    for (std::size_t i = 0; i < table.size(); ++i) {
        curve.points.emplace_back(static_cast<double>(i), static_cast<double>(table[i]));
    }
    return curve;
}

std::int32_t whole(client::Applet& applet, int id) {
    std::int32_t value = 0;
    expect(applet, "the state of the table", applet.getInt(id, value), id);
    return value;
}

/// What a table of so many bits counts to.
double largest(std::int32_t bits) {
    return static_cast<double>((std::int64_t{1} << bits) - 1);
}

/// The parameters that the curve hangs on, besides entries that were set one by one.
std::vector<std::string> namesOf(std::int32_t type) {
    std::vector<std::string> names{"FG_LUT_ENABLE", "FG_LUT_TYPE"};
    if (type == CustomType) {
        names.emplace_back("FG_LUT_CUSTOM_FILE");
    } else {
        names.insert(names.end(),
                     {"FG_PROCESSING_OFFSET", "FG_PROCESSING_GAIN", "FG_PROCESSING_GAMMA", "FG_PROCESSING_INVERT"});
    }
    return names;
}

Chart chartOf(Session& session, const Tables& tables) {
    client::Applet& applet = session.applet();
    const std::int32_t in = whole(applet, FG_LUT_IN_BITS);
    const std::int32_t out = whole(applet, FG_LUT_OUT_BITS);
    const bool isOn = whole(applet, FG_LUT_ENABLE) == FG_ON;
    Chart chart{isOn ? "Lookup table" : "Lookup table, switched off",
                {"input, " + std::to_string(in) + " bit", 0, largest(in)},
                {"output, " + std::to_string(out) + " bit", 0, largest(out)},
                {}};
    if (!isOn) {
        chart.captions.emplace_back(
            "The table is switched off (FG_LUT_ENABLE): pixels pass it by, and the curve is the one that it would "
            "have.");
    }
    const std::vector<std::string> origin = provenance(session, namesOf(whole(applet, FG_LUT_TYPE)));
    chart.captions.insert(chart.captions.end(), origin.begin(), origin.end());
    if (tables[0] == tables[1] && tables[1] == tables[2]) {
        chart.curves.push_back(curveOf("red, green, blue", '*', {0.2, 0.2, 0.2}, tables[0]));
        return chart;
    }
    for (std::size_t i = 0; i < channels.size(); ++i) {
        chart.curves.push_back(curveOf(channels[i].name, channels[i].mark, channels[i].colour, tables[i]));
    }
    chart.captions.emplace_back(
        "R red, G green, B blue; the tables of the applet. A loaded file gives the design its blue curve for all three "
        "colours, and entries set one by one each their own.");
    return chart;
}

/// "7" or "0..255".
Run parseRange(const std::string& text) {
    const std::size_t dots = text.find("..");
    const auto first = parseWholeNumber(trimmed(text.substr(0, dots)));
    const auto last = dots == std::string::npos ? first : parseWholeNumber(trimmed(text.substr(dots + 2)));
    if (!first || !last || first->negative || last->negative || first->magnitude > last->magnitude ||
        last->magnitude >= TableSize) {
        throw UsageError("\"" + text + "\": entries are a number from 0 to " + std::to_string(TableSize - 1) +
                         ", or two as in 0..255");
    }
    return {static_cast<std::uint32_t>(first->magnitude),
            static_cast<std::uint32_t>(last->magnitude - first->magnitude + 1)};
}

Json answerOf(const Table& table, const std::optional<Run>& run) {
    Json json = object({});
    if (run) {
        const auto begin = table.begin() + run->first;
        put(json, "index", run->first);
        put(json, "value", Table(begin, begin + run->count));
    } else {
        put(json, "value", nullptr);
    }
    put(json, "table", inShort(table));
    return json;
}

Json toJson(const Tables& tables, const std::optional<Run>& run) {
    Json json;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        put(json, channels[i].name, answerOf(tables[i], run));
    }
    return json;
}

ExitStatus show(Session& session, Console& console, const LutArguments& arguments) {
    const auto run = arguments.range.empty() ? std::nullopt : std::optional(parseRange(arguments.range));
    client::Applet& applet = session.applet();
    if (!arguments.load.empty()) {
        loadTables(applet, arguments.load);
    }
    if (!arguments.save.empty()) {
        saveTables(applet, arguments.save);
    }
    const Tables tables = readTables(applet);
    const Chart chart = chartOf(session, tables);
    if (!arguments.picture.empty()) {
        writePicture(chart, arguments.picture);
    }
    if (session.options().json) {
        Json json = toJson(tables, run);
        put(json, "enabled", whole(applet, FG_LUT_ENABLE) == FG_ON);
        printJson(console, json);
        return Done;
    }
    const std::size_t width = lineWidth();
    constexpr std::size_t margin = 8;  // of the numbers beside the curve
    for (const std::string& line :
         asText(chart, std::clamp<std::size_t>(width, margin + 16, margin + 64) - margin, 16)) {
        console.out << line << '\n';
    }
    console.out << chart.y.label << " (upwards) over " << chart.x.label << ".\n";
    for (const std::string& caption : chart.captions) {
        console.out << foldLines(caption, width) << '\n';
    }
    return Done;
}

/// How one colour of two files differs.
struct ChannelDifference {
    std::size_t count = 0;
    std::size_t first = 0;
    std::size_t farthest = 0;
    std::int64_t most = 0;
};

ChannelDifference compareTables(const Table& left, const Table& right) {
    ChannelDifference difference;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const std::int64_t distance = static_cast<std::int64_t>(right[i]) - static_cast<std::int64_t>(left[i]);
        if (distance == 0) {
            continue;
        }
        difference.first = difference.count == 0 ? i : difference.first;
        ++difference.count;
        if (std::abs(distance) > std::abs(difference.most)) {
            difference.most = distance;
            difference.farthest = i;
        }
    }
    return difference;
}

ExitStatus compare(Session& session, Console& console, const LutArguments& arguments) {
    loadTables(session.scratch().applet(), arguments.compare[0]);
    const Tables first = readTables(session.scratch().applet());
    loadTables(session.scratch().applet(), arguments.compare[1]);
    const Tables second = readTables(session.scratch().applet());
    Rows rows;
    Json json;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const ChannelDifference difference = compareTables(first[i], second[i]);
        const std::string words =
            difference.count == 0 ? "no difference"
                                  : std::to_string(difference.count) + " entries differ, the first is " +
                                        std::to_string(difference.first) + "; most at " +
                                        std::to_string(difference.farthest) + ", by " + std::to_string(difference.most);
        rows.push_back({channels[i].name, words});
        Json told = object({{"differing", difference.count}});
        if (difference.count > 0) {
            put(told, "first", difference.first);
            put(told, "farthest", difference.farthest);
            put(told, "by", difference.most);
        }
        put(json, channels[i].name, told);
    }
    if (session.options().json) {
        printJson(console, json);
    } else {
        printRows(console.out, rows);
    }
    return Done;
}

}  // namespace

void addLutVerb(Verbs& verbs) {
    auto arguments = std::make_shared<LutArguments>();
    Verb verb = verbs.add("lut", "Draw the lookup table; load, save and compare lookup table files",
                          "  quillon lut                                    the start-up curve in the terminal\n"
                          "  quillon lut -o curve.png --mcf dark.mcf        the curve of a configuration as a picture\n"
                          "  quillon lut --load warm.lut                    a file's curves\n"
                          "  quillon lut --save linear.lut                  the tables as a file\n"
                          "  quillon lut --json --range 0..255              entries for another program\n"
                          "  quillon lut --compare warm.lut cold.lut        where two files differ",
                          [arguments](Session& session, Console& console) {
                              return arguments->compare.empty() ? show(session, console, *arguments)
                                                                : compare(session, console, *arguments);
                          });
    verb.add("--load", &arguments->load, "Load this file (.lut) first").shownAs("FILE");
    verb.add("--save", &arguments->save, "Save the tables to this file (.lut)").shownAs("FILE");
    verb.add("-o,--output", &arguments->picture, "Draw a picture (.png)").shownAs("FILE");
    verb.add("--range", &arguments->range, "With --json: tell these entries (7, 0..255), not the ends alone")
        .shownAs("A..B");
    verb.add("--compare", &arguments->compare, "Compare two files (.lut)").shownAs("FILE").words(2);
}

}  // namespace quillon::cli
