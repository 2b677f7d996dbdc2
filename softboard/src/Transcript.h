/// @file
/// The list of what reached a board, in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "softboard/softboard.h"

namespace softboard {

/// Not locked; its owner's lock guards it.
class SOFTBOARD_API Transcript {
public:
    /// Nothing is added while recording is off, and then callers need not make the texts.
    bool recording() const { return recording_; }
    void setRecording(bool on) { recording_ = on; }

    /// Appends an entry. `name` is not copied and has to live as long as the transcript.
    void add(softboard_direction direction, int id, unsigned dma, int type, std::int64_t result, const char* name,
             std::string value);

    std::size_t size() const { return entries_.size(); }
    /// The texts of the entry live until clear. `index` is below size.
    softboard_access at(std::size_t index) const;
    void clear() { entries_.clear(); }

private:
    struct Entry {
        softboard_access access;  ///< with a null value
        std::string value;
    };

    bool recording_ = true;
    std::uint64_t lastSequence_ = 0;
    std::deque<Entry> entries_;  ///< a deque, so that the texts stay in place when it grows
};

/// Appends "v" as the SDK's value types show it in a transcript: integers in decimal, doubles in the shortest form that
/// reads back.
SOFTBOARD_API void appendNumber(std::string& text, std::int64_t value);
SOFTBOARD_API void appendNumber(std::string& text, std::uint64_t value);
SOFTBOARD_API void appendNumber(std::string& text, double value);

}  // namespace softboard
