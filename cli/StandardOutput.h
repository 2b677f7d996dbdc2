#pragma once

#include <array>
#include <streambuf>

namespace quillon::cli {

/// The way to standard output, which remembers why it failed. A terminal gets each line at once.
class StandardOutput : public std::streambuf {
public:
    explicit StandardOutput(int descriptor);

    /// The system's number for why not all could be written; 0 while all was, or if nobody reads a pipe any more.
    int failure() const;

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    int descriptor_;
    bool isTerminal_;
    int failure_ = 0;
    std::array<char, 16384> buffer_{};
};

/// Keeps files that are opened later from the places of standard input, output and error, if these are closed.
void occupyStandardDescriptors();

}  // namespace quillon::cli
