#include "cli/Parameters.h"

#include <algorithm>
#include <limits>

#include "cli/Arguments.h"
#include "cli/ExitStatus.h"
#include "cli/Suggestions.h"
#include "quillon/Vocabulary.h"

namespace quillon::cli {

using client::ParameterRecord;
using client::RecordKind;

namespace {

/// "NAME[first..last]" taken apart.
struct NameAndRun {
    std::string name;
    std::optional<Run> run;
};

std::uint32_t entryNumber(std::string_view text, std::string_view whole) {
    const auto number = parseWholeNumber(trimmed(text));
    if (!number || number->negative || number->magnitude > std::numeric_limits<std::uint32_t>::max()) {
        throw UsageError("\"" + std::string(whole) + "\": entries are written as NAME[7] or NAME[0..255]");
    }
    return static_cast<std::uint32_t>(number->magnitude);
}

NameAndRun splitRun(std::string_view text) {
    const std::size_t bracket = text.find('[');
    if (bracket == std::string_view::npos) {
        return {std::string(text), std::nullopt};
    }
    const std::string_view inside = text.substr(bracket + 1, text.size() - bracket - 1 - (text.ends_with(']') ? 1 : 0));
    const std::size_t dots = inside.find("..");
    const std::uint32_t first = entryNumber(inside.substr(0, dots), text);
    const std::uint32_t last = dots == std::string_view::npos ? first : entryNumber(inside.substr(dots + 2), text);
    if (!text.ends_with(']') || last < first) {
        throw UsageError("\"" + std::string(text) + "\": entries are written as NAME[7] or NAME[0..255]");
    }
    return {std::string(text.substr(0, bracket)), Run{first, last - first + 1}};
}

const ParameterRecord* findRecordBySymbol(const std::vector<ParameterRecord>& trees, std::string_view symbol) {
    for (const ParameterRecord& record : trees) {
        if (!record.isGroup() && record.symbol == symbol) {
            return &record;
        }
        if (const ParameterRecord* found = findRecordBySymbol(record.children, symbol)) {
            return found;
        }
    }
    return nullptr;
}

/// Completes a parameter whose id is known.
Parameter complete(const client::Applet& applet, int id, const std::vector<ParameterRecord>& trees) {
    Parameter parameter;
    parameter.id = id;
    if (const ParameterRecord* record = client::findRecord(trees, id)) {
        parameter.record = *record;
        parameter.name = record->symbol;
        parameter.kind = record->valueKind();
    } else if (id > FG_REGISTER_IDS && id <= FG_SDK_IDS) {
        parameter.kind = ParameterKind::Int64;  // wide enough for every register
    }
    if (const PublicParameter* known = findPublicParameter(id)) {
        parameter.name = known->name;
        // The record knows that one of the whole numbers has 64 bits.
        parameter.kind = parameter.kind == ParameterKind::Int64 ? ParameterKind::Int64 : known->kind;
    }
    for (int position = 0; parameter.name.empty() && position < applet.parameterCount(); ++position) {
        if (applet.parameterIdAt(position) == id) {
            parameter.name = applet.parameterNameAt(position).value_or("");
        }
    }
    if (parameter.name.empty()) {
        parameter.name = "parameter " + std::to_string(id);
    }
    return parameter;
}

std::optional<int> idByName(const client::Applet& applet, const std::string& name,
                            const std::vector<ParameterRecord>& trees) {
    if (const PublicParameter* known = findPublicParameter(name)) {
        return known->id;
    }
    if (const int id = applet.parameterId(name); id >= 0) {
        return id;
    }
    // The names of the SDK's own parameters are listed and described, but lead to no id by themselves.
    const ParameterRecord* record = findRecordBySymbol(trees, name);
    return record != nullptr ? std::optional(record->id) : std::nullopt;
}

std::string withListedCase(std::string_view name, const std::vector<std::string>& listed) {
    const auto same = [&](const std::string& candidate) {
        return std::equal(candidate.begin(), candidate.end(), name.begin(), name.end(), [](char left, char right) {
            return std::toupper(static_cast<unsigned char>(left)) == std::toupper(static_cast<unsigned char>(right));
        });
    };
    const auto found = std::find_if(listed.begin(), listed.end(), same);
    return found != listed.end() ? *found : std::string(name);
}

int idOf(const client::Applet& applet, const std::string& name, const std::vector<ParameterRecord>& trees) {
    if (const auto number = parseWholeNumber(name)) {
        const auto magnitude = static_cast<std::int64_t>(number->magnitude);
        if (number->magnitude > static_cast<std::uint64_t>(std::numeric_limits<int>::max())) {
            throw UsageError("\"" + name + "\" is no parameter id: ids have 32 bits");
        }
        return static_cast<int>(number->negative ? -magnitude : magnitude);
    }
    const std::vector<std::string> listed = parameterNames(applet);
    if (const auto id = idByName(applet, withListedCase(name, listed), trees)) {
        return *id;
    }
    throw UsageError("there is no parameter \"" + name + "\"" + didYouMean(name, listed));
}

}  // namespace

bool Parameter::isUnsigned() const {
    if (!record) {
        return id > FG_REGISTER_IDS;
    }
    return record->kind == RecordKind::UInt || record->kind == RecordKind::UInt64;
}

Parameter findParameter(const client::Applet& applet, std::string_view text) {
    return findParameter(applet, text, applet.parameterInfo());
}

Parameter findParameter(const client::Applet& applet, std::string_view text,
                        const std::vector<ParameterRecord>& trees) {
    const NameAndRun wanted = splitRun(trimmed(text));
    Parameter parameter = complete(applet, idOf(applet, wanted.name, trees), trees);
    if (parameter.kind == ParameterKind::Field) {
        parameter.run = wanted.run.value_or(Run{0, LookupTableSize});
        parameter.hasRun = wanted.run.has_value();
    } else if (wanted.run) {
        throw UsageError(parameter.name + " is no lookup table and has no entries");
    }
    return parameter;
}

std::vector<std::string> parameterNames(const client::Applet& applet) {
    const int count = applet.parameterCount();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count) + 1);
    for (int position = 0; position < count; ++position) {
        names.push_back(applet.parameterNameAt(position).value_or(""));
    }
    names.emplace_back("FG_PARAM_DESCR");
    return names;
}

}  // namespace quillon::cli
