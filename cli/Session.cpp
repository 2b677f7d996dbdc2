#include "cli/Session.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "cli/ConfigurationCheck.h"
#include "cli/ExitStatus.h"
#include "cli/MemoryFile.h"
#include "cli/PartFile.h"
#include "cli/Refusals.h"
#include "quillon/ErrorCode.h"
#include "quillon/client/Installation.h"

namespace quillon::cli {

namespace {

// The environment by which the applet is told; both are read when it opens.
constexpr const char* DirectRegisterAccess = "ORLO_ENABLE_DRA";
constexpr const char* ExternalDesign = "__ORLO_FORCE_EXTERNAL_TAV";

/// Switches a variable of the environment on while it lives.
class Told {
public:
    explicit Told(const char* variable) : variable_(variable) {
        if (const char* const before = std::getenv(variable)) {
            before_ = before;
        }
        setenv(variable, "1", 1);
    }
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;
    ~Told() {
        if (before_) {
            setenv(variable_, before_->c_str(), 1);
        } else {
            unsetenv(variable_);
        }
    }

private:
    const char* variable_;
    std::optional<std::string> before_;
};

/// Makes `design` the file "Quillon.tav" of the working directory, where the applet looks for it, while it lives.
class DesignDirectory {
public:
    explicit DesignDirectory(const std::filesystem::path& design) : previous_(std::filesystem::current_path()) {
        const std::filesystem::path target = std::filesystem::absolute(design);
        std::string pattern = (std::filesystem::temp_directory_path() / "quillon-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw RefusedError("cannot make a directory for the design file");
        }
        directory_ = pattern;
        std::filesystem::create_symlink(target, directory_ / "Quillon.tav");
        std::filesystem::current_path(directory_);
    }
    DesignDirectory(const DesignDirectory&) = delete;
    DesignDirectory& operator=(const DesignDirectory&) = delete;
    ~DesignDirectory() {
        std::error_code ignored;
        std::filesystem::current_path(previous_, ignored);
        std::filesystem::remove_all(directory_, ignored);
    }

private:
    std::filesystem::path previous_;
    std::filesystem::path directory_;
    Told external_{ExternalDesign};
};

Options withoutFiles(Options options) {
    options.load.reset();
    options.save.reset();
    return options;
}

std::string inWords(int code) {
    return client::describeCode(code) + ", " + std::string(client::codeText(code).sentence);
}

}  // namespace

Options defaultOptions() {
    Options options;
    if (const auto installed = client::findInstallation()) {
        options.library = installed->applet;
        options.softBoard = installed->softBoard;
        return options;
    }
    // Where a build has them, to be named when they are missed.
    const std::filesystem::path root = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    options.library = root / "lib" / "libQuillon.so";
    options.softBoard = root / "lib" / "softboard";
    return options;
}

Session::Session(Options options, std::ostream* err) : options_(std::move(options)), err_(err), owner_(*this) {}

Session::Session(Options options, std::ostream* err, Session& lasting)
    : options_(std::move(options)), err_(err), owner_(lasting.owner_) {}

void Session::enableDirectRegisterAccess() {
    withRegisters_ = true;
}

const client::Library& Session::library() {
    if (!owner_.library_) {
        owner_.library_ = client::Library::open(owner_.options_.library, owner_.options_.softBoard);
    }
    return *owner_.library_;
}

client::SoftBoard& Session::board() {
    if (!owner_.board_) {
        owner_.board_.emplace(owner_.options_.softBoard);
    }
    return *owner_.board_;
}

client::Applet& Session::applet() {
    if (!owner_.applet_) {
        owner_.open();
    }
    if (!std::exchange(loaded_, true) && options_.load) {
        tellFindings(*options_.load);
        loadConfiguration(*owner_.applet_, *options_.load);
        configurationLoaded(*options_.load);
    }
    return *owner_.applet_;
}

void Session::open() {
    library();
    board();
    std::optional<DesignDirectory> directory;
    if (options_.design) {
        directory.emplace(*options_.design);
    }
    std::optional<Told> registers;
    if (withRegisters_) {
        registers.emplace(DirectRegisterAccess);
    }
    applet_.emplace(library(), board());
}

Session& Session::scratch() {
    if (!lasts()) {
        return *this;
    }
    if (!scratch_) {
        Options options = options_;
        options.save.reset();
        scratch_ = std::make_unique<Session>(std::move(options), err_);
    }
    return *scratch_;
}

void Session::saveIfAsked() {
    if (options_.save) {
        saveConfiguration(applet(), *options_.save);
        tellNotKept(*options_.save);
    }
}

void Session::tellFindings(const std::filesystem::path& file) const {
    constexpr std::size_t shown = 10;
    std::error_code ignored;
    // A file that cannot be read the load itself tells of.
    if (err_ == nullptr || (options_.quiet && !options_.strict) || !std::filesystem::is_regular_file(file, ignored)) {
        return;
    }
    Session other(withoutFiles(options_));
    const std::vector<Complaint> complaints = checkConfiguration(other, file);
    const Painter painter(2);
    for (std::size_t i = 0; !options_.quiet && i < std::min(complaints.size(), shown); ++i) {
        Complaint first = complaints[i];
        first.text = first.text.substr(0, first.text.find('\n'));
        *err_ << inWords(file, first, painter) << '\n';
    }
    if (!options_.quiet && complaints.size() > shown) {
        *err_ << file.string() << ": and " << complaints.size() - shown << " more, which check tells\n";
    }
    if (options_.strict && !isSound(complaints)) {
        throw RefusedError(file.string() + " was not loaded: --strict, and errors in it: " +
                           std::to_string(std::ranges::count(complaints, false, &Complaint::note)));
    }
}

void Session::tellNotKept(const std::filesystem::path& file) {
    // What went into a pipe or a device has gone.
    if (err_ == nullptr || options_.quiet || !std::filesystem::is_regular_file(file)) {
        return;
    }
    Session other(withoutFiles(options_));
    for (const std::string& text : notKept(*this, other, file)) {
        *err_ << file.string() << " does not keep " << text << '\n';
    }
}

void Session::tellIfLost() {
    if (err_ != nullptr && !lasts() && !options_.save && !options_.quiet) {
        *err_ << "The board ends with this command, and so does what it set: --save FILE keeps the parameters, "
                 "quillon shell the board.\n";
    }
}

void loadConfiguration(client::Applet& applet, const std::filesystem::path& file) {
    if (const int code = applet.loadConfig(file); code != 0) {
        refuse(file.string() + " was not loaded: " + inWords(code), explainGet(code));
    }
}

std::size_t saveConfiguration(client::Applet& applet, const std::filesystem::path& file) {
    const auto refuseSave = [&](int code, const std::string& reason) {
        refuse(file.string() + " was not written: " + inWords(code) + reason, explainGet(code));
    };
    // The applet does not look whether its lines reach the disk. A name that it does not take, it opens no file for.
    const bool isTaken = file.string().find(".mcf") != std::string::npos;
    const MemoryFile memory("state.mcf");
    if (const int code = applet.saveConfig(isTaken ? memory.path() : file); code != 0) {
        refuseSave(code, "");
    }
    std::string content;
    try {
        content = memory.contentFor(file);
        writeWhole(file, content);
    } catch (const RefusedError& error) {
        refuseSave(FileNotWritten, std::string("\n  ") + error.what());
    }
    return content.size();
}

}  // namespace quillon::cli
