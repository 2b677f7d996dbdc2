#include <algorithm>
#include <map>

#include "cli/ConfigurationFile.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct DiffArguments {
    std::filesystem::path first;
    std::filesystem::path second;  ///< empty: the live state
};

struct Difference {
    std::string key;
    std::string first;
    std::string second;
    Json answer;
};

using State = std::map<std::string, ConfigurationLine>;

State stateOf(const std::vector<ConfigurationLine>& lines) {
    State state;
    for (const ConfigurationLine& line : lines) {
        if (line.inPort) {
            state.emplace(line.key, line);  // the first of a key counts
        }
    }
    return state;
}

std::string inWordsOrMissing(const client::Applet& applet, const State& state, const std::string& key) {
    const auto line = state.find(key);
    return line != state.end() ? valueInWords(applet, line->second) : "missing";
}

Json valueOrNull(const client::Applet& applet, const State& state, const std::string& key) {
    const auto line = state.find(key);
    return line != state.end() ? valueOf(applet, line->second) : Json(nullptr);
}

/// The differences in the order of the applet's own file, over the keys that a load looks at.
std::vector<Difference> differences(client::Applet& applet, const State& first, const State& second) {
    std::vector<Difference> found;
    for (const ConfigurationLine& known : savedState(applet)) {
        const std::string left = inWordsOrMissing(applet, first, known.key);
        const std::string right = inWordsOrMissing(applet, second, known.key);
        if (isLoaded(known.key) && left != right) {
            found.push_back({known.key, left, right,
                             object({{"name", known.key},
                                     {"first", valueOrNull(applet, first, known.key)},
                                     {"second", valueOrNull(applet, second, known.key)}})});
        }
    }
    return found;
}

ExitStatus diff(Session& session, Console& console, const DiffArguments& arguments) {
    client::Applet& applet = session.applet();
    const State first = stateOf(ConfigurationFile(arguments.first).lines());
    const bool live = arguments.second.empty();
    const State second = stateOf(live ? savedState(applet) : ConfigurationFile(arguments.second).lines());
    const std::vector<Difference> found = differences(applet, first, second);
    if (session.options().json) {
        Json list = emptyList();
        for (const Difference& difference : found) {
            append(list, difference.answer);
        }
        printJson(console, list);
        return Done;
    }
    if (found.empty()) {
        console.out << "no difference\n";
        return Done;
    }
    Rows rows{{"", arguments.first.string(), live ? "live state" : arguments.second.string()}};
    for (const Difference& difference : found) {
        rows.push_back({difference.key, difference.first, difference.second});
    }
    printRows(console.out, rows);
    return Done;
}

}  // namespace

void addDiffVerb(Verbs& verbs) {
    auto arguments = std::make_shared<DiffArguments>();
    Verb verb =
        verbs.add("diff", "Compare two configurations, or one with the live state, parameter by parameter",
                  "  quillon diff before.mcf after.mcf\n"
                  "  quillon diff conveyor.mcf                     with the start-up state\n"
                  "  quillon diff conveyor.mcf --mcf other.mcf     with what the applet makes of another file",
                  [arguments](Session& session, Console& console) { return diff(session, console, *arguments); });
    verb.add("FIRST", &arguments->first, "File (.mcf)").required();
    verb.add("SECOND", &arguments->second, "File (.mcf); the live state if there is none");
}

}  // namespace quillon::cli
