#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

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

struct Refusal;

/// The applet refused something that is no single parameter, a file for instance.
class RefusedError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    RefusedError(const std::string& text, std::shared_ptr<const Refusal> refusal)
        : std::runtime_error(text), refusal_(std::move(refusal)) {}

    /// What the applet answered; null where it was not the applet that refused.
    const Refusal* refusal() const { return refusal_.get(); }

private:
    std::shared_ptr<const Refusal> refusal_;
};

}  // namespace quillon::cli
