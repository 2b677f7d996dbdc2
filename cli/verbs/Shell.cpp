#include "cli/CommandLines.h"
#include "cli/Completions.h"
#include "cli/Interrupt.h"
#include "cli/LineEditor.h"

namespace quillon::cli {

namespace {

void welcome(Session& session, Console& console) {
    console.out << console.outPainter.paint(Style::Strong, "One board and one applet until \"quit\".")
                << " The verbs are those of the command; \"help\" lists them.\n";
    if (session.options().load) {
        console.out << "Loaded: " << session.options().load->string() << '\n';
    }
}

ExitStatus shell(const Description& command, Session& session, Console& console) {
    if (session.lasts()) {
        throw UsageError("a session is open already, and this is it");
    }
    LineRunner runner(session, console);
    const Interrupt interrupt;
    const Hangup hangup;
    const Completions completions(command, session);
    LineEditor editor(historyFile(), [&](const Words& words, const std::string& beginning) {
        return completions.after(words, beginning);
    });
    if (editor.isInteractive()) {
        welcome(session, console);
    }
    console.out << std::flush;
    while (!runner.hasEnded()) {
        const auto line = editor.read("quillon> ");
        if (!line || Hangup::came()) {
            break;
        }
        runner.run(*line);
    }
    return Done;
}

}  // namespace

void addShellVerb(Verbs& verbs) {
    verbs.add("shell", "Open a session: one board and one applet, line after line until \"quit\"",
              "  quillon shell\n"
              "  quillon shell --mcf conveyor.mcf --save tuned.mcf    from one configuration to another\n"
              "Within it:\n"
              "  set FG_WIDTH=2048                  the verbs as ever, without quillon in front\n"
              "  undo                               puts back what the last line changed\n"
              "  advance 1ms                        the board's time passes\n"
              "  quit",
              [verbs](Session& session, Console& console) { return shell(verbs.describe(), session, console); });
}

}  // namespace quillon::cli
