#include "tests/gige/Programs.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <thread>

namespace quillon::gige {
namespace {

constexpr std::chrono::milliseconds Glance{20};

void redirect(int descriptor, const std::string& file) {
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(opened, descriptor);
    close(opened);
}

std::vector<char*> pointersTo(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> serveCommand(const std::vector<std::string>& words) {
    std::vector<std::string> command{QUILLON_COMMAND, "serve", "gige", "--json"};
    command.insert(command.end(), words.begin(), words.end());
    return command;
}

}  // namespace

bool isInstalled(const std::string& program) {
    return run("command -v " + program).status == 0;
}

Outcome run(const std::string& command) {
    return cli::testing::shell(command);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

bool becomes(const std::function<bool()>& question, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!question()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(Glance);
    }
    return true;
}

Program::Program(const std::vector<std::string>& words, const std::vector<std::string>& variables) {
    std::vector<std::string> command = words;
    std::vector<std::string> settings = variables;
    const std::vector<char*> arguments = pointersTo(command);
    const std::string out = folder_ / "out";
    const std::string err = folder_ / "err";
    id_ = fork();
    if (id_ != 0) {
        return;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (std::string& setting : settings) {
        putenv(setting.data());
    }
    redirect(STDOUT_FILENO, out);
    redirect(STDERR_FILENO, err);
    execvp(arguments.front(), arguments.data());
    _exit(126);
}

Program::~Program() {
    if (!status_) {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
}

void Program::signal(int number) const {
    if (!status_) {
        kill(id_, number);
    }
}

std::optional<int> Program::wait(std::chrono::milliseconds patience) {
    becomes(
        [this] {
            int state = 0;
            if (!status_ && waitpid(id_, &state, WNOHANG) == id_) {
                status_ = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
            }
            return status_.has_value();
        },
        patience);
    return status_;
}

Served::Served(const std::vector<std::string>& words) : program_(serveCommand(words)) {
    EXPECT_TRUE(becomes([this] { return !state().is_null() || program_.wait(Glance).has_value(); }));
    EXPECT_FALSE(state().is_null()) << program_.err();
}

Json Served::state() const {
    const std::string lines = program_.out();
    const std::size_t end = lines.rfind('\n');
    if (end == std::string::npos) {
        return {};
    }
    const std::size_t before = end == 0 ? std::string::npos : lines.rfind('\n', end - 1);
    const std::size_t begin = before == std::string::npos ? 0 : before + 1;
    return Json::parse(lines.substr(begin, end - begin));
}

std::string control(const std::string& features) {
    const Outcome outcome = run("arv-tool-0.8 -a 127.0.0.1 control " + features);
    return outcome.out + outcome.err;
}

}  // namespace quillon::gige
