#include "softboard/src/Transcript.h"

#include <array>
#include <charconv>
#include <utility>

namespace softboard {
namespace {

template <class Number>
void append(std::string& text, Number value) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text.append(digits.data(), end);
}

}  // namespace

void appendNumber(std::string& text, std::int64_t value) {
    append(text, value);
}

void appendNumber(std::string& text, std::uint64_t value) {
    append(text, value);
}

void appendNumber(std::string& text, double value) {
    append(text, value);
}

void Transcript::add(softboard_direction direction, int id, unsigned dma, int type, std::int64_t result,
                     const char* name, std::string value) {
    const softboard_access access{++lastSequence_, direction, id,     static_cast<std::int32_t>(dma), type,
                                  result,          name,      nullptr};
    entries_.push_back({access, std::move(value)});
}

softboard_access Transcript::at(std::size_t index) const {
    softboard_access access = entries_[index].access;
    access.value = entries_[index].value.c_str();
    return access;
}

}  // namespace softboard
