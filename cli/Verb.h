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

void addInfoVerb(Verbs& verbs);
void addGetVerb(Verbs& verbs);
void addSetVerb(Verbs& verbs);
void addRegistersVerb(Verbs& verbs);
void addListVerb(Verbs& verbs);
void addFindVerb(Verbs& verbs);
void addDescribeVerb(Verbs& verbs);
void addXmlVerb(Verbs& verbs);
void addEventsVerb(Verbs& verbs);
void addSaveVerb(Verbs& verbs);
void addLoadVerb(Verbs& verbs);
void addApplyVerb(Verbs& verbs);
void addCheckVerb(Verbs& verbs);
void addDiffVerb(Verbs& verbs);
void addPlanVerb(Verbs& verbs);
void addStatusVerb(Verbs& verbs);
void addWatchVerb(Verbs& verbs);
void addLutVerb(Verbs& verbs);
void addTriggerVerb(Verbs& verbs);
void addTimelineVerb(Verbs& verbs);
void addIoVerb(Verbs& verbs);
void addGrabVerb(Verbs& verbs);
void addDemoVerb(Verbs& verbs);
void addReferenceVerb(Verbs& verbs);
void addManualVerb(Verbs& verbs);
void addCompletionVerb(Verbs& verbs);
void addHelpVerb(Verbs& verbs);
void addShellVerb(Verbs& verbs);
void addRunVerb(Verbs& verbs);
void addUndoVerb(Verbs& verbs);
void addAdvanceVerb(Verbs& verbs);
void addInputVerb(Verbs& verbs);
void addWaitVerb(Verbs& verbs);

}  // namespace quillon::cli
