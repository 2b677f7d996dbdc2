#include "cli/Verb.h"

namespace quillon::cli {

namespace {

ExitStatus save(Session& session, Console& console, const std::filesystem::path& file) {
    const std::size_t bytes = saveConfiguration(session.applet(), file);
    session.tellNotKept(file);
    if (session.options().json) {
        printJson(console, object({{"saved", file.string()}, {"bytes", bytes}}));
    } else {
        console.out << "saved " << file.string() << '\n';
    }
    return Done;
}

}  // namespace

void addSaveVerb(Verbs& verbs) {
    auto file = std::make_shared<std::filesystem::path>();
    Verb verb = verbs.add("save", "Save the configuration to a file",
                          "  quillon save defaults.mcf                       the start-up state\n"
                          "  quillon save merged.mcf --mcf conveyor.mcf      what the applet makes of a file",
                          [file](Session& session, Console& console) { return save(session, console, *file); });
    verb.add("FILE", file.get(), "File to write (.mcf)").required();
}

}  // namespace quillon::cli
