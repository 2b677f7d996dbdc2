#include "cli/ConfigurationFile.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/ExitStatus.h"
#include "cli/MemoryFile.h"
#include "cli/Values.h"

namespace quillon::cli {

namespace {

constexpr std::size_t LongestLine = 255;
constexpr std::string_view HeaderSection = "[Kamerasektion]";  // with the line feed behind it
constexpr std::string_view PortSection = "[Port A]";

// Saved for a reader's eyes, though they can be set.
constexpr std::array savedOnly{"FG_DEBUGSOURCE", "FG_DEBUGINENABLE", "FG_DEBUGOUTENABLE"};

/// What stands between the delimiters behind the key.
std::string valueOf(std::string_view text) {
    constexpr std::string_view delimiters = "=;'";
    const std::size_t first = text.find_first_not_of(delimiters);
    if (first == std::string_view::npos || text[first] == '\r') {
        return "";
    }
    return std::string(text.substr(first, text.find_first_of(delimiters, first) - first));
}

const ConfigurationLine* findLine(const std::vector<ConfigurationLine>& lines, const std::string& key, bool inPort) {
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const ConfigurationLine& line) {
        return line.key == key && line.inPort == inPort;
    });
    return found != lines.end() ? &*found : nullptr;
}

}  // namespace

TemporaryConfiguration::TemporaryConfiguration() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillon-XXXXXX.mcf").string();
    const int descriptor = mkstemps(pattern.data(), 4);
    if (descriptor < 0) {
        throw RefusedError("cannot make a file in " + std::filesystem::temp_directory_path().string());
    }
    close(descriptor);
    path_ = pattern;
}

TemporaryConfiguration::~TemporaryConfiguration() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

ConfigurationFile::ConfigurationFile(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream || std::filesystem::is_directory(file)) {
        throw RefusedError(file.string() + " cannot be read");
    }
    bool inPort = false;
    std::string text;
    for (int number = 1; std::getline(stream, text); ++number) {
        if (text.size() > LongestLine) {
            overlongLines_.push_back(number);
        }
        hasHeaderSection_ = hasHeaderSection_ || text.ends_with(HeaderSection);
        hasCarriageReturns_ = hasCarriageReturns_ || text.ends_with('\r');
        const std::size_t sign = text.find('=');
        if (sign != std::string::npos) {
            lines_.push_back({number, text.substr(0, sign), valueOf(std::string_view(text).substr(sign)), inPort});
        }
        inPort = inPort || text.find(PortSection) != std::string::npos;
    }
}

const ConfigurationLine* ConfigurationFile::find(const std::string& key) const {
    return findLine(lines_, key, true);
}

const ConfigurationLine* ConfigurationFile::findInHeader(const std::string& key) const {
    return findLine(lines_, key, false);
}

std::vector<ConfigurationLine> savedState(client::Applet& applet) {
    const MemoryFile file("state.mcf");
    if (const int code = applet.saveConfig(file.path()); code != 0) {
        throw RefusedError("the state cannot be saved: " + client::describeCode(code));
    }
    std::vector<ConfigurationLine> lines;
    for (const ConfigurationLine& line : ConfigurationFile(file.path()).lines()) {
        if (line.inPort) {
            lines.push_back(line);
        }
    }
    return lines;
}

bool isLoaded(const std::string& key) {
    const PublicParameter* parameter = findPublicParameter(key);
    const bool settable = parameter != nullptr && parameter->access == ParameterAccess::ReadWrite;
    return settable && std::find(savedOnly.begin(), savedOnly.end(), key) == savedOnly.end();
}

Value parseFileValue(const client::Applet& applet, const Parameter& parameter, const std::string& text) {
    const bool isText = parameter.kind == ParameterKind::String || parameter.kind == ParameterKind::Field;
    const auto isPlain = [&] {
        return text.find_first_of("xX") == std::string::npos && (parseReal(text) || parseWholeNumber(text));
    };
    if (!isText && !isPlain()) {
        throw UsageError("\"" + text + "\" is no value for " + parameter.name + ": a file has plain decimal numbers");
    }
    return parseValue(applet, parameter, text);
}

std::string valueInWords(const client::Applet& applet, const ConfigurationLine& line) {
    try {
        const Parameter parameter = findParameter(applet, line.key);
        return inWords(parameter, parseFileValue(applet, parameter, line.value));
    } catch (const UsageError&) {
        return "\"" + line.value + "\"";
    }
}

Json valueOf(const client::Applet& applet, const ConfigurationLine& line) {
    try {
        const Parameter parameter = findParameter(applet, line.key);
        return valueOf(parameter, parseFileValue(applet, parameter, line.value));
    } catch (const UsageError&) {
        return object({{"value", line.value}});
    }
}

}  // namespace quillon::cli
