#include "cli/Plan.h"
#include "cli/Answers.h"

#include "cli/Verb.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

struct PlanArguments {
    Wishes wishes;
    std::filesystem::path output;  ///< empty for none
};

void printSettings(Console& console, const Plan& plan) {
    for (const Assignment& assignment : plan.settings) {
        console.out << "set " << assignment.parameter.name << "=" << assignment.text << '\n';
    }
    console.out << (plan.settings.empty() ? "" : "\n");
}

void print(Console& console, const Plan& plan) {
    const auto paint = [&](Style style, const std::string& text) { return console.outPainter.paint(style, text); };
    printSettings(console, plan);
    Rows rows{{"Line rate", scaledInWords(plan.lineRate, "Hz"),
               "a line every " + scaledInWords(1e6 / plan.lineRate, "\u00B5s")},
              {"Frame rate", scaledInWords(plan.frameRate, "Hz"),
               "a frame of " + std::to_string(plan.linesPerFrame) + " lines every " +
                   scaledInWords(1 / plan.frameRate, "s")}};
    if (plan.linePitch) {
        const std::string wanted = scaledInWords(plan.wantedPitch, "\u00B5m");
        const std::string pitch = scaledInWords(*plan.linePitch, "\u00B5m");
        rows.push_back({"Line pitch", pitch, pitch == wanted ? "at any speed" : "at any speed, nearest to " + wanted});
    }
    printRows(console.out, rows);
    console.out << '\n';
    rows.clear();
    for (const FormatRate& format : plan.formats) {
        rows.push_back({(format.chosen ? "*" : " ") + format.name,
                        scaledInWords(static_cast<double>(format.frameBytes), "B") + " a frame",
                        scaledInWords(format.bytesPerSecond, "B/s"),
                        format.fits ? "" : paint(Style::Bad, "more than the PCIe link takes")});
    }
    printRows(console.out, rows);
    console.out << '\n';
    rows.clear();
    for (const Bound& bound : plan.bounds) {
        rows.push_back(
            {bound.name, scaledInWords(bound.needs, bound.unit), "of", scaledInWords(bound.has, bound.unit),
             bound.fits() ? paint(Style::Good, "fits") : paint(Style::Bad, "does not fit: ") + bound.instead});
    }
    printRows(console.out, rows);
}

Json settingsOf(const Plan& plan) {
    Json list = emptyList();
    for (const Assignment& assignment : plan.settings) {
        const Parameter& parameter = assignment.parameter;
        Json entry = object({{"name", parameter.name}});
        putValue(entry, parameter, assignment.value);
        append(list, entry);
    }
    return list;
}

Json answer(const Plan& plan, const std::string& file) {
    Json formats = emptyList();
    for (const FormatRate& format : plan.formats) {
        append(formats, object({{"name", format.name},
                                {"frame", quantity(format.frameBytes, "B")},
                                {"rate", quantity(format.bytesPerSecond, "B/s")},
                                {"fits", format.fits},
                                {"chosen", format.chosen}}));
    }
    Json bounds = emptyList();
    for (const Bound& bound : plan.bounds) {
        Json entry = object({{"name", bound.name},
                             {"needs", quantity(bound.needs, bound.unit)},
                             {"has", quantity(bound.has, bound.unit)},
                             {"fits", bound.fits()}});
        if (!bound.fits()) {
            put(entry, "instead", bound.instead);
        }
        append(bounds, entry);
    }
    Json json = object({{"settings", settingsOf(plan)},
                        {"lineRate", quantity(plan.lineRate, "Hz")},
                        {"linesPerFrame", quantity(plan.linesPerFrame, "lines")},
                        {"frameRate", quantity(plan.frameRate, "Hz")},
                        {"formats", formats},
                        {"bounds", bounds},
                        {"notes", plan.notes},
                        {"fits", plan.fits()}});
    if (plan.linePitch) {
        put(json, "linePitch", quantity(*plan.linePitch, "\u00B5m"));
    }
    if (!file.empty()) {
        put(json, "file", file);
    }
    return json;
}

ExitStatus plan(Session& session, Console& console, const PlanArguments& arguments) {
    // What the session holds stays as it is.
    Options options = session.options();
    options.save.reset();
    Session other(options, &console.err);
    const Plan made = makePlan(other, arguments.wishes);
    std::string file;  // that was written
    if (!arguments.output.empty() && made.fits()) {
        saveConfiguration(other.applet(), arguments.output);
        file = arguments.output.string();
    }
    if (session.options().json) {
        printJson(console, answer(made, file));
    } else {
        print(console, made);
        for (const std::string& note : made.notes) {
            console.out << "Note: " << note << '\n';
        }
        if (!file.empty()) {
            console.out << "\nsaved " << arguments.output.string() << '\n';
        }
    }
    if (!made.fits() && !arguments.output.empty()) {
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << arguments.output.string()
                    << " was not written: not all fits\n";
    }
    return made.fits() ? Done : Refused;
}

}  // namespace

void addPlanVerb(Verbs& verbs) {
    auto arguments = std::make_shared<PlanArguments>();
    Wishes& wishes = arguments->wishes;
    Verb verb = verbs.add(
        "plan",
        "Turn the figures of a line-scan system into settings, and tell what they come to and what does not fit",
        "  quillon plan --width 4096 --line-rate 20kHz --exposure 40us --height 2048 -o web.mcf\n"
        "  quillon plan --width 8192 --line-rate 30kHz --exposure 10us --frames-per-second 20 --format FG_COL48\n"
        "  quillon plan --width 2048 --encoder 40um --speed 500mm/s --line-pitch 50um --exposure 30us -o belt.mcf\n"
        "  quillon plan --mcf web.mcf                      what a configuration comes to\n"
        "\n"
        "Planned is on an applet of its own, as it starts or as --mcf says, and the settings are printed in an order\n"
        "that it has accepted. What does not fit is told with what would, leads to no file and ends with status 1.\n"
        "An encoder's tracks A and B are taken from GPI 0 and GPI 1, and the rates are those at the speed.",
        [arguments](Session& session, Console& console) { return plan(session, console, *arguments); });
    verb.add("--width", &wishes.width, "Pixels of a line").shownAs("PIXELS");
    verb.add("--x-offset", &wishes.xOffset, "Pixels of the camera's line in front of them").shownAs("PIXELS");
    verb.add("--height", &wishes.height, "Lines of a frame").shownAs("LINES");
    verb.add("--frames-per-second", &wishes.framesPerSecond, "Frames a second, in place of --height").shownAs("RATE");
    verb.add("--line-rate", &wishes.lineRate, "Lines a second, or the time from line to line: 20kHz, 50us")
        .shownAs("RATE");
    verb.add("--exposure", &wishes.exposure, "Exposure time of a line: 40us").shownAs("TIME");
    verb.add("--pixel-format", &wishes.pixelFormat, "What the camera sends: RGB8 to RGB16").shownAs("NAME");
    verb.add("--format", &wishes.format, "What the computer gets: FG_COL24 to FG_COL48").shownAs("NAME");
    verb.add("--encoder", &wishes.encoder, "Way of the belt from one pulse of the encoder's track A to the next: 40um")
        .shownAs("LENGTH");
    verb.add("--speed", &wishes.speed, "With --encoder: speed of the belt at its fastest: 500mm/s").shownAs("SPEED");
    verb.add(
            "--line-pitch", &wishes.linePitch,
            "With --encoder: way of the belt from line to line; that of a pulse if neither it nor a line rate is given")
        .shownAs("LENGTH");
    verb.add("-o,--output", &arguments->output, "Save the configuration to this file").shownAs("FILE");
}

}  // namespace quillon::cli
