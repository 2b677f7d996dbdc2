/// @file
/// The lines of a file, over and over from its start, without a copy of each.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "files/TextFile.h"

namespace quillon {

/// Reads an open file in pieces as `fgets` does: a line with its line feed, or 255 characters of a longer one.
///
/// Like a stream, it does not look at the file again while it still holds its start: who changes the file calls
/// `handOver` before, or `forget`. A device has no end; its first `DeviceLimit` bytes are all of it.
class LineReader {
public:
    static constexpr std::size_t DeviceLimit = std::size_t{1} << 20U;

    /// Goes to the start of the file. A null stream is an empty file.
    void restart(std::FILE* stream);
    /// Lets the next restart read the file anew.
    void forget() {
        offset_ = filled_ = begin_ = 0;
        wasRead_ = false;
    }
    /// Puts the stream where it would stand if it had been read itself since the last hand-over, for a write; where
    /// nothing was read it stays. The next restart reads the file anew.
    void handOver(std::FILE* stream);

    /// The next piece, which is there until the next call. False at the end of the file and after a failed read.
    bool next(std::string_view& piece) {
        constexpr std::size_t longest = std::tuple_size_v<TextLine> - 1;
        do {
            const std::size_t available = std::min(filled_ - begin_, longest);
            const void* feed = std::memchr(buffer_.data() + begin_, '\n', available);
            if (feed != nullptr) {
                return take(piece,
                            static_cast<std::size_t>(static_cast<const char*>(feed) - buffer_.data()) + 1 - begin_);
            }
            if (available == longest) {
                return take(piece, longest);
            }
        } while (readOn());
        return begin_ != filled_ && take(piece, filled_ - begin_);
    }

    /// The same as a terminated copy. What stands behind a zero byte of the file is in it, and out of sight.
    bool next(TextLine& line) {
        std::string_view piece;
        const bool found = next(piece);
        copy(piece, line);
        return found;
    }
    static void copy(std::string_view piece, TextLine& line) {
        *std::copy(piece.begin(), piece.end(), line.begin()) = '\0';
    }

private:
    bool take(std::string_view& piece, std::size_t size) {
        piece = std::string_view(buffer_.data() + begin_, size);
        begin_ += size;
        return true;
    }
    bool readOn();

    std::array<char, 8192> buffer_;  ///< of which what was read is in the first filled_ characters
    std::size_t begin_ = 0;          ///< of what is not taken yet
    std::size_t filled_ = 0;
    std::size_t offset_ = 0;  ///< in the file, of what is read next; equal to filled_ while the file's start is held
    int descriptor_ = -1;
    bool wasRead_ = false;  ///< since the last hand-over
};

}  // namespace quillon
