// Records the lists that tests compare with, and brings the example configurations up to date: what `./run golden` runs
// when a parameter has been added. The differences are for people to review.

#include <algorithm>
#include <fstream>
#include <iostream>
#include <map>
#include <set>

#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

using Lines = std::vector<std::string>;

std::string read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text << std::flush;
    if (!stream) {
        throw std::runtime_error("cannot write " + file.string());
    }
    std::cout << file.filename().string() << '\n';
}

void writeLines(const std::filesystem::path& file, const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    write(file, text);
}

Lines linesIn(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The key of a line of a configuration; empty for a line without one.
std::string keyOf(const std::string& line) {
    return line.substr(0, line.find('=') == std::string::npos ? 0 : line.find('='));
}

/// `text` with the lines of `complete` whose keys it lacks, each behind the line that it has in `complete` in front of
/// it.
std::string withMissingKeys(const std::string& text, const std::string& complete) {
    Lines lines = linesIn(text);
    std::string previous;
    for (const std::string& line : linesIn(complete)) {
        const std::string key = keyOf(line);
        const auto hasKey = [](const std::string& wanted) {
            return [&wanted](const std::string& candidate) { return keyOf(candidate) == wanted; };
        };
        if (!key.empty() && std::ranges::none_of(lines, hasKey(key))) {
            lines.insert(std::next(std::ranges::find_if(lines, hasKey(previous))), line);
        }
        previous = key.empty() ? previous : key;
    }
    std::string result;
    for (const std::string& line : lines) {
        result += line + '\n';
    }
    return result;
}

/// What a save gives after `configuration` has been loaded with the keys that it lacks. The configuration's own file is
/// the one that is written.
void recordConfiguration(const std::filesystem::path& file, const std::string& start) {
    write(file, withMissingKeys(read(file), start));
    BuiltApplet built;
    if (built.applet.loadConfig(file) != 0 || built.applet.saveConfig(file) != 0) {
        throw std::runtime_error(file.string() + " can't be loaded and saved");
    }
}

/// "NAME ID" for each position.
Lines positions(const client::Applet& applet) {
    Lines lines;
    for (int position = 0; position < applet.parameterCount(); ++position) {
        lines.push_back(applet.parameterNameAt(position).value() + ' ' +
                        std::to_string(applet.parameterIdAt(position)));
    }
    return lines;
}

/// The lines of a list of accesses with the accesses that are new. Steps and refreshes stay as they are listed; what is
/// new becomes a step of its own, named by the first of `keys` that has none.
Lines withNewAccesses(const Lines& listed, const Lines& seen, const Lines& keys) {
    const auto isAccess = [](const std::string& line) {
        return line.starts_with("    ") && !line.starts_with("    limit ");
    };
    std::set<std::string> steps(listed.begin(), listed.end());
    Lines result;
    auto access = seen.begin();
    for (const std::string& line : listed) {
        if (isAccess(line)) {
            const std::string bare = line.substr(line.find_first_not_of(' '));
            const auto found = std::find(access, seen.end(), bare.substr(0, bare.find_last_not_of(' ') + 1));
            if (found == seen.end()) {
                continue;  // it is gone
            }
            Lines fresh;
            for (; access != found; ++access) {
                fresh.push_back("    " + *access);
            }
            if (!fresh.empty()) {
                const auto key =
                    std::ranges::find_if(keys, [&](const std::string& name) { return !steps.contains(name); });
                const std::string name = key != keys.end() ? *key : "new";
                steps.insert(name);
                // In front of the headings of the access that was found.
                auto place = result.end();
                while (place != result.begin() && !isAccess(*std::prev(place))) {
                    --place;
                }
                fresh.insert(fresh.begin(), name);
                result.insert(place, fresh.begin(), fresh.end());
            }
            ++access;
        }
        result.push_back(line);
    }
    return result;
}

/// The names of the list's lines with the values of now, and the parameters of the configuration that it lacks.
Lines startUpValues(client::Applet& applet, const Lines& keys) {
    std::set<std::string> names;
    for (const std::string& line : goldenLines("start_up_values.txt")) {
        names.insert(line.substr(0, line.find(' ')));
    }
    for (const std::string& key : keys) {
        const PublicParameter* const parameter = findPublicParameter(key);
        if (parameter != nullptr && parameter->access == ParameterAccess::ReadWrite) {
            names.insert(key);
        }
    }
    const Lines sorted(names.begin(), names.end());
    return readAll(applet, sorted);
}

/// The design parameters that a start writes and that no line names yet, with whatever value.
Lines acceptedWrites(const client::SoftBoard& board) {
    Lines lines = goldenLines("accepted_writes.txt");
    for (const std::string& write : board.writes()) {
        const std::string name = write.substr(0, write.find(' '));
        if (std::ranges::none_of(lines, [&](const std::string& line) { return line.starts_with(name + ' '); })) {
            lines.push_back(name + " any");
        }
    }
    return lines;
}

void record() {
    const std::filesystem::path golden = STATE_GOLDEN_FOLDER;
    BuiltApplet started;
    if (started.applet.saveConfig(golden / "start_up_state.mcf") != 0) {
        throw std::runtime_error("cannot save the state of a start");
    }
    const std::string start = read(golden / "start_up_state.mcf");
    Lines keys;
    for (const std::string& line : linesIn(start)) {
        if (keyOf(line).starts_with("FG_")) {
            keys.push_back(keyOf(line));
        }
    }
    writeLines(golden / "start_up_accesses.txt",
               withNewAccesses(goldenLines("start_up_accesses.txt"), shownAccesses(BuiltApplet().board), keys));
    writeLines(golden / "start_up_values.txt", startUpValues(started.applet, keys));
    writeLines(golden / "accepted_writes.txt", acceptedWrites(BuiltApplet().board));

    writeLines(std::filesystem::path(ENGINE_GOLDEN_FOLDER) / "positions.txt", positions(started.applet));

    recordConfiguration(golden / "other_state.mcf", start);
    BuiltApplet loaded;
    loaded.board.clearTranscript();
    if (loaded.applet.loadConfig(golden / "other_state.mcf") != 0) {
        throw std::runtime_error("other_state.mcf can't be loaded");
    }
    writeLines(golden / "load_accesses.txt",
               withNewAccesses(goldenLines("load_accesses.txt"), shownAccesses(loaded.board), keys));

    for (const auto& example : std::filesystem::directory_iterator(STATE_EXAMPLES_FOLDER)) {
        if (example.path().extension() == ".mcf") {
            recordConfiguration(example.path(), start);
        }
    }
}

}  // namespace
}  // namespace quillon::state

int main() {
    try {
        quillon::state::record();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "record_goldens: " << error.what() << '\n';
        return 1;
    }
}
