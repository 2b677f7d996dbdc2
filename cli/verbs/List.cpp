#include <algorithm>

#include "cli/Answers.h"
#include "cli/Refusals.h"
#include "cli/Suggestions.h"
#include "cli/Verb.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

using client::ParameterRecord;

/// Walks the tree and gathers both forms of the answer.
class Listing {
public:
    explicit Listing(Session& session) : applet_(session.applet()), board_(session.board()) {}

    Json add(const ParameterRecord& record, const std::string& indent) {
        return record.isGroup() ? addGroup(record, indent) : addParameter(record, indent);
    }
    const Rows& rows() const { return rows_; }

private:
    Json addGroup(const ParameterRecord& group, const std::string& indent) {
        rows_.push_back({indent + client::utf8(group.label)});
        Json children = emptyList();
        for (const ParameterRecord& child : group.children) {
            append(children, add(child, indent + "  "));
        }
        return object({{"group", client::utf8(group.label)}, {"children", children}});
    }

    Json addParameter(const ParameterRecord& record, const std::string& indent) {
        const Parameter parameter =
            findParameter(applet_, record.symbol.empty() ? std::to_string(record.id) : record.symbol);
        const bool isReadable = !isWriteOnly(board_, parameter);
        Value value;
        const int code = isReadable ? readValue(applet_, parameter, value) : 0;
        const ParameterRecord now = acceptedNow(applet_, &board_, record);
        rows_.push_back({indent + client::utf8(record.label), record.symbol,
                         std::string(record.readable ? "r" : "-") + (record.writable ? "w" : "-"),
                         valueInWords(parameter, value, code, isReadable),
                         parameter.isEnumerated() ? std::to_string(record.entries.size()) + " values"
                                                  : client::acceptedValues(now)});
        const std::string access = accessOf(board_, parameter);
        Json json = object({{"label", client::utf8(record.label)},
                            {"name", record.symbol},
                            {"id", record.id},
                            {"type", typeOf(parameter)},
                            {"access", access},
                            {"closed", access != "read" && !record.writable}});
        putValue(json, parameter, code == 0 ? value : Value());
        if (code != 0) {
            put(json, "refused", toJson(explainGet(code)));
        }
        putAccepted(json, now);
        return json;
    }

    static std::string valueInWords(const Parameter& parameter, const Value& value, int code, bool isReadable) {
        if (!isReadable) {
            return "write-only";
        }
        return code == 0 ? inWords(parameter, value) : client::describeCode(code);
    }

    client::Applet& applet_;
    const client::SoftBoard& board_;
    Rows rows_;
};

void collectGroups(const std::vector<ParameterRecord>& records, std::vector<const ParameterRecord*>& groups) {
    for (const ParameterRecord& record : records) {
        if (record.isGroup()) {
            groups.push_back(&record);
            collectGroups(record.children, groups);
        }
    }
}

/// The group with this label, wherever it stands in the trees.
const ParameterRecord& findGroup(const std::vector<ParameterRecord>& trees, const std::string& label) {
    std::vector<const ParameterRecord*> groups;
    collectGroups(trees, groups);
    std::vector<std::string> labels;
    for (const ParameterRecord* group : groups) {
        if (labels.emplace_back(client::utf8(group->label)) == label) {
            return *group;
        }
    }
    throw UsageError("there is no group \"" + label + "\"" + didYouMean(label, labels));
}

ExitStatus list(Session& session, Console& console, const std::string& group) {
    const std::vector<ParameterRecord> trees = session.applet().parameterInfo();
    if (trees.empty()) {
        throw RefusedError("the applet publishes no parameter records");
    }
    Listing listing(session);
    Json json = emptyList();
    if (!group.empty()) {
        append(json, listing.add(findGroup(trees, group), ""));
    } else {
        // The newest group comes first in the applet's list; people read them in the order of their making.
        for (auto tree = trees.rbegin(); tree != trees.rend(); ++tree) {
            append(json, listing.add(*tree, ""));
        }
    }
    if (session.options().json) {
        printJson(console, json);
    } else {
        printRows(console.out, listing.rows());
    }
    return Done;
}

}  // namespace

void addListVerb(Verbs& verbs) {
    auto group = std::make_shared<std::string>();
    Verb verb = verbs.add("list", "Show the tree of parameters with value, access and range",
                          "  quillon list                          all groups\n"
                          "  quillon list --group ROI              one group\n"
                          "  quillon list --json                   for another program",
                          [group](Session& session, Console& console) { return list(session, console, *group); });
    verb.add("--group", group.get(), "Only the group with this label").shownAs("LABEL");
}

}  // namespace quillon::cli
