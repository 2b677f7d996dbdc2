#pragma once

#include <stdexcept>

namespace quillon::cli {

/// What the command ends with.
enum ExitStatus : int {
    Done = 0,
    Refused = 1,     ///< the applet or the design refused a value or a call
    Usage = 2,       ///< the command line makes no sense: an unknown verb, option or name, a text that is no number
    Unavailable = 3  ///< no library or no board
};

/// The command line makes no sense; the message says why, and what was probably meant.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The applet refused something that is no single parameter, a file for instance.
class RefusedError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace quillon::cli
