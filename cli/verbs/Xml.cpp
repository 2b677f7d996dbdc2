#include "cli/PartFile.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

ExitStatus xml(Session& session, Console& console, const std::string& file) {
    const std::string document = session.applet().xml();
    if (!file.empty()) {
        writeWhole(file, document);
    }
    if (session.options().json) {
        Json json = object({{"bytes", document.size()}});
        put(json, file.empty() ? "document" : "file", file.empty() ? document : file);
        printJson(console, json);
    } else if (file.empty()) {
        console.out << document;
    } else {
        console.out << file << ": " << document.size() << " bytes\n";
    }
    return Done;
}

}  // namespace

void addXmlVerb(Verbs& verbs) {
    auto file = std::make_shared<std::string>();
    Verb verb = verbs.add("xml", "Print the GenApi description of the parameters",
                          "  quillon xml                    to standard output, byte for byte\n"
                          "  quillon xml -o quillon.xml     to a file",
                          [file](Session& session, Console& console) { return xml(session, console, *file); });
    verb.add("-o,--output", file.get(), "Write to this file").shownAs("FILE");
}

}  // namespace quillon::cli
