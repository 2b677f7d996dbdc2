#include "cli/LookupTableFile.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <optional>

#include "cli/Arguments.h"
#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

constexpr std::uint64_t TableSize = 16384;
constexpr std::uint64_t LargestEntry = 65535;
constexpr std::size_t LongestLine = 255;
constexpr std::array<std::string_view, 3> Sections{"red", "green", "blue"};

/// A line "7,1234;".
struct Entry {
    WholeNumber index;
    WholeNumber value;
};

std::string withoutEnd(std::string text) {
    while (!text.empty() && (text.back() == '\r' || text.back() == ' ' || text.back() == ';')) {
        text.pop_back();
    }
    return text;
}

std::optional<Entry> entryOf(const std::string& text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos) {
        return std::nullopt;
    }
    const auto index = parseWholeNumber(text.substr(0, comma));
    const auto value = parseWholeNumber(text.substr(comma + 1));
    return index && value ? std::optional(Entry{*index, *value}) : std::nullopt;
}

class TableReader {
public:
    explicit TableReader(std::istream& stream) {
        std::string text;
        for (line_ = 1; std::getline(stream, text); ++line_) {
            if (text.size() > LongestLine) {
                find("overlong", "the line has more than 255 characters and is read in pieces");
            }
            read(withoutEnd(text));
        }
        line_ = 0;
    }

    std::vector<TableFinding> findings() {
        if (!count_ && entriesSeen_ == 0) {
            return {{0, "it is no lookup table: it has no line \"nrOfElements=16384;\" and no entries"}};
        }
        if (!count_) {
            find("count", "the line \"nrOfElements=16384;\" is missing, so that no entry is read");
        }
        for (const std::string_view section : Sections) {
            const auto entries = entries_.find(std::string(section));
            const std::string name = "[" + std::string(section) + "]";
            if (entries == entries_.end()) {
                find(name, "the section " + name + " is missing");
            } else if (entries->second != std::min(count_.value_or(TableSize), TableSize)) {
                find(name, name + " has " + std::to_string(entries->second) + " of " +
                               std::to_string(count_.value_or(TableSize)) + " entries; the rest are those of another " +
                               "section, or stay as they were");
            }
        }
        std::vector<TableFinding> told;
        for (const Kind& kind : kinds_) {
            told.push_back(
                {kind.line,
                 kind.text + (kind.count > 1 ? ", and " + std::to_string(kind.count - 1) + " more of this kind" : "")});
        }
        std::ranges::stable_sort(told, {}, &TableFinding::line);
        return told;
    }

private:
    struct Kind {
        std::string name;
        int line;
        std::string text;
        int count;
    };

    void find(const std::string& kind, const std::string& text) {
        const auto known = std::ranges::find(kinds_, kind, &Kind::name);
        if (known != kinds_.end()) {
            ++known->count;
        } else {
            kinds_.push_back({kind, line_, text, 1});
        }
    }

    void read(const std::string& text) {
        if (text.find("KneeLut") != std::string::npos && line_ == 1) {
            find("knee", "it is a knee table, whose values are no entries");
        }
        for (const std::string_view section : Sections) {
            if (text == "[" + std::string(section) + "]") {
                section_ = section;
                entries_[section_];
                return;
            }
        }
        if (text.starts_with("nrOfElements=") && !count_) {
            readCount(text.substr(text.find('=') + 1));
        } else if (!text.empty() && text[0] >= '0' && text[0] <= '9') {
            readEntry(text);
        }
    }

    void readCount(const std::string& text) {
        const auto number = parseWholeNumber(text);
        count_ = number && !number->negative ? number->magnitude : 0;
        if (count_ != TableSize) {
            find("size", "nrOfElements is " + text + ", and the tables have 16384 entries");
        }
    }

    void readEntry(const std::string& text) {
        const auto entry = entryOf(text);
        ++entriesSeen_;
        if (section_.empty()) {
            find("outside", "an entry stands ahead of the section [red]");
            return;
        }
        std::uint64_t& next = entries_[section_];
        if (!entry || entry->index.negative) {
            find("malformed", "\"" + text.substr(0, 32) + "\" is no entry as \"0,0;\"");
            ++next;
            return;
        }
        const std::string index = std::to_string(entry->index.magnitude);
        if (entry->index.magnitude != next) {
            find("order", "entry " + index + " stands where " + std::to_string(next) +
                              " should be, and entries out of their order are read wrongly");
        }
        next = entry->index.magnitude + 1;
        if (entry->value.negative || entry->value.magnitude > LargestEntry) {
            find("value", "entry " + index + " is " + (entry->value.negative ? "-" : "") +
                              std::to_string(entry->value.magnitude) + ", outside 0 to 65535");
        }
    }

    int line_ = 0;
    std::string section_;
    std::optional<std::uint64_t> count_;
    int entriesSeen_ = 0;
    std::map<std::string, std::uint64_t> entries_;  ///< the index that comes next, by section
    std::vector<Kind> kinds_;
};

}  // namespace

std::vector<TableFinding> inspectTable(const std::filesystem::path& file) {
    std::error_code ignored;
    std::ifstream stream(file);
    if (!stream || std::filesystem::is_directory(file, ignored)) {
        return {{0, "it cannot be read"}};
    }
    return TableReader(stream).findings();
}

void requireTable(const std::filesystem::path& file) {
    if (!std::ifstream(file)) {
        return;
    }
    const std::vector<TableFinding> findings = inspectTable(file);
    if (!findings.empty()) {
        const int line = findings.front().line;
        throw RefusedError(file.string() + (line > 0 ? ":" + std::to_string(line) : "") +
                           " was not loaded: " + findings.front().text);
    }
}

}  // namespace quillon::cli
