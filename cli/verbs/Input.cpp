#include <algorithm>
#include <array>

#include "cli/Arguments.h"
#include "cli/BoardTime.h"
#include "cli/Inputs.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct Level {
    unsigned input;
    bool high;
};

bool parseLevel(std::string text) {
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    constexpr std::array highs{"1", "high", "on"};
    constexpr std::array lows{"0", "low", "off"};
    const bool high = std::ranges::find(highs, text) != highs.end();
    if (!high && std::ranges::find(lows, text) == lows.end()) {
        throw UsageError("\"" + text + "\" is no level: 0, 1, low or high");
    }
    return high;
}

std::vector<Level> parseLevels(const std::vector<std::string>& words) {
    std::vector<Level> levels;
    for (const std::string& word : words) {
        const auto assignment = splitAssignment(word);
        if (!assignment) {
            throw UsageError("\"" + word + "\" is no input with its level: they are written as 0=1, front2=low");
        }
        levels.push_back({parseInput(assignment->first), parseLevel(assignment->second)});
    }
    return levels;
}

ExitStatus input(Session& session, Console& console, const std::vector<std::string>& words) {
    const std::vector<Level> levels = parseLevels(words);
    session.applet();  // puts the design on the board
    const TimeWatch watch(session.board());
    for (const Level& level : levels) {
        session.board().setInput(level.input, level.high);
    }
    const std::uint64_t now = inputLevels(session.board());
    if (session.options().json) {
        Json json = object({{"inputs", inputsToJson(now)}});
        put(json, watch);
        printJson(console, json);
    } else {
        Rows rows;
        for (unsigned input = 0; input < InputCount; ++input) {
            if (levels.empty() || std::ranges::find(levels, input, &Level::input) != levels.end()) {
                rows.push_back({inputName(input), (now >> input & 1) != 0 ? "high" : "low"});
            }
        }
        printRows(console.out, rows);
        print(console.out, watch);
    }
    if (!levels.empty()) {
        session.tellIfLost();
    }
    return Done;
}

}  // namespace

void addInputVerb(Verbs& verbs) {
    auto words = std::make_shared<std::vector<std::string>>();
    Verb verb =
        verbs.add("input", "Give digital inputs of the software board a level, and tell which events that brings",
                  "  input 0=1                      in quillon shell or a script: GPI 0 rises\n"
                  "  input 0=0 front2=high          one after the other\n"
                  "  input                          all levels",
                  [words](Session& session, Console& console) { return input(session, console, *words); });
    verb.add("N=LEVEL", words.get(), "0 to 7 for GPI 0 to 7, front0 to front3; 0, 1, low or high");
}

}  // namespace quillon::cli
