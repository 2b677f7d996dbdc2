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

/// `text`, which need be no configuration, with the lines of the new keys behind the lines that `start` has in front of
/// them, where it has those.
std::string withNewKeys(std::string text, const std::string& start, const Lines& newKeys) {
    std::string previous;
    for (const std::string& line : linesIn(start)) {
        const std::string key = keyOf(line);
        const std::size_t place = text.find("\n" + previous + "=");
        if (std::ranges::find(newKeys, key) != newKeys.end() && place != std::string::npos &&
            text.find("\n" + key + "=") == std::string::npos) {
            text.insert(std::min(text.find('\n', place + 1), text.size()), "\n" + line);
        }
        previous = key;
    }
    return text;
}

/// The fuzz targets' copy of a configuration.
void writeSeed(const std::filesystem::path& configuration) {
    write(std::filesystem::path(FUZZ_SEED_FOLDER) / configuration.filename(), read(configuration));
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

/// The name of the design's parameter in a line of a transcript.
std::string nameOf(const std::string& access) {
    return access.substr(0, access.find(' '));
}

/// The lines of a list of accesses with the accesses that are new. Steps and refreshes stay as they are listed, and an
/// access that has another value stays in its step; what is new becomes a step of its own, named by the first of
/// `newKeys` that has none.
Lines withNewAccesses(const Lines& listed, const Lines& seen, const Lines& newKeys) {
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
                if (access != seen.end() && nameOf(*access) == nameOf(bare)) {
                    result.push_back(line.substr(0, line.size() - bare.size()) + *access);
                    ++access;
                }
                continue;  // otherwise it is gone
            }
            Lines fresh;
            for (; access != found; ++access) {
                fresh.push_back("    " + *access);
            }
            if (!fresh.empty()) {
                const auto key =
                    std::ranges::find_if(newKeys, [&](const std::string& name) { return !steps.contains(name); });
                const std::string name = key != newKeys.end() ? *key : "new";
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

Lines keysOf(const std::string& configuration) {
    Lines keys;
    for (const std::string& line : linesIn(configuration)) {
        if (keyOf(line).starts_with("FG_")) {
            keys.push_back(keyOf(line));
        }
    }
    return keys;
}

void record() {
    const std::filesystem::path golden = STATE_GOLDEN_FOLDER;
    BuiltApplet started;
    const Lines recordedKeys = keysOf(read(golden / "start_up_state.mcf"));
    if (started.applet.saveConfig(golden / "start_up_state.mcf") != 0) {
        throw std::runtime_error("cannot save the state of a start");
    }
    const std::string start = read(golden / "start_up_state.mcf");
    const Lines keys = keysOf(start);
    Lines newKeys;
    std::ranges::copy_if(keys, std::back_inserter(newKeys), [&](const std::string& key) {
        return std::ranges::find(recordedKeys, key) == recordedKeys.end();
    });
    writeLines(golden / "start_up_accesses.txt",
               withNewAccesses(goldenLines("start_up_accesses.txt"), shownAccesses(BuiltApplet().board), newKeys));
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
               withNewAccesses(goldenLines("load_accesses.txt"), shownAccesses(loaded.board), newKeys));

    for (const auto& seed : std::filesystem::directory_iterator(FUZZ_SEED_FOLDER)) {
        const std::string text = read(seed.path());
        if (const std::string complete = withNewKeys(text, start, newKeys); complete != text) {
            write(seed.path(), complete);
        }
    }
    for (const char* name : {"start_up_state.mcf", "other_state.mcf"}) {
        writeSeed(golden / name);
    }
    for (const auto& example : std::filesystem::directory_iterator(STATE_EXAMPLES_FOLDER)) {
        if (example.path().extension() == ".mcf") {
            recordConfiguration(example.path(), start);
            writeSeed(example.path());
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
