#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "cli/Assignments.h"
#include "cli/FrameObstacles.h"
#include "cli/Interrupt.h"
#include "cli/Units.h"
#include "cli/Verb.h"
#include "cli/WorldWords.h"
#include "cli/pictures/FileTemplate.h"
#include "cli/pictures/FrameFile.h"
#include "cli/pictures/Histogram.h"
#include "cli/pictures/Preview.h"
#include "quillon/client/Frames.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

// What --histogram holds without a file, and without the option.
constexpr const char* InTerminal = "-";

// What --graphics takes.
constexpr const char* Sixel = "sixel";
constexpr const char* Blocks = "blocks";

struct GrabArguments {
    unsigned count = 1;
    std::string output;
    std::vector<std::string> assignments;
    std::string clock = "free";
    std::string timeout = "5s";
    bool show = false;
    bool each = false;
    std::string graphics;
    unsigned columns = 0;  ///< 0: the terminal's
    std::string histogram;
    SceneWords scene;
    BeltWords belt;
    FaultWords faults;
};

/// What was asked for in words that have been understood.
struct World {
    Scene scene;
    Belt belt;
    Faults faults;
};

/// Sixel graphics have pixels of their own; a terminal that does not tell their size has cells of about this one.
constexpr unsigned CellWidth = 8;
constexpr unsigned CellHeight = 16;

/// Whole seconds.
unsigned timeoutOf(const std::string& text) {
    constexpr double longest = 86400;
    const double seconds = parseSeconds(text);
    if (seconds <= 0 || seconds > longest) {
        throw UsageError("--timeout " + text + ": more than 0 and at most 86400s");
    }
    return static_cast<unsigned>(std::ceil(seconds));
}

/// What has come so far.
struct Statistics {
    std::uint64_t frames = 0;
    std::uint64_t lost = 0;
    std::uint64_t lostLines = 0;
    std::uint64_t faults = 0;  ///< planned ones that struck
    bool overflow = false;     ///< of the board's memory
    std::uint64_t bytes = 0;
    double seconds = 0;
    std::uint64_t firstTick = 0;  ///< of the first frame's end
    std::uint64_t lastTick = 0;   ///< of the latest frame's end
    std::vector<std::string> files;
    std::vector<std::string> reasons;  ///< why not all came

    double rate() const { return seconds > 0 ? static_cast<double>(frames) / seconds : 0; }
    /// Frames in a second of the board's time; 0 for less than two.
    double boardRate() const {
        constexpr double ticksPerSecond = 125e6;
        return lastTick > firstTick
                   ? static_cast<double>(frames - 1) * ticksPerSecond / static_cast<double>(lastTick - firstTick)
                   : 0;
    }
};

std::string rounded(double number) {
    return client::readable(std::round(number * 10) / 10);
}

/// One line on standard error that is written again and again, where that is a terminal.
class Progress {
public:
    Progress(std::ostream& out, unsigned wanted) : out_(out), wanted_(wanted), visible_(takesEscapes(STDERR_FILENO)) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    void show(const Statistics& statistics) const {
        if (visible_) {
            out_ << "\rframe " << statistics.frames << " of " << wanted_ << ", " << rounded(statistics.rate())
                 << " a second, " << statistics.lost << " lost\033[K" << std::flush;
        }
    }
    void clear() const {
        if (visible_) {
            out_ << "\r\033[K" << std::flush;
        }
    }

private:
    std::ostream& out_;
    unsigned wanted_;
    bool visible_;
};

/// Puts frames on the screen.
class Display {
public:
    Display(std::ostream& out, const GrabArguments& arguments)
        : out_(out),
          columns_(arguments.columns),
          sixels_(arguments.graphics.empty() ? terminalHasSixels() : arguments.graphics == Sixel) {}

    void show(const client::Frame& frame) const {
        const TerminalSize size = terminalSize(STDOUT_FILENO);
        const unsigned columns = columns_ != 0 ? columns_ : std::max(size.columns, 3U) - 2;
        const unsigned rows = std::max(size.rows, 5U) - 4;
        if (sixels_) {
            out_ << asSixels(shrink(frame, columns * CellWidth, rows * CellHeight)) << '\n';
            return;
        }
        for (const std::string& line : asHalfBlocks(shrink(frame, columns, 2 * rows))) {
            out_ << line << '\n';
        }
    }

private:
    static bool terminalHasSixels() {
        if (!takesEscapes(STDOUT_FILENO)) {
            return false;
        }
        const int terminal = open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
        const bool has = terminal >= 0 && drawsSixels(terminal, std::chrono::milliseconds(300));
        if (terminal >= 0) {
            close(terminal);
        }
        return has;
    }

    std::ostream& out_;
    unsigned columns_;
    bool sixels_;
};

FileTemplate outputOf(const GrabArguments& arguments) {
    FileTemplate output(arguments.output);
    if (arguments.output.empty()) {
        return output;
    }
    frameFiles(output.name(1));  // refuses what is no picture, before anything is grabbed
    if (arguments.count > 1 && !output.isNumbered()) {
        throw UsageError("\"" + arguments.output + "\" is one name for " + std::to_string(arguments.count) +
                         " frames: with a number in it, as out_%03d.png, each has its own");
    }
    return output;
}

/// Buffers for about a quarter of a gigabyte; with fewer than two a frame would wait for the one before.
unsigned bufferCount(std::size_t size) {
    return static_cast<unsigned>(
        std::clamp<std::size_t>((std::size_t{1} << 28) / std::max<std::size_t>(size, 1), 2, 16));
}

/// Whoever looks at the frames while they come.
struct Watchers {
    const FileTemplate& output;
    bool writes;
    Histogram* histogram;
    const Display* display;
    const Progress& progress;
    Console* lines;  ///< a line of JSON for each frame, if not null
};

Json toJson(const client::Frame& frame, const std::vector<std::string>& files) {
    const client::FrameDescription& about = frame.description();
    return object({{"frame", about.number},
                   {"image", about.image},
                   {"lostBefore", about.lostBefore},
                   {"firstTick", about.firstTick},
                   {"lastTick", about.lastTick},
                   {"width", about.width},
                   {"lines", about.lines},
                   {"bits", about.bits},
                   {"bytes", frame.bytes().size()},
                   {"flags", about.flagNames()},
                   {"files", files}});
}

void receive(const client::Frame& frame, Statistics& statistics, const Watchers& watchers) {
    const client::FrameDescription& about = frame.description();
    ++statistics.frames;
    statistics.lost += about.lostBefore;
    statistics.bytes += frame.bytes().size();
    statistics.firstTick = statistics.frames == 1 ? about.lastTick : statistics.firstTick;
    statistics.lastTick = about.lastTick;
    std::vector<std::string> files;
    if (watchers.writes) {
        const std::filesystem::path file = watchers.output.name(about.number);
        writeFrame(frame, file);
        for (const std::filesystem::path& written : frameFiles(file)) {
            files.push_back(written.string());
        }
    }
    if (watchers.lines != nullptr) {
        printJson(*watchers.lines, toJson(frame, files));
        watchers.lines->out << std::flush;
    }
    statistics.files.insert(statistics.files.end(), files.begin(), files.end());
    if (watchers.histogram != nullptr) {
        watchers.histogram->add(frame);
    }
    if (watchers.display != nullptr) {
        watchers.progress.clear();
        watchers.display->show(frame);
    }
}

/// Gives the board a clock for frames, and spares it the transcript; afterwards it has those of a new one.
class BoardForFrames {
public:
    BoardForFrames(client::SoftBoard& board, client::ClockMode mode) : board_(board) {
        board_.setClock(mode);
        board_.record(false);
    }
    BoardForFrames(const BoardForFrames&) = delete;
    BoardForFrames& operator=(const BoardForFrames&) = delete;
    ~BoardForFrames() {
        board_.setClock(client::ClockMode::Auto);
        board_.record(true);
    }

private:
    client::SoftBoard& board_;
};

/// Puts the world on the board. The belt begins to run here, and the times of faults to count.
void begin(Session& session, const World& world) {
    apply(session.board(), world.scene);
    apply(session.board(), session.applet(), world.belt, session.belt());
    apply(session.board(), world.faults);
}

/// What is lost behind the last frame that came counts, too.
void readCounts(const client::Acquisition& acquisition, const client::Applet& applet, Statistics& statistics) {
    statistics.lost = std::max(statistics.lost, acquisition.lost());
    statistics.lostLines = acquisition.lostLines();
    statistics.faults = acquisition.faults();
    statistics.overflow = applet.readInt("FG_OVERFLOW") != 0;
}

/// The board's message, if there is one that a reader of `before` has not seen, or that tells of a picture that a debug
/// point should have inserted.
void addMessage(Session& session, const std::string& before, Statistics& statistics) {
    const std::string message = session.board().lastMessage();
    const bool isOfInsertion = statistics.frames == 0 && session.applet().readInt("FG_DEBUGINENABLE") == FG_ON;
    if (!message.empty() && (message != before || isOfInsertion)) {
        statistics.reasons.push_back(message);
    }
}

Statistics grabFrames(Session& session, const GrabArguments& arguments, const World& world, const Watchers& watchers) {
    client::Applet& applet = session.applet();
    const BoardForFrames board(session.board(),
                               arguments.clock == "real" ? client::ClockMode::Real : client::ClockMode::Free);
    const Interrupt interrupt;
    const std::size_t size = client::frameSize(applet);
    client::FrameMemory memory(session.board(), size, bufferCount(size));
    Statistics statistics;
    begin(session, world);
    const auto start = std::chrono::steady_clock::now();
    client::Acquisition acquisition(applet, memory, arguments.count, timeoutOf(arguments.timeout));
    try {
        for (const client::Frame& frame : acquisition) {
            receive(frame, statistics, watchers);
            statistics.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            watchers.progress.show(statistics);
            if (Interrupt::came()) {
                statistics.reasons.emplace_back("interrupted");
                break;
            }
        }
    } catch (const client::FrameError& error) {
        statistics.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        statistics.reasons = frameObstacles(session);
        statistics.reasons.insert(statistics.reasons.begin(), error.what());
    }
    readCounts(acquisition, applet, statistics);
    return statistics;
}

Json toJson(const Statistics& statistics, unsigned wanted) {
    return object({{"frames", statistics.frames},
                   {"wanted", wanted},
                   {"lost", statistics.lost},
                   {"lostLines", statistics.lostLines},
                   {"faults", statistics.faults},
                   {"overflow", statistics.overflow},
                   {"bytes", statistics.bytes},
                   {"seconds", statistics.seconds},
                   {"rate", statistics.rate()},
                   {"boardRate", statistics.boardRate()},
                   {"files", statistics.files},
                   {"reasons", statistics.reasons}});
}

std::string counted(std::uint64_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void tell(std::ostream& out, const Statistics& statistics) {
    out << counted(statistics.frames, "frame") << ", " << statistics.bytes << " bytes in "
        << rounded(statistics.seconds * 1000) << " ms, " << statistics.lost << " lost";
    if (statistics.lostLines > 0) {
        out << ", " << counted(statistics.lostLines, "line") << " lost";
    }
    if (statistics.faults > 0) {
        out << ", " << counted(statistics.faults, "fault") << " struck";
    }
    if (statistics.overflow) {
        out << ", the board's memory overflowed";
    }
    if (statistics.boardRate() > 0) {
        out << "; " << rounded(statistics.boardRate()) << " frames a second of the board's time";
    }
    out << '\n';
    if (!statistics.files.empty()) {
        out << "written: " << statistics.files.front();
        if (statistics.files.size() > 1) {
            out << (statistics.files.size() > 2 ? " ... " : ", ") << statistics.files.back();
        }
        out << '\n';
    }
}

ExitStatus grab(Session& session, Console& console, const GrabArguments& arguments) {
    const FileTemplate output = outputOf(arguments);
    if (arguments.histogram != InTerminal && !arguments.histogram.empty() && !arguments.histogram.ends_with(".png")) {
        throw UsageError("\"" + arguments.histogram + "\": a histogram is written as .png");
    }
    const World world{parseScene(arguments.scene), parseBelt(arguments.belt), parseFaults(arguments.faults)};
    const std::string message = session.board().lastMessage();
    assign(session.applet(), arguments.assignments);
    tellHints(console, hintsFor(session.applet(), world.scene), "--set ");
    tellHints(console, hintsFor(session.applet(), world.belt), "--set ");
    const bool json = session.options().json;
    console.jsonPerLine = console.jsonPerLine || arguments.each;
    std::ostream& screen = json ? console.err : console.out;
    Histogram histogram;
    std::optional<Display> display;
    if (arguments.show) {
        display.emplace(screen, arguments);
    }
    const Progress progress(console.err, arguments.count);
    Statistics statistics =
        grabFrames(session, arguments, world,
                   {output, !arguments.output.empty(), arguments.histogram.empty() ? nullptr : &histogram,
                    display ? &*display : nullptr, progress, json && arguments.each ? &console : nullptr});
    progress.clear();
    addMessage(session, message, statistics);
    if (arguments.histogram == InTerminal) {
        for (const std::string& line : histogram.asText()) {
            screen << line << '\n';
        }
    } else if (!arguments.histogram.empty()) {
        writePicture(histogram.asChart(), arguments.histogram);
    }
    if (json) {
        printJson(console, toJson(statistics, arguments.count));
    } else {
        tell(console.out, statistics);
    }
    for (std::size_t i = 0; i < statistics.reasons.size(); ++i) {
        console.err << (i == 0 ? console.errPainter.paint(Style::Bad, "quillon:") : " ") << " " << statistics.reasons[i]
                    << '\n';
    }
    return statistics.frames == arguments.count ? Done : Refused;
}

}  // namespace

void addGrabVerb(Verbs& verbs) {
    auto arguments = std::make_shared<GrabArguments>();
    Verb verb = verbs.add(
        "grab", "Grab frames: write them as pictures, show them, count them",
        "  quillon grab -o out.png                        a frame of the camera as a picture\n"
        "  quillon grab -n 10 -o out_%03d.png             ten frames, out_001.png to out_010.png\n"
        "  quillon grab --show --set FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR\n"
        "                                                 the simulator's pattern in the terminal\n"
        "  quillon grab -n 100 --clock real --json        how fast they come, and whether all do\n"
        "  quillon grab -n 100 --json --each              a line of JSON for each of them\n"
        "  quillon grab --histogram curve.png --mcf conveyor.mcf\n"
        "  quillon grab --mcf conveyor.mcf --scene part.png --belt 500mm/s --encoder 10/mm --barrier 20mm:100mm\n"
        "                                                 a part on a belt, with encoder and light barrier\n"
        "  quillon grab -n 10 --json --each --fault frame:3:lose --fault line:100:drop\n"
        "                                                 what an application gets to see of a fault\n"
        "\n"
        "A file's name tells what it is: .png and .tif have 8 bits a colour, or 16 over which 10, 12 and 14 are "
        "spread;\n"
        ".ppm has the values as they are, .pgm too, a file a colour (NAME_r.pgm, NAME_g.pgm, NAME_b.pgm); .raw has "
        "the\n"
        "frame's bytes, and NAME.json beside it tells what they are. Files appear when they are whole.\n"
        "\n"
        "With the free clock time jumps from event to event and no frame is lost; with the real one frames come as "
        "the\n"
        "camera sends them. Exit status 1 if fewer came than were asked for, with what the parameters tell of why.\n"
        "\n"
        "Scene, belt and faults are the board's, and no parameters: in a session they stay. A belt begins to run, and\n"
        "the lines, frames and times of faults to count, with the acquisition.",
        [arguments](Session& session, Console& console) { return grab(session, console, *arguments); });
    verb.add("-n,--count", &arguments->count, "Frames; by default 1").shownAs("COUNT").within(1, 1'000'000'000);
    verb.add("-o,--output", &arguments->output,
             "Write each frame to this file; %d or %03d stands for its number, %% for a percent sign")
        .shownAs("FILE");
    verb.add("--set", &arguments->assignments, "Set a parameter first; repeatable, in this order")
        .shownAs("NAME=VALUE")
        .oneWordEach();
    verb.add("--clock", &arguments->clock, "What moves the board's time: free (by default) or real")
        .shownAs("CLOCK")
        .oneOf({"free", "real"});
    verb.add("--timeout", &arguments->timeout,
             "Time that a frame is waited for, in whole seconds; a bare number is seconds; by default 5s")
        .shownAs("TIME");
    verb.add("--show", &arguments->show, "Show each frame in the terminal");
    verb.add("--each", &arguments->each, "With --json: a line for each frame as it comes, and one for all behind them");
    verb.add("--graphics", &arguments->graphics,
             "How: as sixel graphics or as half blocks; by default sixel where the terminal says that it has them")
        .shownAs("KIND")
        .oneOf({Sixel, Blocks});
    verb.add("--columns", &arguments->columns, "How wide: columns of the terminal; by default all of it")
        .shownAs("COLUMNS")
        .within(1, 1000);
    verb.add("--histogram", &arguments->histogram,
             "A histogram of the colours: in the terminal, or as a picture (.png)")
        .shownAs("FILE")
        .orWithout(InTerminal);
    verb.add("--scene", &arguments->scene.scene,
             "What the camera sees: a pattern (bars, ramp, checker, noise, noise:SEED, grey, grey:V) or a picture "
             "(.png, .ppm, .pgm, .pnm)")
        .shownAs("SCENE");
    addSceneOptions(verb, arguments->scene);
    verb.add("--belt", &arguments->belt.profile,
             "What moves it: speeds, each with its time, separated by commas: 500mm/s:20ms,0:5ms,-200mm/s")
        .shownAs("SPEED[:TIME],...");
    addBeltOptions(verb, arguments->belt);
    verb.add("--fault", &arguments->faults.faults,
             "What goes wrong: line:100:drop (repeat, invert), frame:3:lose (truncate=100, stall=5ms), "
             "camera:10ms-30ms, link:10ms-; repeatable")
        .shownAs("FAULT")
        .oneWordEach();
    addFaultOptions(verb, arguments->faults);
}

}  // namespace quillon::cli
