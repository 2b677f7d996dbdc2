/// @file
/// What a session's commands have changed, so that it can be put back.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "cli/Values.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

/// All that an applet remembers, at one moment.
struct State {
    std::map<int, Value> values;  ///< by id; those that can be read
    bool mirrored = false;        ///< whether the design's buffer mirrors the image

    static State of(client::Applet& applet, const client::SoftBoard& board);
    friend bool operator==(const State&, const State&) = default;
};

/// The changes of a session, the newest last. At most 100 are kept.
class History {
public:
    /// What came of an undo: parameters with the values before it and behind it.
    struct Undone {
        std::string command;
        std::vector<int> back;  ///< ids of what is as it was before the command
        std::vector<int> left;  ///< ids of what could not be put back
    };

    /// The state that the first command finds.
    void begin(client::Applet& applet, const client::SoftBoard& board);
    /// To be called when a command has ended: remembers it, if it has changed anything.
    void note(client::Applet& applet, const client::SoftBoard& board, const std::string& command);
    bool empty() const { return changes_.empty(); }
    /// Writes what the last change found, in an order that the applet accepts; what acts when it is written, as the
    /// name of a file to save to, is left. Throws UsageError if there is no change.
    Undone undo(client::Applet& applet, const client::SoftBoard& board);

private:
    struct Entry {
        std::string command;
        State before;  ///< of its values those alone that the command changed
    };

    State now_;
    std::deque<Entry> changes_;
};

}  // namespace quillon::cli
