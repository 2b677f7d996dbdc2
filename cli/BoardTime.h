/// @file
/// The software board's time, and what happens in it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/Json.h"
#include "cli/Terminal.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

/// Public names of events, each with how often it was raised.
using EventCounts = std::vector<std::pair<std::string, std::uint64_t>>;

/// How often an event of that public name was raised; 0 where the design has none such.
std::uint64_t eventCount(const client::SoftBoard& board, std::string_view publicName);

/// What passes of the board's time while one of these watches.
class TimeWatch {
public:
    explicit TimeWatch(const client::SoftBoard& board);

    double now() const { return board_.signalTime(); }  ///< µs since the design was put on the board
    double passed() const;                              ///< µs, in whole ticks of the board
    /// The events raised meanwhile, by their places among the design's.
    EventCounts events() const;

private:
    const client::SoftBoard& board_;
    double begin_;
    EventCounts before_;
};

/// Lets the time pass, however long. Ctrl-C ends it; says whether all of it has passed.
bool advance(client::SoftBoard& board, double microseconds);

/// "time", "passed" and "events", for the answer of what has let time pass.
void put(Json& json, const TimeWatch& watch);
void print(std::ostream& out, const TimeWatch& watch);

}  // namespace quillon::cli
