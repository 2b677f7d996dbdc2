/// @file
/// A configuration file (.mcf) as a person wants it explained: every key with the number of its line. What a load of
/// the applet would find is told by the same rules as the applet's own, but for its limit of 255 characters a line,
/// which is told of instead.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/Json.h"
#include "cli/Session.h"

namespace quillon::cli {

struct ConfigurationLine {
    int number;         ///< from 1
    std::string key;    ///< as it stands, blanks included
    std::string value;  ///< without quotes and semicolon
    bool inPort;        ///< behind the line of the port's section
};

class ConfigurationFile {
public:
    /// Throws RefusedError if the file cannot be read.
    explicit ConfigurationFile(const std::filesystem::path& file);

    const std::vector<ConfigurationLine>& lines() const& { return lines_; }
    std::vector<ConfigurationLine> lines() && { return std::move(lines_); }
    /// The first line of the port's section that holds exactly this key, which is the one that counts; or null.
    const ConfigurationLine* find(const std::string& key) const;
    /// The same before the port's section.
    const ConfigurationLine* findInHeader(const std::string& key) const;
    const std::vector<int>& overlongLines() const { return overlongLines_; }
    /// Whether there is the line of the header's section, as a load looks for it.
    bool hasHeaderSection() const { return hasHeaderSection_; }
    bool hasCarriageReturns() const { return hasCarriageReturns_; }

private:
    std::vector<ConfigurationLine> lines_;
    std::vector<int> overlongLines_;
    bool hasHeaderSection_ = false;
    bool hasCarriageReturns_ = false;
};

/// A file for a moment, in the folder for such files.
class TemporaryConfiguration {
public:
    /// Throws RefusedError.
    TemporaryConfiguration();
    TemporaryConfiguration(const TemporaryConfiguration&) = delete;
    TemporaryConfiguration& operator=(const TemporaryConfiguration&) = delete;
    ~TemporaryConfiguration();
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The keys that the applet writes, in their order, as a save of `applet` shows them.
std::vector<ConfigurationLine> savedState(client::Applet& applet);

/// Whether a load looks at the key of the port's section: those of values that can be set, but for the debug ones.
bool isLoaded(const std::string& key);

/// The value of a line, which has plain decimal numbers: of names, units and hexadecimal digits the applet takes what
/// it can make of them. Throws UsageError for those.
Value parseFileValue(const client::Applet& applet, const Parameter& parameter, const std::string& text);
/// A file's value in the parameter's words, or as it stands if it is none.
std::string valueInWords(const client::Applet& applet, const ConfigurationLine& line);
/// The same as answers tell a value.
Json valueOf(const client::Applet& applet, const ConfigurationLine& line);

}  // namespace quillon::cli
