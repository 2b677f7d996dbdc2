#include <algorithm>

#include "cli/ConfigurationCheck.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

void print(const std::filesystem::path& file, const std::vector<Complaint>& complaints, Console& console) {
    for (const Complaint& complaint : complaints) {
        console.out << inWords(file, complaint, console.outPainter) << '\n';
    }
    if (complaints.empty()) {
        console.out << file.string() << ": no complaint\n";
    }
}

ExitStatus check(Session& session, Console& console, const std::filesystem::path& file) {
    const std::vector<Complaint> complaints = checkConfiguration(session.scratch(), file);
    const bool sound = isSound(complaints);
    if (session.options().json) {
        Json list = emptyList();
        for (const Complaint& complaint : complaints) {
            append(list, toJson(complaint));
        }
        printJson(console, object({{"file", file.string()}, {"sound", sound}, {"complaints", list}}));
    } else {
        print(file, complaints, console);
    }
    return sound ? Done : Refused;
}

}  // namespace

void addCheckVerb(Verbs& verbs) {
    auto file = std::make_shared<std::filesystem::path>();
    Verb verb = verbs.add("check",
                          "Tell before a load what a configuration holds that a load would refuse or keep silent about",
                          "  quillon check conveyor.mcf\n"
                          "  quillon check conveyor.mcf --json",
                          [file](Session& session, Console& console) { return check(session, console, *file); });
    verb.add("FILE", file.get(), "File to check (.mcf)").required();
}

}  // namespace quillon::cli
