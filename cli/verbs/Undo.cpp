#include "cli/Effects.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

std::vector<std::string> namesOf(const std::vector<int>& ids) {
    std::vector<std::string> names;
    for (const int id : ids) {
        names.emplace_back(findPublicParameter(id)->name);
    }
    return names;
}

ExitStatus undo(Session& session, Console& console) {
    if (!session.lasts()) {
        throw UsageError(
            "undo is for a session, quillon shell or quillon run FILE: here the board ends with the command");
    }
    const Moment before = observe(session);
    const History::Undone undone = session.history().undo(session.applet(), session.board());
    const std::vector<Change> changes = changedValues(before, observe(session));
    const std::vector<std::string> left = namesOf(undone.left);
    if (session.options().json) {
        printJson(console, object({{"undone", undone.command},
                                   {"changed", toJson(changes)},
                                   {"restored", namesOf(undone.back)},
                                   {"left", left}}));
    } else {
        console.out << "undone: " << undone.command << '\n';
        printRows(console.out, rowsOf(changes), "  ");
        for (const int id : undone.back) {
            if (findPublicParameter(id)->kind == ParameterKind::Field) {
                console.out << "  " << findPublicParameter(id)->name << " has its entries back\n";
            }
        }
    }
    for (const std::string& name : left) {
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << name << " could not be put back\n";
    }
    return left.empty() ? Done : Refused;
}

}  // namespace

void addUndoVerb(Verbs& verbs) {
    verbs.add("undo", "Put back what the last command of a session changed",
              "  undo                           in quillon shell; once more for the change before", undo);
}

}  // namespace quillon::cli
