/// @file
/// What a verb is made of. A verb lives in a file of its own in cli/verbs: its arguments, its help and what it does.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include "cli/ExitStatus.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/Values.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quillon::cli {

/// Where a verb's words go.
struct Console {
    std::ostream& out;
    std::ostream& err;
    Painter outPainter{1};
    Painter errPainter{2};
    bool jsonPerLine = false;  ///< an answer in JSON is one line, for readers of many
    bool hasAnswered = false;  ///< an answer in JSON has been printed
};

using Action = std::function<ExitStatus(Session&, Console&)>;

/// The place that the words of an argument go to.
using Place = std::variant<bool*, unsigned*, double*, std::string*, std::filesystem::path*, std::vector<std::string>*>;

/// An argument of a verb, and what is asked of it.
class Argument {
public:
    explicit Argument(CLI::Option& option) : option_(option) {}

    Argument& required();
    /// The word that help shows for the value: "FILE".
    Argument& shownAs(const char* word);
    /// Takes this many words, no more and no less.
    Argument& words(int count);
    /// Takes one word each time it is given.
    Argument& oneWordEach();
    /// Takes one word or none, which stands for `word`.
    Argument& orWithout(const char* word);
    Argument& within(double least, double most);
    Argument& within(int least, int most);
    Argument& oneOf(const std::vector<std::string>& words);

private:
    CLI::Option& option_;
};

/// A verb that is being described. Places must live as long as the command line is read.
class Verb {
public:
    explicit Verb(CLI::App& app) : app_(app) {}

    /// A positional argument ("FILE") or an option ("-o,--output").
    Argument add(const char* name, Place place, const char* help);

private:
    CLI::App& app_;
};

/// What a verb, or the whole command, tells of itself.
struct Description {
    struct Option {
        std::string name;                    ///< as help shows it: "-o,--output", "FILE"
        std::vector<std::string> longNames;  ///< without the hyphens
        std::string value;                   ///< the word for its value; empty for a flag and a positional argument
        std::string text;
    };

    std::string name;
    std::string text;
    std::string footer;
    std::vector<Option> options;
    std::vector<Description> verbs;
};

/// Where verbs enter themselves.
class Verbs {
public:
    Verbs(CLI::App& commands, Action& chosen) : commands_(commands), chosen_(chosen) {}

    /// Adds a verb; `action` runs once the whole command line has been understood. `examples` closes its help.
    Verb add(const std::string& name, const std::string& summary, const std::string& examples, Action action);

    /// The whole command, for verbs that tell about it; to be asked when all have entered themselves.
    Description describe() const;
    /// The help of a verb, or of the whole command for an empty name. Throws UsageError for what is no verb.
    std::string help(const std::string& verb) const;

private:
    CLI::App& commands_;
    Action& chosen_;
};

/// All verbs, each in the group that help shows it in.
// clang-format off
#define QUILLON_VERBS(VERB) \
    VERB("Parameters", Get) VERB("Parameters", Set) VERB("Parameters", Find) VERB("Parameters", List) \
    VERB("Parameters", Describe) VERB("Parameters", Watch) \
    VERB("Configurations", Load) VERB("Configurations", Save) VERB("Configurations", Apply) \
    VERB("Configurations", Check) VERB("Configurations", Diff) VERB("Configurations", Plan) \
    VERB("Frames and signals", Grab) VERB("Frames and signals", Trigger) VERB("Frames and signals", Timeline) \
    VERB("Frames and signals", Serve) VERB("Frames and signals", Io) VERB("Frames and signals", Lut) VERB("Frames and signals", Events) \
    VERB("Board", Status) VERB("Board", Registers) VERB("Board", Advance) VERB("Board", Input) \
    VERB("Board", Wait) VERB("Board", Scene) VERB("Board", Belt) VERB("Board", Fault) \
    VERB("Sessions", Shell) VERB("Sessions", Run) VERB("Sessions", Undo) \
    VERB("About", Info) VERB("About", Xml) VERB("About", Reference) VERB("About", Demo) VERB("About", Manual) \
    VERB("About", Completion) VERB("About", Help)
// clang-format on

#define QUILLON_DECLARE_VERB(group, name) void add##name##Verb(Verbs& verbs);
QUILLON_VERBS(QUILLON_DECLARE_VERB)
#undef QUILLON_DECLARE_VERB

}  // namespace quillon::cli
