#include "cli/Completions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

#include "cli/Arguments.h"
#include "quillon/Enumerators.h"
#include "quillon/PublicEvents.h"
#include "quillon/PublicParameters.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

constexpr std::string_view beltProfiles = "100mm/s 500mm/s 1m/s 30m/min";
constexpr std::string_view faults = "line:1:drop line:every:invert frame:1:lose frame:1:stall=5ms camera:0s- link:0s-";

constexpr std::array rules{
    CompletionRule{"get", "", "parameters"},
    CompletionRule{"set", "", "assignments"},
    CompletionRule{"describe", "", "parameters"},
    CompletionRule{"registers", "", "registers"},
    CompletionRule{"info", "", "constants"},
    CompletionRule{"help", "", "verbs"},
    CompletionRule{"manual", "", "verbs"},
    CompletionRule{"manual", "--pages", "folders"},
    CompletionRule{"completion", "", "bash zsh"},
    CompletionRule{"load", "", "(.mcf)"},
    CompletionRule{"save", "", "(.mcf)"},
    CompletionRule{"check", "", "(.mcf)"},
    CompletionRule{"diff", "", "(.mcf)"},
    CompletionRule{"demo", "--example", "(.mcf)"},
    CompletionRule{"demo", "--pictures", "folders"},
    CompletionRule{"list", "--group", "groups"},
    CompletionRule{"lut", "--load", "(.lut)"},
    CompletionRule{"lut", "--save", "(.lut)"},
    CompletionRule{"lut", "--compare", "(.lut)"},
    CompletionRule{"lut", "--range", "0..255 0..16383"},
    CompletionRule{"grab", "--clock", "free real"},
    CompletionRule{"grab", "--graphics", "sixel blocks"},
    CompletionRule{"run", "", "files"},
    CompletionRule{"wait", "", "events"},
    CompletionRule{"find", "", "parameters"},
    CompletionRule{"watch", "", "parameters"},
    CompletionRule{"apply", "", "(.mcf)"},
    CompletionRule{"plan", "--output", "(.mcf)"},
    CompletionRule{"plan", "-o", "(.mcf)"},
    CompletionRule{"plan", "--pixel-format", "RGB8 RGB10 RGB12 RGB14 RGB16"},
    CompletionRule{"plan", "--format", "FG_COL24 FG_COL30 FG_COL36 FG_COL42 FG_COL48"},
    CompletionRule{"timeline", "", "100us 1ms 10ms 100ms"},
    CompletionRule{"timeline", "--signals",
                   "ExSync ExSync2 Flash LVAL FVAL GPI FrontGPI CameraTrigger GPO FrontGPO events"},
    CompletionRule{"scene", "", "files"},
    CompletionRule{"serve", "", "gige"},
    CompletionRule{"serve", "--interface", "lo"},
    CompletionRule{"serve", "--rate", "100MB/s 400MB/s 1GB/s"},
    CompletionRule{"serve", "--user-set", "(.mcf)"},
    CompletionRule{"belt", "", beltProfiles},
    CompletionRule{"fault", "", faults},
    CompletionRule{"", "--set", "assignments"},
    CompletionRule{"", "--scene", "files"},
    CompletionRule{"", "--belt", beltProfiles},
    CompletionRule{"", "--encoder", "10/mm 25/mm 100/mm"},
    CompletionRule{"", "--fault", faults},
    CompletionRule{"", "--dma-rate", "100MB/s 1GB/s unlimited"},
    CompletionRule{"", "--mcf", "(.mcf)"},
    CompletionRule{"", "--save", "(.mcf)"},
    CompletionRule{"", "--design", "(.tav)"},
    CompletionRule{"", "--softboard", "folders"},
};

Words optionNames(const Description& verb) {
    Words names;
    for (const Description::Option& option : verb.options) {
        for (const std::string& name : option.longNames) {
            names.push_back("--" + name);
        }
    }
    return names;
}

template <typename Table>
Words namesIn(const Table& table) {
    Words names;
    for (const auto& row : table) {
        names.emplace_back(row.name);
    }
    return names;
}

/// Labels of groups and names of enumerators, as the applet publishes them.
struct Published {
    Words groups;
    std::vector<std::pair<std::string, Words>> enumerators;

    void add(const std::vector<client::ParameterRecord>& records) {
        for (const client::ParameterRecord& record : records) {
            if (record.isGroup()) {
                groups.push_back(client::utf8(record.label));
                add(record.children);
            } else if (record.kind == client::RecordKind::Enum) {
                enumerators.emplace_back(record.symbol, namesIn(record.entries));
            }
        }
    }
};

/// Registers are parameters of an applet that was told to show them when it opened.
Words registerNames(client::Applet& applet) {
    constexpr std::string_view prefix = "DRA_";
    Words names;
    for (const std::string& name : parameterNames(applet)) {
        if (name.starts_with(prefix)) {
            names.push_back(name.substr(prefix.size()));
        }
    }
    return names;
}

Words registerNames(Session& session) {
    if (session.lasts()) {
        return registerNames(session.applet());
    }
    Session other(session.options());
    other.enableDirectRegisterAccess();
    return registerNames(other.applet());
}

Words eventNames() {
    Words names;
    for (const PublicEvent& event : PublicEvents) {
        names.emplace_back(event.publicName);
    }
    return names;
}

/// Files with a suffix, and folders, whose names begin so.
Words fileNames(const std::string& beginning, const std::string& suffix) {
    const std::size_t slash = beginning.rfind('/');
    const std::string folder = slash != std::string::npos ? beginning.substr(0, slash + 1) : "";
    Words names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder.empty() ? "." : folder, ignored)) {
        const std::string name = folder + entry.path().filename().string();
        const bool isHidden = entry.path().filename().string().starts_with('.');
        if (!name.starts_with(beginning) || (isHidden && beginning == folder)) {
            continue;
        }
        if (entry.is_directory(ignored)) {
            names.push_back(name + "/");
        } else if (suffix != "/" && name.ends_with(suffix)) {
            names.push_back(name);
        }
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace

std::span<const CompletionRule> completionRules() {
    return rules;
}

/// All names of an option: "-o", "--output". None for what is no option.
Words namesOf(const Description::Option& option) {
    Words names;
    std::istringstream text(option.name);
    for (std::string name; std::getline(text, name, ',');) {
        if (name.starts_with('-')) {
            names.push_back(name);
        }
    }
    return names;
}

Words optionsOf(const Description& command, const std::string& verb) {
    Words names = optionNames(command);
    const auto described = std::ranges::find(command.verbs, verb, &Description::name);
    if (described != command.verbs.end()) {
        const Words own = optionNames(*described);
        names.insert(names.end(), own.begin(), own.end());
        std::ranges::sort(names);
        names.erase(std::unique(names.begin(), names.end()), names.end());
    }
    return names;
}

std::vector<std::pair<std::string, Words>> knownWords(const Description& command, Session& session) {
    Published published;
    published.add(session.applet().parameterInfo());
    std::vector<std::pair<std::string, Words>> known{
        {"verbs", namesIn(command.verbs)},        {"parameters", namesIn(PublicParameters)},
        {"constants", namesIn(NamedEnumerators)}, {"groups", published.groups},
        {"registers", registerNames(session)},    {"events", eventNames()}};
    known.insert(known.end(), published.enumerators.begin(), published.enumerators.end());
    return known;
}

Completions::Completions(Description command, Session& session)
    : command_(std::move(command)), known_(knownWords(command_, session)) {}

std::string Completions::kindBehind(const std::string& verb, const std::string& option) const {
    for (const CompletionRule& rule : rules) {
        if (rule.option == option && !rule.option.empty() && (rule.verb.empty() || rule.verb == verb)) {
            return std::string(rule.kind);
        }
    }
    const auto takesWord = [&](const Description& described) {
        return std::ranges::any_of(described.options, [&](const Description::Option& one) {
            const Words names = namesOf(one);
            return !one.value.empty() && std::ranges::find(names, option) != names.end();
        });
    };
    const auto described = std::ranges::find(command_.verbs, verb, &Description::name);
    const bool takes = takesWord(command_) || (described != command_.verbs.end() && takesWord(*described));
    return takes ? "files" : "";
}

std::string Completions::kindOf(const std::string& verb) const {
    if (verb.empty()) {
        return "verbs";
    }
    const auto rule =
        std::ranges::find_if(rules, [&](const CompletionRule& one) { return one.verb == verb && one.option.empty(); });
    return rule != rules.end() ? std::string(rule->kind) : "files";
}

Words Completions::wordsOf(const std::string& kind) const {
    const auto found = std::ranges::find(known_, kind, &std::pair<std::string, Words>::first);
    if (found != known_.end()) {
        return found->second;
    }
    std::istringstream list(kind);
    return {std::istream_iterator<std::string>(list), {}};
}

Candidates Completions::after(const Words& words, const std::string& beginning) const {
    std::string verb;
    std::string previous;
    for (const std::string& word : words) {
        const bool belongsToOption = previous.starts_with('-') && !kindBehind(verb, previous).empty();
        previous = belongsToOption ? "" : word;
        if (!belongsToOption && !word.starts_with('-') && verb.empty()) {
            verb = word;
        }
    }
    std::string front;  // of the word: what stays as it is
    std::string kind = previous.starts_with('-') ? kindBehind(verb, previous) : "";
    const std::size_t sign = beginning.find('=');
    if (beginning.starts_with("--") && sign != std::string::npos) {
        kind = kindBehind(verb, beginning.substr(0, sign));
        front = beginning.substr(0, sign + 1);
    } else if (kind.empty()) {
        kind = beginning.starts_with('-') ? "options" : kindOf(verb);
    }
    Candidates candidates;
    Words possible;
    if (kind == "options") {
        possible = optionsOf(command_, verb);
    } else if (kind == "assignments" && beginning.find('=', front.size()) == std::string::npos) {
        possible = wordsOf("parameters");
        candidates.behind = "=";
    } else if (kind == "assignments") {
        front = beginning.substr(0, beginning.find('=', front.size()) + 1);
        possible = wordsOf(inCapitals(front.substr(0, front.find_first_of("[="))));
    } else if (kind == "files" || kind == "folders" || kind.starts_with('(')) {
        const std::string suffix = kind == "files" ? "" : kind == "folders" ? "/" : kind.substr(1, kind.size() - 2);
        possible = fileNames(beginning.substr(front.size()), suffix);
    } else {
        possible = wordsOf(kind);
    }
    const std::string wanted = inCapitals(beginning.substr(front.size()));
    for (const std::string& word : possible) {
        if (inCapitals(word).starts_with(wanted)) {
            candidates.words.push_back(front + word);
        }
    }
    if (candidates.words.size() == 1 && candidates.words.front().ends_with('/')) {
        candidates.behind = "";
    }
    return candidates;
}

}  // namespace quillon::cli
