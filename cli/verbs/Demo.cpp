#include <array>

#include "cli/Refusals.h"
#include "cli/Trace.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

/// A show of what the applet does, one chapter after the other.
class Demo {
public:
    Demo(Session& session, Console& console) : session_(session), out_(console.out), painter_(console.outPainter) {}

    void showApplet() {
        heading("The applet");
        const client::Library& library = session_.library();
        printRows(out_,
                  {{"name", library.infoText(4176)},
                   {"build", library.infoText(4208)},
                   {"design", library.infoText(4112) + ", " + std::to_string(library.designImage().size()) + " bytes"},
                   {"parameters", std::to_string(session_.applet().parameterCount())}},
                  "  ");
        out_ << "  " << library.infoText(4096) << '\n';
    }

    void showRegionOfInterest() {
        heading("A region of interest, step by step");
        out_ << "  One number comes in; it is checked, remembered, and turned into a settled order of design "
                "accesses.\n";
        for (const auto& [name, text] : {std::pair("FG_WIDTH", "2048"), std::pair("FG_HEIGHT", "512"),
                                         std::pair("FG_XOFFSET", "256"), std::pair("FG_YOFFSET", "64")}) {
            step(name, text);
        }
    }

    void showRefusals() {
        heading("Values that are refused");
        out_ << "  A refused value changes nothing, neither in the applet nor in the design.\n";
        step("FG_WIDTH", "1030");
        step("FG_WIDTH", "20000");
        step("FG_VANTAGEPOINT", "FG_VANTAGEPOINT_TOP_RIGHT");
    }

    void showDesignFailure() {
        heading("A design that fails");
        out_ << "  The board is told to answer the next write of XLength with -5: the code comes back, the writes "
                "behind it\n"
                "  are not made, and the applet remembers the old height.\n";
        session_.board().planFault("Device1_Process0_Buffer_0_XLength", client::Direction::Write, 1, -5);
        step("FG_HEIGHT", "1024");
        const Parameter height = findParameter(session_.applet(), "FG_HEIGHT");
        Value value;
        readValue(session_.applet(), height, value);
        out_ << "\n  $ quillon get FG_HEIGHT\n  FG_HEIGHT = " << inWords(height, value) << '\n';
    }

private:
    void heading(const std::string& text) {
        out_ << '\n' << painter_.paint(Style::Strong, text) << '\n' << std::string(displayWidth(text), '-') << '\n';
    }

    void step(const std::string& name, const std::string& text) {
        const Parameter parameter = findParameter(session_.applet(), name);
        const Value value = parseValue(session_.applet(), parameter, text);
        int code = 0;
        const auto accesses = traced(session_.board(), [&] { code = writeValue(session_.applet(), parameter, value); });
        out_ << "\n  $ quillon set " << name << "=" << text << " --trace\n";
        printTrace(out_, painter_, accesses);
        if (code == 0) {
            out_ << "  " << painter_.paint(Style::Good, name + " = " + inWords(parameter, value)) << '\n';
        } else {
            out_ << "  " << painter_.paint(Style::Bad, name + "=" + text) << " "
                 << inWords(explainSet(session_.applet(), parameter, code)) << '\n';
        }
    }

    Session& session_;
    std::ostream& out_;
    const Painter& painter_;
};

ExitStatus demonstrate(Session& session, Console& console) {
    Demo demo(session, console);
    demo.showApplet();
    demo.showRegionOfInterest();
    demo.showRefusals();
    demo.showDesignFailure();
    return Done;
}

}  // namespace

void addDemoVerb(Verbs& verbs) {
    verbs.add("demo", "Show what the applet does, in a minute's reading", "  quillon demo", demonstrate);
}

}  // namespace quillon::cli
