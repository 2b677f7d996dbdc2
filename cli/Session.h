#pragma once

#include <filesystem>
#include <optional>
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
};

/// The folders of a build or an installation, seen from the running program: lib/ beside its bin/.
Options defaultOptions();

/// The applet on a software board for the time of one command. Everything opens when it is first asked for, so that a
/// verb that needs no board works without one.
class Session {
public:
    explicit Session(Options options);

    const Options& options() const { return options_; }
    /// Opens registers to reading and writing by name; to be called before applet().
    void enableDirectRegisterAccess();
    /// Throw client::LibraryError, client::OpenError, and RefusedError for a configuration that does not load.
    const client::Library& library();
    client::SoftBoard& board();
    client::Applet& applet();
    /// Writes the configuration that --save names, if there is one. Throws RefusedError.
    void saveIfAsked();

private:
    Options options_;
    std::optional<client::Library> library_;
    std::optional<client::SoftBoard> board_;
    std::optional<client::Applet> applet_;  ///< goes away before its board
};

/// Load and save with the code in words; throw RefusedError.
void loadConfiguration(client::Applet& applet, const std::filesystem::path& file);
void saveConfiguration(client::Applet& applet, const std::filesystem::path& file);

}  // namespace quillon::cli
