#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <optional>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

/// A shell with a person at its terminal, in a folder of its own.
class Shell {
public:
    explicit Shell(const std::vector<std::string>& command) {
        const winsize size{40, 200, 0, 0};
        child_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (child_ == 0) {
            become(command);
        }
    }
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    ~Shell() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
        close(terminal_);
    }

    const Folder& folder() const { return folder_; }
    void type(const std::string& keys) const {
        EXPECT_EQ(write(terminal_, keys.data(), keys.size()), ssize_t(keys.size()));
    }

    /// The words that a line has when the keys, completions among them, were typed: the line becomes the arguments of a
    /// command that writes them down.
    std::vector<std::string> words(const std::string& keys) {
        const std::filesystem::path file = folder_ / ("words" + std::to_string(++lines_));
        const std::string toTheBegin = "\001";
        type(keys + toTheBegin + "printf '%s\\n' > " + file.filename().string() + " \r");
        type("touch " + file.filename().string() + ".done\r");
        waitFor(file.string() + ".done");
        std::vector<std::string> words;
        std::ifstream stream(file);
        for (std::string word; std::getline(stream, word);) {
            words.push_back(word);
        }
        return words;
    }

    void waitFor(const std::filesystem::path& file) {
        for (int i = 0; i < 600 && !std::filesystem::exists(file); ++i) {
            pollfd screen{terminal_, POLLIN, 0};
            std::array<char, 4096> bytes{};
            if (poll(&screen, 1, 50) > 0) {
                const ssize_t count = read(terminal_, bytes.data(), bytes.size());
                shown_.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
            }
        }
        EXPECT_TRUE(std::filesystem::exists(file)) << shown_;
    }

private:
    [[noreturn]] void become(const std::vector<std::string>& command) const {
        std::vector<char*> arguments;
        for (const std::string& word : command) {
            arguments.push_back(const_cast<char*>(word.c_str()));
        }
        arguments.push_back(nullptr);
        setenv("TERM", "dumb", 1);
        setenv("HOME", folder_.path().c_str(), 1);
        setenv("HISTFILE", "/dev/null", 1);
        if (chdir(folder_.path().c_str()) == 0) {
            execvp(arguments.front(), arguments.data());
        }
        _exit(127);
    }

    Folder folder_;
    int terminal_ = -1;
    pid_t child_ = -1;
    int lines_ = 0;
    std::string shown_;
};

using Words = std::vector<std::string>;

struct Kind {
    const char* name;
    const char* program;
    Words command;
    const char* start;
};

class Completion : public ::testing::TestWithParam<Kind> {
protected:
    Completion() {
        if (std::system((std::string("command -v ") + GetParam().program + " >/dev/null").c_str()) != 0) {
            return;
        }
        shell_.emplace(GetParam().command);
        for (const char* name : {"conveyor.mcf", "conveyor.txt", "curve.lut", "design.tav"}) {
            std::ofstream(shell_->folder() / name) << "\n";
        }
        shell_->type(std::string(GetParam().start) + "\rtouch ready\r");
        shell_->waitFor(shell_->folder() / "ready");
    }
    void SetUp() override {
        if (!shell_) {
            GTEST_SKIP() << GetParam().program << " is not installed";
        }
    }
    Words words(const std::string& keys) { return shell_->words(keys); }

private:
    std::optional<Shell> shell_;
};

INSTANTIATE_TEST_SUITE_P(
    In, Completion,
    ::testing::Values(Kind{"bash",
                           "bash",
                           {"bash", "--norc", "--noprofile", "-i"},
                           "bind 'set bell-style none'; source <(" QUILLON_COMMAND " completion bash)"},
                      Kind{"bashWithWholeWords",
                           "bash",
                           {"bash", "--norc", "--noprofile", "-i"},
                           "COMP_WORDBREAKS=${COMP_WORDBREAKS//=}; source <(" QUILLON_COMMAND " completion bash)"},
                      Kind{"zsh",
                           "zsh",
                           {"zsh", "-f", "-i"},
                           "bindkey -e; autoload -U compinit; compinit -u -D; source <(" QUILLON_COMMAND
                           " completion zsh)"},
                      Kind{"zshByName",
                           "zsh",
                           {"zsh", "-f", "-i"},
                           "bindkey -e; mkdir functions; " QUILLON_COMMAND
                           " completion zsh > functions/_quillon; fpath=($PWD/functions $fpath); autoload -U compinit; "
                           "compinit -u -D"}),
    [](const auto& kind) { return kind.param.name; });

TEST_P(Completion, Verbs) {
    EXPECT_EQ(words("quillon desc\t"), (Words{"quillon", "describe"}));
    EXPECT_EQ(words("quillon --json desc\t"), (Words{"quillon", "--json", "describe"}));
}

TEST_P(Completion, Options) {
    EXPECT_EQ(words("quillon --softb\t"), (Words{"quillon", "--softboard"}));
    EXPECT_EQ(words("quillon set --tr\t"), (Words{"quillon", "set", "--trace"}));
    EXPECT_EQ(words("quillon grab --hist\t"), (Words{"quillon", "grab", "--histogram"}));
    EXPECT_EQ(words("quillon get FG_WIDTH --js\t"), (Words{"quillon", "get", "FG_WIDTH", "--json"}));
}

TEST_P(Completion, ParametersInAnyCase) {
    EXPECT_EQ(words("quillon get FG_WID\t"), (Words{"quillon", "get", "FG_WIDTH"}));
    EXPECT_EQ(words("quillon get FG_WIDTH fg_hei\t"), (Words{"quillon", "get", "FG_WIDTH", "FG_HEIGHT"}));
    EXPECT_EQ(words("quillon --mcf conveyor.mcf describe fg_wid\t"),
              (Words{"quillon", "--mcf", "conveyor.mcf", "describe", "FG_WIDTH"}));
}

TEST_P(Completion, AssignmentsWithTheirEnumerators) {
    EXPECT_EQ(words("quillon set FG_WID\t"), (Words{"quillon", "set", "FG_WIDTH="}));
    EXPECT_EQ(words("quillon set fg_wid\t2048"), (Words{"quillon", "set", "FG_WIDTH=2048"}));
    EXPECT_EQ(words("quillon set FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_R\t"),
              (Words{"quillon", "set", "FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT"}));
    EXPECT_EQ(words("quillon set FG_PIXELFORMAT=rgb14\t FG_LUT_EN\tfg_on\t"),
              (Words{"quillon", "set", "FG_PIXELFORMAT=RGB14", "FG_LUT_ENABLE=FG_ON"}));
    EXPECT_EQ(words("quillon grab --set FG_BITAL\tFG_LEF\t"),
              (Words{"quillon", "grab", "--set", "FG_BITALIGNMENT=FG_LEFT_ALIGNED"}));
}

TEST_P(Completion, GroupsAndRegistersAndConstants) {
    EXPECT_EQ(words("quillon list --group RO\t"), (Words{"quillon", "list", "--group", "ROI"}));
    EXPECT_EQ(words("quillon list --group sensor\t"), (Words{"quillon", "list", "--group", "Sensor Geometry"}));
    EXPECT_EQ(words("quillon registers boardc\t"), (Words{"quillon", "registers", "BoardControl"}));
    EXPECT_EQ(words("quillon info FG_COL2\t"), (Words{"quillon", "info", "FG_COL24"}));
}

TEST_P(Completion, FilesOfTheKindThatIsWanted) {
    EXPECT_EQ(words("quillon get FG_WIDTH --mcf con\t"),
              (Words{"quillon", "get", "FG_WIDTH", "--mcf", "conveyor.mcf"}));
    EXPECT_EQ(words("quillon get FG_WIDTH --mcf=con\t"), (Words{"quillon", "get", "FG_WIDTH", "--mcf=conveyor.mcf"}));
    EXPECT_EQ(words("quillon check c\t"), (Words{"quillon", "check", "conveyor.mcf"}));
    EXPECT_EQ(words("quillon lut --load c\t"), (Words{"quillon", "lut", "--load", "curve.lut"}));
    EXPECT_EQ(words("quillon lut --save c\t"), (Words{"quillon", "lut", "--save", "curve.lut"}));
    EXPECT_EQ(words("quillon info --design d\t"), (Words{"quillon", "info", "--design", "design.tav"}));
}

TEST_P(Completion, WordsOfAList) {
    EXPECT_EQ(words("quillon grab --clock r\t"), (Words{"quillon", "grab", "--clock", "real"}));
    EXPECT_EQ(words("quillon completion z\t"), (Words{"quillon", "completion", "zsh"}));
}

}  // namespace
}  // namespace quillon::cli::testing
