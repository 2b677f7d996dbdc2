#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "quillon/client/Applet.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

/// What every verb takes.
struct Options {
    std::filesystem::path library;                ///< libQuillon.so
    std::filesystem::path softBoard;              ///< folder of the stand-ins
    std::optional<std::filesystem::path> design;  ///< design file to load in place of the carried one
    std::optional<std::filesystem::path> load;    ///< configuration to load after opening
    std::optional<std::filesystem::path> save;    ///< configuration to write at the end
    bool json = false;
    bool quiet = false;   ///< what a load or a save does without a word is not told
    bool strict = false;  ///< a configuration that the checker finds errors in is not loaded
};

/// The folders of a build or an installation, seen from the running program: lib/ beside its bin/.
Options defaultOptions();

/// The applet on a software board for the time of one command. Everything opens when it is first asked for, so that a
/// verb that needs no board works without one.
class Session {
public:
    /// `err`: where findings about configurations go; null for nowhere.
    explicit Session(Options options, std::ostream* err = nullptr);

    const Options& options() const { return options_; }
    /// Opens registers to reading and writing by name; to be called before applet().
    void enableDirectRegisterAccess();
    /// Throw client::LibraryError, client::OpenError, and RefusedError for a configuration that does not load.
    const client::Library& library();
    client::SoftBoard& board();
    client::Applet& applet();
    /// Writes the configuration that --save names, if there is one. Throws RefusedError.
    void saveIfAsked();

    /// Says what a load of the file would do without a word, one line each. Throws RefusedError where that has to keep
    /// it from being loaded. An applet of its own tries the file.
    void tellFindings(const std::filesystem::path& file) const;
    /// Says what the applet holds and the file, which was saved from it, does not keep.
    void tellNotKept(const std::filesystem::path& file);

private:
    Options options_;
    std::ostream* err_;
    std::optional<client::Library> library_;
    std::optional<client::SoftBoard> board_;
    std::optional<client::Applet> applet_;  ///< goes away before its board
};

/// Load and save with the code in words; throw RefusedError. A save answers the bytes that are in the file then.
void loadConfiguration(client::Applet& applet, const std::filesystem::path& file);
std::size_t saveConfiguration(client::Applet& applet, const std::filesystem::path& file);

}  // namespace quillon::cli
