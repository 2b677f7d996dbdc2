#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>

#include "cli/CommandLine.h"
#include "cli/CommandLines.h"
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
                  {{"name", library.infoText(QuillonInfoName)},
                   {"build", library.infoText(QuillonInfoVersionWithDate)},
                   {"design", library.infoText(QuillonInfoCategory) + ", " +
                                  std::to_string(library.designImage().size()) + " bytes"},
                   {"parameters", std::to_string(session_.applet().parameterCount())}},
                  "  ");
        out_ << "  " << library.infoText(QuillonInfoDescription) << '\n';
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

    /// What a configuration does, with an example that people would use.
    void showConfiguration(const std::filesystem::path& example, const std::filesystem::path& folder) {
        heading("A configuration");
        run({"load", example.string(), "--trace"}, 24);
        run({"trigger", "--mcf", example.string()});

        heading("A wrong value, found before a load keeps it silently");
        const std::filesystem::path broken = folder / "broken.mcf";
        writeWithWrongValue(example, broken);
        run({"get", "FG_LINE_DOWNSCALE", "--mcf", broken.string()});
        run({"check", broken.string()});

        heading("Saved and compared");
        const std::filesystem::path changed = folder / "changed.mcf";
        run({"set", "FG_PROCESSING_GAMMA=2.2", "--mcf", example.string(), "--save", changed.string()});
        run({"diff", example.string(), changed.string()});
        run({"lut", "--mcf", changed.string()});
    }

    void showDescription() {
        heading("The description for other programs");
        run({"describe", "FG_XOFFSET"});
        run({"xml"}, 12);
    }

    /// What the parameters do to pixels, with pictures in `folder`.
    void showPictures(const std::filesystem::path& folder) {
        heading("Pictures");
        out_
            << "  The simulator takes the camera's place; its frames are written as pictures, and shown as they are.\n";
        const std::vector<std::string> simulator{"--set", "FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR", "--set",
                                                 "FG_CAMERASIMULATOR_PATTERN=FG_DIAGONAL"};
        grab(folder / "pattern.png", simulator);
        out_ << "\n  The same with white balance and gamma:\n";
        grab(folder / "white_balance_and_gamma.png", simulator,
             {"FG_SCALINGFACTOR_RED=1.0", "FG_SCALINGFACTOR_GREEN=0.6", "FG_SCALINGFACTOR_BLUE=0.3",
              "FG_LUT_ENABLE=FG_ON", "FG_PROCESSING_GAMMA=2.2"});
        out_ << "\n  A region of interest of it:\n";
        grab(folder / "region_of_interest.png", simulator, {"FG_WIDTH=256", "FG_XOFFSET=128", "FG_HEIGHT=128"});
    }

    /// What a belt in front of the camera does to pictures; `examples` has the part and its configuration.
    void showConveyor(const std::filesystem::path& examples, const std::filesystem::path& folder) {
        const Words byEncoder{"--encoder", "2.5/mm"};
        heading("A conveyor");
        out_ << "  A part on a belt that runs three times as fast from the middle of the part on. On the left the "
                "belt's\n"
                "  encoder makes the lines, on the right the grabber does, every 2 ms:\n";
        const std::string faster = "200mm/s:1450ms,600mm/s";
        Words left = shoot(examples, folder / "conveyor_encoder.png", faster, byEncoder);
        showBoth(left, shoot(examples, folder / "conveyor_free_running.png", faster,
                             {"--set", "FG_LINETRIGGERMODE=GRABBER_CONTROLLED", "--set", "FG_LINEPERIODE=2ms"}));
        out_ << "\n  The belt stops in the middle, runs back 40 mm and on: with the encoder's compensation, and "
                "without:\n";
        const std::string back = "200mm/s:1450ms,0:200ms,-200mm/s:200ms,200mm/s";
        Words uncompensated = byEncoder;
        uncompensated.insert(uncompensated.end(), {"--set", "FG_SHAFTENCODER_COMPENSATION_ENABLE=FG_OFF"});
        left = shoot(examples, folder / "conveyor_compensation_on.png", back, byEncoder);
        showBoth(left, shoot(examples, folder / "conveyor_compensation_off.png", back, uncompensated));
    }

private:
    using Words = std::vector<std::string>;

    /// A picture of the part on the belt, with the lines that show it.
    Words shoot(const std::filesystem::path& examples, const std::filesystem::path& file, const std::string& belt,
                const Words& more) {
        Words words = splitLine("--tile --scale 2.5/mm --barrier 30mm:320mm --set FG_WIDTH=1024 --set FG_HEIGHT=850");
        words.insert(words.begin(), {"grab", "-o", file.string(), "--mcf", examples / "shaft_encoder_conveyor.mcf",
                                     "--scene", examples / "conveyor" / "part.png", "--belt", belt});
        words.insert(words.end(), more.begin(), more.end());
        words.insert(words.end(), {"--show", "--graphics", "blocks", "--columns", "32"});
        return answerOf(words);
    }

    /// Answers with a picture each: the pictures side by side, and what there is beside them.
    void showBoth(const Words& left, const Words& right) {
        const auto isPicture = [](const std::string& line) { return line.starts_with('\033'); };
        Words rows;
        Words rest;
        std::ranges::copy_if(left, std::back_inserter(rows), isPicture);
        std::ranges::remove_copy_if(left, std::back_inserter(rest), isPicture);
        auto row = rows.begin();
        for (const std::string& line : right) {
            if (!isPicture(line)) {
                rest.push_back(line);
            } else if (row != rows.end()) {
                *row++ += "    " + line;
            }
        }
        printLines(rows, rows.size());
        printLines(rest, rest.size());
    }

    void grab(const std::filesystem::path& file, std::vector<std::string> words,
              const std::vector<std::string>& assignments = {}) {
        for (const std::string& assignment : assignments) {
            words.insert(words.end(), {"--set", assignment});
        }
        words.insert(words.begin(), {"grab", "-o", file.string(), "--show", "--graphics", "blocks", "--columns", "32"});
        run(words, std::numeric_limits<std::size_t>::max());
    }

    /// Runs a command as a person would, on a board of its own, and shows its first `most` lines.
    void run(const std::vector<std::string>& words, std::size_t most = 40) { printLines(answerOf(words), most); }

    /// Shows a command, and carries it out.
    std::vector<std::string> answerOf(std::vector<std::string> words) {
        out_ << "\n  $ quillon";
        for (const std::string& word : words) {
            out_ << ' ' << word;
        }
        out_ << '\n';
        const Options& options = session_.options();
        words.insert(words.end(), {"--library", options.library.string(), "--softboard", options.softBoard.string()});
        std::stringstream answer;
        runCommand(words, answer, answer);
        std::vector<std::string> lines;
        for (std::string line; std::getline(answer, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    void printLines(const std::vector<std::string>& lines, std::size_t most) {
        for (std::size_t i = 0; i < std::min(most, lines.size()); ++i) {
            out_ << "  " << lines[i] << '\n';
        }
        if (lines.size() > most) {
            out_ << "  ... " << lines.size() << " lines\n";
        }
    }

    /// Copies a configuration and puts a downscale of 0 into it, which no handler accepts.
    static void writeWithWrongValue(const std::filesystem::path& from, const std::filesystem::path& to) {
        std::ifstream original(from);
        std::ofstream copy(to);
        std::string line;
        while (std::getline(original, line)) {
            copy << (line.starts_with("FG_LINE_DOWNSCALE=") ? "FG_LINE_DOWNSCALE=0;" : line) << '\n';
        }
    }

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

/// A folder for the show's files, gone with the object.
class DemoFolder {
public:
    DemoFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillon-demo-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw RefusedError("cannot make a folder in " + std::filesystem::temp_directory_path().string());
        }
        path_ = pattern;
    }
    DemoFolder(const DemoFolder&) = delete;
    DemoFolder& operator=(const DemoFolder&) = delete;
    ~DemoFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

struct DemoArguments {
    std::filesystem::path example = "examples/free_running_4k.mcf";
    std::filesystem::path pictures;
};

ExitStatus demonstrate(Session& session, Console& console, const DemoArguments& arguments) {
    const std::filesystem::path& example = arguments.example;
    Demo demo(session, console);
    demo.showApplet();
    demo.showRegionOfInterest();
    demo.showRefusals();
    demo.showDesignFailure();
    if (std::filesystem::exists(example)) {
        const DemoFolder folder;
        demo.showConfiguration(example, folder.path());
    } else {
        console.err << "quillon: " << example.string()
                    << " is not there; the chapters on configurations are left out\n";
    }
    demo.showDescription();
    const DemoFolder passing;
    const std::filesystem::path& pictures = arguments.pictures.empty() ? passing.path() : arguments.pictures;
    std::filesystem::create_directories(pictures);
    demo.showPictures(pictures);
    if (const std::filesystem::path folder = example.parent_path(); std::filesystem::exists(folder / "conveyor")) {
        demo.showConveyor(folder, pictures);
    }
    return Done;
}

}  // namespace

void addDemoVerb(Verbs& verbs) {
    auto arguments = std::make_shared<DemoArguments>();
    Verb verb = verbs.add(
        "demo", "Show what the applet does, in a few minutes' reading",
        "  quillon demo\n"
        "  quillon demo --example conveyor.mcf        with a configuration of one's own\n"
        "  quillon demo --pictures shots              with its pictures in a folder of one's own",
        [arguments](Session& session, Console& console) { return demonstrate(session, console, *arguments); });
    verb.add("--example", &arguments->example, "Configuration to show; by default examples/free_running_4k.mcf")
        .shownAs("FILE");
    verb.add("--pictures", &arguments->pictures, "Keep the pictures in this folder; without it they go with the show")
        .shownAs("FOLDER");
}

}  // namespace quillon::cli
