#include "tests/state/StateTest.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace quillon::state {

namespace {

std::string withoutTrailingBlanks(const std::string& line) {
    const std::size_t last = line.find_last_not_of(' ');
    return last == std::string::npos ? "" : line.substr(0, last + 1);
}

/// Where the line of a key begins, or npos.
std::size_t placeOf(const std::string& text, const std::string& key) {
    const std::size_t place = text.find("\n" + key + "=");
    return place == std::string::npos ? place : place + 1;
}

/// "NAME = [0..16383]=0,4,8,...,65527,65531,65535 (sum 536862720)".
std::string shortened(const std::string& line) {
    constexpr int shown = 3;
    const std::size_t begin = line.find("]=") + 2;
    const std::size_t end = std::min(line.find(" ! "), line.size());
    std::size_t headEnd = begin;
    std::size_t tailBegin = end;
    for (int i = 0; i < shown; ++i) {
        headEnd = line.find(',', headEnd + 1);
        tailBegin = line.rfind(',', tailBegin - 1);
    }
    long sum = 0;
    for (const char* entry = line.data() + begin; entry < line.data() + end; ++entry) {
        long number = 0;
        entry = std::from_chars(entry, line.data() + end, number).ptr;
        sum += number;
    }
    return line.substr(0, headEnd) + ",..." + line.substr(tailBegin, end - tailBegin) + " (sum " + std::to_string(sum) +
           ")" + line.substr(end);
}

}  // namespace

std::string golden(const std::string& name) {
    std::ifstream stream(std::string(STATE_GOLDEN_FOLDER "/") + name, std::ios::binary);
    if (!stream.is_open()) {
        throw std::runtime_error("no golden file " + name);
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> goldenLines(const std::string& name) {
    std::istringstream text(golden(name));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<ListedAccess> goldenAccesses(const std::string& name) {
    std::vector<ListedAccess> list;
    int step = -1;
    int limits = 0;
    for (const std::string& line : goldenLines(name)) {
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent == 0) {
            ++step;
        } else if (indent == 4 && line.starts_with("    limit ")) {
            ++limits;
        } else {
            list.push_back({withoutTrailingBlanks(line.substr(indent)), step, indent == 8 ? limits - 1 : -1});
        }
    }
    return list;
}

std::vector<std::string> linesOf(const std::vector<ListedAccess>& list) {
    std::vector<std::string> lines;
    for (const ListedAccess& access : list) {
        lines.push_back(access.line);
    }
    return lines;
}

std::vector<std::string> linesWithFault(const std::vector<ListedAccess>& list, std::size_t failing, int code) {
    const ListedAccess& fault = list[failing];
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool ended = fault.limit >= 0 ? list[i].limit == fault.limit : list[i].step == fault.step;
        if (i == failing) {
            // A read that fails has no value.
            const std::size_t read = fault.line.find(" ? ");
            const std::string shown = read == std::string::npos ? fault.line : fault.line.substr(0, read + 3);
            lines.push_back(shown + (shown.ends_with('=') ? " " : "") + " ! " + std::to_string(code));
        } else if (i < failing || !ended) {
            lines.push_back(list[i].line);
        }
    }
    return lines;
}

std::vector<std::string> shownAccesses(const client::SoftBoard& board) {
    constexpr std::size_t longest = 200;
    std::vector<std::string> lines = board.accesses();
    for (std::string& line : lines) {
        line = line.size() > longest ? shortened(line) : withoutTrailingBlanks(line);
    }
    return lines;
}

bool is64Bit(const PublicParameter& parameter) {
    return parameter.kind == ParameterKind::Int64;
}

std::string readAsText(client::Applet& applet, const std::string& name) {
    const PublicParameter* parameter = findPublicParameter(name);
    if (parameter == nullptr) {
        throw std::runtime_error("no parameter " + name);
    }
    if (is64Bit(*parameter)) {
        return std::to_string(applet.readInt64(parameter->id));
    }
    switch (parameter->kind) {
        case ParameterKind::String: return applet.readText(parameter->id);
        case ParameterKind::Double: {
            char text[32];
            std::snprintf(text, sizeof text, "%.12g", applet.readDouble(parameter->id));
            return text;
        }
        default: return std::to_string(applet.readInt(parameter->id));
    }
}

std::vector<std::string> readAll(client::Applet& applet, std::span<const std::string> lines) {
    std::vector<std::string> read;
    for (const std::string& line : lines) {
        const std::string name = line.substr(0, line.find(' '));
        read.push_back(withoutTrailingBlanks(name + " " + readAsText(applet, name)));
    }
    return read;
}

std::string withLine(const std::string& text, const std::string& key, const std::string& line) {
    const std::size_t place = placeOf(text, key);
    if (place == std::string::npos) {
        throw std::runtime_error("no line of " + key);
    }
    const std::size_t end = text.find('\n', place) + 1;
    return text.substr(0, place) + (line.empty() ? "" : line + "\n") + text.substr(end);
}

std::string withoutLine(const std::string& text, const std::string& key) {
    return withLine(text, key, "");
}

std::string withValue(const std::string& text, const std::string& key, const std::string& value) {
    return withLine(text, key, key + "=" + value + ";");
}

std::string lineOf(const std::string& text, const std::string& key) {
    const std::size_t place = placeOf(text, key);
    return place == std::string::npos ? "no " + key : text.substr(place, text.find('\n', place) - place);
}

int StateTest::load(const std::string& text) {
    return built.applet.loadConfig(write("loaded.mcf", text));
}

std::string StateTest::save() {
    EXPECT_EQ(built.applet.saveConfig(path("saved.mcf")), 0);
    return bytesOf("saved.mcf");
}

}  // namespace quillon::state
