/// @file
/// What a verb is made of. A verb lives in a file of its own in cli/verbs: its arguments, its help and what it does.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <ostream>
#include <string>

#include "cli/ExitStatus.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/Values.h"

namespace quillon::cli {

/// Where a verb's words go.
struct Console {
    std::ostream& out;
    std::ostream& err;
    Painter outPainter{1};
    Painter errPainter{2};
};

using Action = std::function<ExitStatus(Session&, Console&)>;

/// Where verbs enter themselves.
class Verbs {
public:
    Verbs(CLI::App& commands, Action& chosen) : commands_(commands), chosen_(chosen) {}

    /// Adds a verb; `action` runs once the whole command line has been understood. `examples` closes its help.
    CLI::App& add(const std::string& name, const std::string& summary, const std::string& examples, Action action) {
        CLI::App* verb = commands_.add_subcommand(name, summary);
        verb->footer("Examples:\n" + examples);
        verb->callback([&chosen = chosen_, action = std::move(action)] { chosen = action; });
        return *verb;
    }

    /// The whole command, for verbs that tell about it.
    CLI::App& commands() const { return commands_; }

private:
    CLI::App& commands_;
    Action& chosen_;
};

void addInfoVerb(Verbs& verbs);
void addGetVerb(Verbs& verbs);
void addSetVerb(Verbs& verbs);
void addRegistersVerb(Verbs& verbs);
void addListVerb(Verbs& verbs);
void addDescribeVerb(Verbs& verbs);
void addXmlVerb(Verbs& verbs);
void addEventsVerb(Verbs& verbs);
void addSaveVerb(Verbs& verbs);
void addLoadVerb(Verbs& verbs);
void addCheckVerb(Verbs& verbs);
void addDiffVerb(Verbs& verbs);
void addStatusVerb(Verbs& verbs);
void addLutVerb(Verbs& verbs);
void addTriggerVerb(Verbs& verbs);
void addIoVerb(Verbs& verbs);
void addDemoVerb(Verbs& verbs);
void addReferenceVerb(Verbs& verbs);
void addManualVerb(Verbs& verbs);
void addCompletionVerb(Verbs& verbs);

}  // namespace quillon::cli
