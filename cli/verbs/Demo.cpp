#include <array>
#include <fstream>
#include <sstream>

#include "cli/CommandLine.h"
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

private:
    /// Runs a command as a person would, on a board of its own, and shows its first `most` lines.
    void run(std::vector<std::string> words, std::size_t most = 40) {
        out_ << "\n  $ quillon";
        for (const std::string& word : words) {
            out_ << ' ' << word;
        }
        out_ << '\n';
        const Options& options = session_.options();
        words.insert(words.end(), {"--library", options.library.string(), "--softboard", options.softBoard.string()});
        std::stringstream answer;
        runCommand(words, answer, answer);
        std::string line;
        std::size_t shown = 0;
        while (std::getline(answer, line)) {
            if (++shown <= most) {
                out_ << "  " << line << '\n';
            }
        }
        if (shown > most) {
            out_ << "  ... " << shown << " lines\n";
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

ExitStatus demonstrate(Session& session, Console& console, const std::filesystem::path& example) {
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
    return Done;
}

}  // namespace

void addDemoVerb(Verbs& verbs) {
    auto example = std::make_shared<std::filesystem::path>("examples/free_running_4k.mcf");
    Verb verb =
        verbs.add("demo", "Show what the applet does, in a few minutes' reading",
                  "  quillon demo\n"
                  "  quillon demo --example conveyor.mcf        with a configuration of one's own",
                  [example](Session& session, Console& console) { return demonstrate(session, console, *example); });
    verb.add("--example", example.get(), "Configuration to show; by default examples/free_running_4k.mcf")
        .shownAs("FILE");
}

}  // namespace quillon::cli
