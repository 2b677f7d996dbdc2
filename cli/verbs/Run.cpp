#include <fstream>
#include <iostream>

#include "cli/CommandLines.h"

namespace quillon::cli {

namespace {

struct RunArguments {
    std::string file;
    bool keepGoing = false;
    bool echo = false;
};

/// Scripts may run scripts, but not without end.
class Depth {
public:
    Depth() {
        constexpr int most = 16;
        if (depth_ == most) {
            throw RefusedError("scripts run scripts, " + std::to_string(most) +
                               " deep: one of them seems to run itself");
        }
        ++depth_;
    }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
    ~Depth() { --depth_; }

private:
    static inline int depth_ = 0;
};

ExitStatus runLines(std::istream& lines, const std::string& name, Session& session, Console& console,
                    const RunArguments& arguments) {
    const Depth depth;
    LineRunner runner(session, console);
    int status = Done;
    int number = 0;
    for (std::string line; !runner.hasEnded() && std::getline(lines, line);) {
        ++number;
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        if (number == 1 && line.starts_with(byteOrderMark)) {
            line.erase(0, byteOrderMark.size());
        }
        if (arguments.echo && line.find_first_not_of(" \t\r") != std::string::npos) {
            console.err << console.errPainter.paint(Style::Faint, name + ":" + std::to_string(number) + ":") << " "
                        << line << '\n';
        }
        const int one = runner.run(line);
        if (one == Done) {
            continue;
        }
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << name << ":" << number
                    << ": this line failed" << (arguments.keepGoing ? "" : ", and ended the script") << ": "
                    << visible(line) << '\n';
        status = status == Done ? one : status;
        if (!arguments.keepGoing) {
            break;
        }
    }
    if (lines.bad()) {
        throw RefusedError(name + " could not be read to its end");
    }
    return static_cast<ExitStatus>(status);
}

ExitStatus run(Session& session, Console& console, const RunArguments& arguments) {
    if (arguments.file == "-") {
        return runLines(std::cin, "standard input", session, console, arguments);
    }
    std::ifstream file(arguments.file);
    if (!file || std::filesystem::is_directory(arguments.file)) {
        throw RefusedError(arguments.file + " cannot be read");
    }
    return runLines(file, arguments.file, session, console, arguments);
}

}  // namespace

void addRunVerb(Verbs& verbs) {
    auto arguments = std::make_shared<RunArguments>();
    Verb verb =
        verbs.add("run", "Run the lines of a script on one board; the first that fails ends it",
                  "  quillon run tune.txt                     lines such as set FG_WIDTH=2048, with # for comments\n"
                  "  quillon run tune.txt --save tuned.mcf    and keep what came of it\n"
                  "  printf 'advance 1ms\\nstatus\\n' | quillon run -",
                  [arguments](Session& session, Console& console) { return run(session, console, *arguments); });
    verb.add("FILE", &arguments->file, "Script; - for standard input").required();
    verb.add("--keep-going", &arguments->keepGoing,
             "Go on behind a line that fails; the exit status is the first one's");
    verb.add("--echo", &arguments->echo, "Print each line to standard error before it runs");
}

}  // namespace quillon::cli
