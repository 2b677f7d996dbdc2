#include "cli/Refusals.h"
#include "cli/Verb.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

using client::ParameterRecord;

/// A text in a cell of a table: its bars would end the cell.
std::string cell(const std::string& text) {
    std::string result;
    for (const char character : text) {
        result += character == '|' ? "\\|" : std::string(1, character);
    }
    return result;
}

/// The reference as one document: a chapter a top-level group, a table a group, a row a parameter.
class Reference {
public:
    Reference(Session& session, std::ostream& out) : applet_(session.applet()), board_(session.board()), out_(out) {}

    void write() {
        out_ << "# Parameters\n\n"
                "Generated from the catalogue by `quillon reference`; the build target `parameter_reference` writes it "
                "anew.\n"
                "Ranges are those of the start-up state. `rw` parameters are open to writes then, `r-` are not, or "
                "never.\n";
        const std::vector<ParameterRecord> trees = applet_.parameterInfo();
        for (auto tree = trees.rbegin(); tree != trees.rend(); ++tree) {
            writeGroup(*tree, 2);
        }
    }

private:
    void writeGroup(const ParameterRecord& group, std::size_t level) {
        out_ << '\n' << std::string(level, '#') << ' ' << client::utf8(group.label) << '\n';
        bool tableOpen = false;
        for (const ParameterRecord& child : group.children) {
            if (!child.isGroup()) {
                out_ << (tableOpen ? ""
                                   : "\n| Parameter | Id | Access | Accepts | Start-up value | Meaning "
                                     "|\n|---|---|---|---|---|---|\n");
                tableOpen = true;
                writeParameter(child);
            }
        }
        for (const ParameterRecord& child : group.children) {
            if (child.isGroup()) {
                writeGroup(child, level + 1);
            }
        }
    }

    void writeParameter(const ParameterRecord& record) {
        const Parameter parameter = findParameter(applet_, record.symbol);
        const std::string access = std::string(record.readable ? "r" : "-") + (record.writable ? "w" : "-");
        const std::string text = client::utf8(applet_.readDescription(record.symbol));
        const std::string meaning = client::utf8(record.label) + (text.empty() ? "" : ". " + text);
        const std::string reason(client::rangeReason(record.symbol));
        out_ << "| `" << record.symbol << "` | " << record.id << " | " << access << " | "
             << cell(acceptedValues(applet_, &board_, parameter)) << (reason.empty() ? "" : "; " + cell(reason))
             << " | " << cell(startValue(parameter)) << " | " << cell(meaning) << " |\n";
    }

    /// The value at the start of what can be set; a read-out is another one at each look.
    std::string startValue(const Parameter& parameter) {
        const PublicParameter* known = findPublicParameter(parameter.id);
        const bool settable = known != nullptr && known->access == ParameterAccess::ReadWrite;
        Value value;
        if (!settable || parameter.kind == ParameterKind::Field || readValue(applet_, parameter, value) != 0) {
            return "";
        }
        return inWords(parameter, value);
    }

    client::Applet& applet_;
    const client::SoftBoard& board_;
    std::ostream& out_;
};

ExitStatus reference(Session& session, Console& console) {
    Reference(session, console.out).write();
    return Done;
}

}  // namespace

void addReferenceVerb(Verbs& verbs) {
    verbs.add("reference", "Print a reference of all parameters (Markdown)", "  quillon reference > parameters.md",
              reference);
}

}  // namespace quillon::cli
