#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/History.h"
#include "cli/World.h"
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

/// The applet on a software board for the time of one command, or of many. Everything opens when it is first asked for,
/// so that a verb that needs no board works without one.
class Session {
public:
    /// `err`: where findings about configurations go; null for nowhere.
    explicit Session(Options options, std::ostream* err = nullptr);
    /// A command within a session that lasts: on its board and its applet, which the command's configuration is loaded
    /// into. Both sessions stay where they are.
    Session(Options options, std::ostream* err, Session& lasting);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const Options& options() const { return options_; }
    /// True where board and applet outlive the command.
    bool lasts() const { return &owner_ != this; }
    /// The changes that can be undone; where the board ends with the command there are none.
    History& history() { return owner_.history_; }
    /// An applet to try things on, with the command's configuration: where the session lasts, another one on a board of
    /// its own, which ends with the command.
    Session& scratch();
    /// Opens registers to reading and writing by name; to be called before applet().
    void enableDirectRegisterAccess();
    /// Throw client::LibraryError, client::OpenError, and RefusedError for a configuration that does not load.
    const client::Library& library();
    client::SoftBoard& board();
    client::Applet& applet();
    /// The belt that was started last on the board; nothing where there is none.
    std::optional<RunningBelt>& belt() { return owner_.belt_; }
    /// The file that was loaded last, if one was. A load that goes past applet() tells its file.
    const std::optional<std::filesystem::path>& configuration() const { return owner_.configuration_; }
    void configurationLoaded(const std::filesystem::path& file) { owner_.configuration_ = file; }
    /// Writes the configuration that --save names, if there is one. Throws RefusedError.
    void saveIfAsked();

    /// Says what a load of the file would do without a word, one line each. Throws RefusedError where that has to keep
    /// it from being loaded. An applet of its own tries the file.
    void tellFindings(const std::filesystem::path& file) const;
    /// Says what the applet holds and the file, which was saved from it, does not keep.
    void tellNotKept(const std::filesystem::path& file);

    /// Says, where the board ends with the command, that what it changed ends, too, and how to keep it.
    void tellIfLost();

private:
    void open();

    Options options_;
    std::ostream* err_;
    Session& owner_;  ///< of library, board and applet; the session itself where they end with it
    std::optional<client::Library> library_;
    std::optional<client::SoftBoard> board_;
    std::optional<std::filesystem::path> configuration_;  ///< that was loaded last
    std::optional<client::Applet> applet_;                ///< goes away before its board
    bool withRegisters_ = false;
    bool loaded_ = false;  ///< the configuration of the options
    std::optional<RunningBelt> belt_;
    History history_;
    std::unique_ptr<Session> scratch_;
};

/// Load and save with the code in words; throw RefusedError. A save answers the bytes that are in the file then.
void loadConfiguration(client::Applet& applet, const std::filesystem::path& file);
std::size_t saveConfiguration(client::Applet& applet, const std::filesystem::path& file);

}  // namespace quillon::cli
