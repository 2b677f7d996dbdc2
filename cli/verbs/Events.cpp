#include "cli/Verb.h"

namespace quillon::cli {

namespace {

ExitStatus events(Session& session, Console& console) {
    Rows rows;
    Json list = emptyList();
    for (const auto& [mask, name] : session.applet().events()) {
        std::ostringstream hexadecimal;
        hexadecimal << "0x" << std::hex << mask;
        rows.push_back({hexadecimal.str(), name});
        append(list, object({{"mask", mask}, {"name", name}}));
    }
    if (session.options().json) {
        printJson(console, list);
    } else {
        printRows(console.out, rows);
    }
    return Done;
}

}  // namespace

void addEventsVerb(Verbs& verbs) {
    verbs.add("events", "List the events of the design with their masks",
              "  quillon events\n"
              "  quillon events --json",
              events);
}

}  // namespace quillon::cli
