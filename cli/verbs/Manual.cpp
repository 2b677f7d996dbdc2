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

ExitStatus manual(const Description& command, Console& console) {
    std::ostream& out = console.out;
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
    out << ".SH EXAMPLES AND EXIT STATUS\n";
    writeExamples(out, command.footer);
    return Done;
}

}  // namespace

void addManualVerb(Verbs& verbs) {
    verbs.add("manual", "Print this command's manual page", "  quillon manual | man -l -",
              [verbs](Session&, Console& console) { return manual(verbs.describe(), console); });
}

}  // namespace quillon::cli
