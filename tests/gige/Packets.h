/// @file
/// Packets as tests write them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "gige/Bytes.h"
#include "gige/ControlPackets.h"

namespace quillon::gige {

using Bytes = std::vector<std::byte>;

/// "42 01 00 80" as bytes.
inline Bytes bytes(const std::string& hexadecimal) {
    Bytes result;
    for (std::size_t at = 0; at + 1 < hexadecimal.size();) {
        if (hexadecimal[at] == ' ') {
            ++at;
            continue;
        }
        result.push_back(static_cast<std::byte>(std::stoul(hexadecimal.substr(at, 2), nullptr, 16)));
        at += 2;
    }
    return result;
}

/// The words, one behind the other.
inline Bytes words(std::initializer_list<std::uint32_t> values) {
    Bytes result;
    for (const std::uint32_t value : values) {
        append(result, value);
    }
    return result;
}

inline Bytes request(Command command, const Bytes& data, std::uint16_t id = 1, bool wantsAnswer = true) {
    Bytes packet = bytes(wantsAnswer ? "42 01" : "42 00");
    append(packet, static_cast<std::uint16_t>(command));
    append(packet, static_cast<std::uint16_t>(data.size()));
    append(packet, id);
    packet.insert(packet.end(), data.begin(), data.end());
    return packet;
}

}  // namespace quillon::gige
