#include "cli/Session.h"

#include <cstdlib>
#include <utility>

#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

// The environment by which the applet is told; both are read when it opens.
constexpr const char* DirectRegisterAccess = "ORLO_ENABLE_DRA";
constexpr const char* ExternalDesign = "__ORLO_FORCE_EXTERNAL_TAV";

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
        setenv(ExternalDesign, "1", 1);
    }
    DesignDirectory(const DesignDirectory&) = delete;
    DesignDirectory& operator=(const DesignDirectory&) = delete;
    ~DesignDirectory() {
        unsetenv(ExternalDesign);
        std::error_code ignored;
        std::filesystem::current_path(previous_, ignored);
        std::filesystem::remove_all(directory_, ignored);
    }

private:
    std::filesystem::path previous_;
    std::filesystem::path directory_;
};

std::string inWords(int code) {
    return client::describeCode(code) + ", " + std::string(client::codeText(code).sentence);
}

}  // namespace

Options defaultOptions() {
    const std::filesystem::path root = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    Options options;
    options.library = root / "lib" / "libQuillon.so";
    options.softBoard = root / "lib" / "softboard";
    return options;
}

Session::Session(Options options) : options_(std::move(options)) {}

void Session::enableDirectRegisterAccess() {
    setenv(DirectRegisterAccess, "1", 1);
}

const client::Library& Session::library() {
    if (!library_) {
        library_ = client::Library::open(options_.library, options_.softBoard);
    }
    return *library_;
}

client::SoftBoard& Session::board() {
    if (!board_) {
        board_.emplace(options_.softBoard);
    }
    return *board_;
}

client::Applet& Session::applet() {
    if (!applet_) {
        library();
        board();
        std::optional<DesignDirectory> directory;
        if (options_.design) {
            directory.emplace(*options_.design);
        }
        applet_.emplace(library(), board());
        directory.reset();
        if (options_.load) {
            loadConfiguration(*applet_, *options_.load);
        }
    }
    return *applet_;
}

void Session::saveIfAsked() {
    if (options_.save) {
        saveConfiguration(applet(), *options_.save);
    }
}

void loadConfiguration(client::Applet& applet, const std::filesystem::path& file) {
    if (const int code = applet.loadConfig(file); code != 0) {
        throw RefusedError(file.string() + " was not loaded: " + inWords(code));
    }
}

void saveConfiguration(client::Applet& applet, const std::filesystem::path& file) {
    if (const int code = applet.saveConfig(file); code != 0) {
        throw RefusedError(file.string() + " was not written: " + inWords(code));
    }
}

}  // namespace quillon::cli
