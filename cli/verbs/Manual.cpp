#include <array>
#include <cctype>
#include <filesystem>
#include <memory>
#include <system_error>

#include "cli/PartFile.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

/// A text as the page formatter takes it: no backslash, hyphen or leading dot with a meaning of its own.
std::string escaped(const std::string& text) {
    std::string result;
    bool lineBegins = true;
    for (const char character : text) {
        if (character == '\\') {
            result += "\\e";
        } else if (character == '-') {
            result += "\\-";
        } else {
            result += lineBegins && (character == '.' || character == '\'') ? "\\&" : "";
            result += character;
        }
        lineBegins = character == '\n';
    }
    return result;
}

void writeOptions(std::ostream& out, const Description& verb) {
    for (const Description::Option& option : verb.options) {
        out << ".TP\n.B " << escaped(option.name + (option.value.empty() ? "" : " " + option.value)) << '\n'
            << escaped(option.text) << '\n';
    }
}

void writeExamples(std::ostream& out, const std::string& footer) {
    out << ".PP\n.nf\n" << escaped(footer) << "\n.fi\n";
}

struct Term {
    const char* word;
    const char* text;
};

constexpr std::array exitStatus{
    Term{"0", "Done."},
    Term{"1",
         "Refused by the applet or the design, or a file or standard output could not be written. A reader of a "
         "pipe that has enough is no error."},
    Term{"2", "Usage: an unknown verb, option or name, a text that is no value."},
    Term{"3", "No library or no board."},
};

constexpr std::array environment{
    Term{"COLUMNS",
         "Characters of a line, by which tables and help are folded. By default as many as the terminal "
         "has; without a terminal lines stay whole."},
    Term{"NO_COLOR", "Holds anything: no colour. Colour is for terminals alone."},
    Term{"QUILLON_HOME", "The folder above lib/libQuillon.so and lib/softboard, if they are not near the command."},
    Term{"TERM", "\"dumb\": neither colour nor a line that tells of progress."},
    Term{"TMPDIR", "Folder for what lives no longer than the command; by default /tmp."},
    Term{"ORLO_ENABLE_DRA",
         "\"yes\", \"true\", \"on\" or \"1\": registers of the design are parameters DRA_... as well."},
    Term{"ORLO_ENABLE_DIXA", "The same for the SDK's own parameters, DIXA_..."},
    Term{"ORLO_LOG_LEVEL, ORLO_LOG_FILE",
         "Lowest level of the log that is shown, of which 4 shows all, and the file "
         "that it goes to."},
};

constexpr std::array files{
    Term{"*.mcf",
         "Configurations: the values of all parameters that are saved, as text. \"quillon check\" tells what "
         "a load would keep silent about."},
    Term{"*.lut", "Lookup tables: 16384 entries for each of three colours, as text."},
    Term{"*.tav", "Design files, for --design."},
    Term{"lib/libQuillon.so, lib/softboard",
         "The applet and the software board's libraries, in the build folder of the command, or in quillon/ beside the "
         "libraries of its installation."},
};

constexpr const char* json =
    "With --json a verb answers with JSON on standard output, in UTF-8, and tells errors on standard error all the "
    "same. Where nothing came of the command the answer is an object with \"error\", a text, and \"status\", the "
    "exit status. Numbers are exact, where words round them to twelve digits; an enumerator is its number, with its "
    "name beside it, and what has a unit tells it. A lookup table is told in short, and its entries where some were "
    "asked for, as FG_LUT_VALUE_RED[0..255] or with --range. An answer that repeats, as with --watch, is one line "
    "each time. A schema for the answer of each verb lies in docs/json. Bytes of file names and other texts that are "
    "no UTF-8 are read as Latin-1, and those that are no characters there are replaced by U+FFFD.";

template <typename Terms>
void writeTerms(std::ostream& out, const char* heading, const Terms& terms) {
    out << ".SH " << heading << '\n';
    for (const Term& term : terms) {
        out << ".TP\n.B " << escaped(term.word) << '\n' << escaped(term.text) << '\n';
    }
}

void writeCommand(std::ostream& out, const Description& command) {
    out << ".TH QUILLON 1\n.SH NAME\nquillon \\- talk to the frame grabber applet\n"
        << ".SH SYNOPSIS\n.B quillon\n[OPTIONS] VERB [ARGUMENTS]\n"
        << ".SH DESCRIPTION\n"
        << escaped(command.text) << "\n.SH OPTIONS\n";
    writeOptions(out, command);
    out << ".SH VERBS\n";
    for (const Description& verb : command.verbs) {
        out << ".SS " << escaped(verb.name) << '\n' << escaped(verb.text) << '\n';
        writeOptions(out, verb);
        writeExamples(out, verb.footer);
    }
    out << ".SH EXAMPLES\n";
    writeExamples(out, command.footer);
    writeTerms(out, "EXIT STATUS", exitStatus);
    writeTerms(out, "ENVIRONMENT", environment);
    writeTerms(out, "FILES", files);
    out << ".SH JSON\n" << escaped(json) << '\n';
}

std::string upperCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char letter) { return static_cast<char>(std::toupper(letter)); });
    return text;
}

/// A page of the verb's own, which leaves what all verbs share to that of the command.
void writeVerb(std::ostream& out, const Description& verb) {
    out << ".TH QUILLON\\-" << escaped(upperCase(verb.name)) << " 1\n.SH NAME\nquillon\\-" << escaped(verb.name)
        << " \\- " << escaped(verb.text) << "\n.SH SYNOPSIS\n.B quillon " << escaped(verb.name)
        << "\n[OPTIONS] [ARGUMENTS]\n.SH DESCRIPTION\n"
        << escaped(verb.text) << ".\n.SH OPTIONS\n";
    writeOptions(out, verb);
    out << ".SH EXAMPLES\n";
    writeExamples(out, verb.footer);
    out << ".SH SEE ALSO\n.BR quillon (1),\nwhich tells options of all verbs, exit status, environment and files.\n";
}

void writePages(const Description& command, const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw RefusedError(folder.string() + ": " + error.message());
    }
    std::ostringstream page;
    writeCommand(page, command);
    writeWhole(folder / "quillon.1", page.str());
    for (const Description& verb : command.verbs) {
        page.str("");
        writeVerb(page, verb);
        writeWhole(folder / ("quillon-" + verb.name + ".1"), page.str());
    }
}

struct ManualArguments {
    std::string verb;
    std::string folder;
};

ExitStatus manual(const Description& command, Console& console, const ManualArguments& arguments) {
    if (!arguments.folder.empty()) {
        writePages(command, arguments.folder);
    } else if (arguments.verb.empty()) {
        writeCommand(console.out, command);
    } else {
        const auto verb = std::ranges::find(command.verbs, arguments.verb, &Description::name);
        if (verb == command.verbs.end()) {
            throw UsageError("there is no verb \"" + arguments.verb + "\"; quillon --help lists all");
        }
        writeVerb(console.out, *verb);
    }
    return Done;
}

}  // namespace

void addManualVerb(Verbs& verbs) {
    auto arguments = std::make_shared<ManualArguments>();
    Verb verb = verbs.add(
        "manual", "Print the manual page of this command, or that of a verb",
        "  quillon manual | man -l -\n"
        "  quillon manual grab | man -l -\n"
        "  quillon manual --pages ~/.local/share/man/man1     all pages, for man quillon-grab",
        [verbs, arguments](Session&, Console& console) { return manual(verbs.describe(), console, *arguments); });
    verb.add("VERB", &arguments->verb, "The verb; without one the page of the command");
    verb.add("--pages", &arguments->folder, "Write the page of the command and one of each verb into this folder")
        .shownAs("DIR");
}

}  // namespace quillon::cli
