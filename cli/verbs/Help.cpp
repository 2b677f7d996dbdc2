#include "cli/Verb.h"

namespace quillon::cli {

void addHelpVerb(Verbs& verbs) {
    auto verb = std::make_shared<std::string>();
    Verb help = verbs.add("help", "Tell what the command does, or one of its verbs",
                          "  quillon help\n"
                          "  quillon help set               the same as quillon set --help",
                          [verbs, verb](Session&, Console& console) {
                              console.out << foldLines(verbs.help(*verb), lineWidth());
                              return Done;
                          });
    help.add("VERB", verb.get(), "Verb to tell about");
}

}  // namespace quillon::cli
