#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <type_traits>
#include <utility>

#include "cli/Arguments.h"
#include "cli/Refusals.h"
#include "cli/Suggestions.h"
#include "cli/Verb.h"

// The one file that knows the library which reads command lines: its header takes longer to compile than any of ours.

namespace quillon::cli {

namespace {

/// Adds all verbs, each to its group.
void addVerbs(CLI::App& app, Verbs& verbs) {
#define QUILLON_ADD_VERB(title, name) \
    add##name##Verb(verbs);           \
    app.get_subcommands(nullptr).back()->group(title);
    QUILLON_VERBS(QUILLON_ADD_VERB)
#undef QUILLON_ADD_VERB
}

constexpr const char* description =
    "quillon opens the applet on a software board and talks to it: what the applet is, what its parameters hold,\n"
    "and what a change of one does to the design. A board lives as long as one command, and as long as quillon shell "
    "or\n"
    "quillon run; --mcf and --save carry state over.";

constexpr const char* examples =
    "Examples:\n"
    "  quillon info                                   what the applet is\n"
    "  quillon get FG_WIDTH FG_HEIGHT                 what parameters hold\n"
    "  quillon set FG_WIDTH=2048 --trace              a change, and every access to the design that it causes\n"
    "  quillon describe FG_XOFFSET                    everything about one parameter\n"
    "  quillon list --group ROI                       the tree of parameters\n"
    "  quillon find exposure                          parameters by what is told of them\n"
    "  quillon grab -o out.png                        a frame as a picture\n"
    "\n"
    "Exit status: 0 done, 1 refused by the applet or the design, 2 usage, 3 no library or board.";

/// An empty word is mostly a variable of a script that holds nothing.
std::string notEmpty(const std::string& word) {
    return word.empty() ? "an empty word" : "";
}

/// What opens a session; within one that lasts it is too late for them.
void addOpeningOptions(CLI::App& app, Options& options) {
    app.add_option("--library", options.library,
                   "The applet; by default that of the command's own build or installation")
        ->type_name("PATH");
    app.add_option("--softboard", options.softBoard,
                   "The software board's libraries; by default lib/softboard beside the applet's")
        ->type_name("DIR");
    app.add_option("--design", options.design, "Load this design file (.tav) instead of the carried one")
        ->type_name("FILE");
}

void addCommonOptions(CLI::App& app, Options& options) {
    app.add_option("--mcf", options.load, "Load this configuration after opening")->type_name("FILE")->check(notEmpty);
    app.add_option("--save", options.save, "Save the configuration to this file at the end")
        ->type_name("FILE")
        ->check(notEmpty);
    app.add_flag("--quiet", options.quiet, "Do not tell what a load or a save of a configuration does without a word");
    app.add_flag("--strict", options.strict, "Do not load a configuration that check finds errors in");
    app.add_flag("--json", options.json, "Answer as JSON");
    app.set_version_flag("--version", "quillon " QUILLON_VERSION, "Print the version of the command and exit");
}

int reportCode(const Options& options, Console& console, ExitStatus status, const std::string& message, int code) {
    const Refusal refusal = explainGet(code);
    return report(options, console, status, message, &refusal);
}

std::string noSuchVerb(const CLI::App& app, const std::string& word) {
    std::vector<std::string> names;
    for (const CLI::App* verb : app.get_subcommands(nullptr)) {
        names.push_back(verb->get_name());
    }
    return "there is no verb \"" + word + "\"" + didYouMean(word, names);
}

/// Says what a command line lacks; a word that was meant to be a verb gets the nearest one.
int reportUsage(const CLI::App& app, const Options& options, const CLI::ParseError& error, Console& console) {
    const std::vector<std::string> unknown = app.remaining();
    if (app.get_subcommands().empty() && !unknown.empty()) {
        return report(options, console, Usage, noSuchVerb(app, unknown.front()));
    }
    return report(options, console, Usage, std::string(error.what()) + "; --help tells more");
}

ExitStatus carryOut(Session& session, const Action& action, Console& console) {
    const ExitStatus status = action(session, console);
    if (status == Done) {
        session.saveIfAsked();
    } else if (session.options().save) {
        console.err << session.options().save->string() << " was not written, as the command failed\n";
    }
    return status;
}

int perform(const Options& options, const Action& action, Console& console, Session* lasting) {
    try {
        if (lasting != nullptr) {
            Session session(options, &console.err, *lasting);
            return carryOut(session, action, console);
        }
        Session session(options, &console.err);
        return carryOut(session, action, console);
    } catch (const UsageError& error) {
        return report(options, console, Usage, error.what());
    } catch (const RefusedError& error) {
        return report(options, console, Refused, error.what(), error.refusal());
    } catch (const client::LibraryError& error) {
        return report(options, console, Unavailable, error.what());
    } catch (const client::OpenError& error) {
        return reportCode(options, console, Unavailable, error.what(), error.status);
    } catch (const client::CallError& error) {
        return reportCode(options, console, Refused, error.what(), error.code);
    } catch (const std::exception& error) {
        return report(options, console, Refused, error.what());
    }
}

Description describeApp(const CLI::App& app) {
    Description told{app.get_name(), app.get_description(), app.get_footer(), {}, {}};
    for (const CLI::Option* option : app.get_options()) {
        const bool hasWord =
            !option->get_positional() && !option->get_type_name().empty() && option->get_expected_max() > 0;
        told.options.push_back({option->get_name(false, true), option->get_lnames(),
                                hasWord ? option->get_type_name() : "", option->get_description()});
    }
    for (const CLI::App* verb : app.get_subcommands(nullptr)) {
        told.verbs.push_back(describeApp(*verb));
    }
    return told;
}

}  // namespace

int report(const Options& options, Console& console, ExitStatus status, const std::string& message,
           const Refusal* refusal) {
    console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << visible(message) << '\n';
    if (options.json && (console.jsonPerLine || !console.hasAnswered)) {
        Json json = object({{"error", message}, {"status", static_cast<int>(status)}});
        if (refusal != nullptr) {
            put(json, "refused", toJson(*refusal));
        }
        printJson(console, json);
    }
    return status;
}

Argument& Argument::required() {
    option_.required();
    return *this;
}

Argument& Argument::shownAs(const char* word) {
    option_.type_name(word);
    return *this;
}

Argument& Argument::words(int count) {
    option_.expected(count);
    return *this;
}

Argument& Argument::oneWordEach() {
    option_.allow_extra_args(false);
    return *this;
}

Argument& Argument::orWithout(const char* word) {
    option_.expected(0, 1)->default_str(word);
    return *this;
}

Argument& Argument::within(double least, double most) {
    option_.check(CLI::Range(least, most));
    return *this;
}

Argument& Argument::within(int least, int most) {
    option_.check(CLI::Range(least, most));
    return *this;
}

Argument& Argument::oneOf(const std::vector<std::string>& words) {
    option_.check(CLI::IsMember(words));
    return *this;
}

Argument Verb::add(const char* name, Place place, const char* help) {
    return std::visit(
        [&](auto* target) -> Argument {
            using Target = std::remove_pointer_t<decltype(target)>;
            if constexpr (std::is_same_v<Target, bool>) {
                return Argument(*app_.add_flag(name, *target, help));
            } else if constexpr (std::is_same_v<Target, std::string> || std::is_same_v<Target, std::filesystem::path>) {
                return Argument(*app_.add_option(name, *target, help)->check(notEmpty));
            } else {
                return Argument(*app_.add_option(name, *target, help));
            }
        },
        place);
}

Verb Verbs::add(const std::string& name, const std::string& summary, const std::string& examplesOfVerb, Action action) {
    CLI::App* verb = commands_.add_subcommand(name, summary);
    verb->footer("Examples:\n" + examplesOfVerb);
    verb->callback([&chosen = chosen_, action = std::move(action)] { chosen = action; });
    return Verb(*verb);
}

Description Verbs::describe() const {
    return describeApp(commands_);
}

std::string Verbs::help(const std::string& verb) const {
    if (verb.empty()) {
        // Its own function tells about the verb that was chosen.
        return commands_.get_formatter()->make_help(&commands_, commands_.get_name(), CLI::AppFormatMode::Normal);
    }
    for (const CLI::App* one : commands_.get_subcommands(nullptr)) {
        if (one->get_name() == verb) {
            return one->help(commands_.get_name());
        }
    }
    throw UsageError(noSuchVerb(commands_, verb));
}

namespace {

/// What a command takes if nothing else is said: within a session that lasts, what that was opened with.
Options startingOptions(const Session* lasting) {
    Options options = lasting != nullptr ? lasting->options() : defaultOptions();
    options.load.reset();
    options.save.reset();
    return options;
}

int run(std::vector<std::string> words, Console& console, Session* lasting) {
    CLI::App app(description, "quillon");
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(examples);
    Options options = startingOptions(lasting);
    if (lasting == nullptr) {
        addOpeningOptions(app, options);
    }
    addCommonOptions(app, options);
    Action chosen;
    Verbs verbs(app, chosen);
    addVerbs(app, verbs);

    words = protectNegativeNumbers(std::move(words));
    std::reverse(words.begin(), words.end());  // the parser takes them from the back
    try {
        app.parse(words);
    } catch (const CLI::CallForHelp&) {
        console.out << foldLines(app.help(), lineWidth());
        return Done;
    } catch (const CLI::ParseError& error) {
        return error.get_exit_code() == 0 ? app.exit(error, console.out, console.err)
                                          : reportUsage(app, options, error, console);
    }
    return perform(options, chosen, console, lasting);
}

}  // namespace

int runCommand(std::vector<std::string> words, std::ostream& out, std::ostream& err) {
    Console console{out, err};
    try {
        return run(std::move(words), console, nullptr);
    } catch (const std::exception& error) {
        return report({}, console, Refused, error.what());
    }
}

int runCommand(std::vector<std::string> words, Console& console, Session& lasting) {
    try {
        return run(std::move(words), console, &lasting);
    } catch (const std::exception& error) {
        return report(startingOptions(&lasting), console, Refused, error.what());
    }
}

}  // namespace quillon::cli
