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

void writeOptions(std::ostream& out, const CLI::App& app) {
    for (const CLI::Option* option : app.get_options()) {
        const bool named =
            !option->get_positional() && !option->get_type_name().empty() && option->get_expected_max() > 0;
        const std::string type = named ? " " + option->get_type_name() : "";
        out << ".TP\n.B " << escaped(option->get_name(false, true) + type) << '\n'
            << escaped(option->get_description()) << '\n';
    }
}

void writeExamples(std::ostream& out, const std::string& footer) {
    out << ".PP\n.nf\n" << escaped(footer) << "\n.fi\n";
}

ExitStatus manual(const CLI::App& command, Console& console) {
    std::ostream& out = console.out;
    out << ".TH QUILLON 1\n.SH NAME\nquillon \\- talk to the frame grabber applet\n"
        << ".SH SYNOPSIS\n.B quillon\n[OPTIONS] VERB [ARGUMENTS]\n"
        << ".SH DESCRIPTION\n"
        << escaped(command.get_description()) << "\n.SH OPTIONS\n";
    writeOptions(out, command);
    out << ".SH VERBS\n";
    for (const CLI::App* verb : command.get_subcommands(nullptr)) {
        out << ".SS " << escaped(verb->get_name()) << '\n' << escaped(verb->get_description()) << '\n';
        writeOptions(out, *verb);
        writeExamples(out, verb->get_footer());
    }
    out << ".SH EXAMPLES AND EXIT STATUS\n";
    writeExamples(out, command.get_footer());
    return Done;
}

}  // namespace

void addManualVerb(Verbs& verbs) {
    const CLI::App& command = verbs.commands();
    verbs.add("manual", "Print this command's manual page", "  quillon manual | man -l -",
              [&command](Session&, Console& console) { return manual(command, console); });
}

}  // namespace quillon::cli
