#include "cli/BoardTime.h"

#include <algorithm>
#include <cmath>

#include "cli/Answers.h"
#include "cli/Interrupt.h"
#include "cli/Units.h"
#include "quillon/PublicEvents.h"
#include "quillon/client/Errors.h"

namespace quillon::cli {

namespace {

EventCounts eventCounts(const client::SoftBoard& board) {
    EventCounts counts;
    for (const PublicEvent& event : PublicEvents) {
        counts.emplace_back(event.publicName, eventCount(board, event.publicName));
    }
    return counts;
}

}  // namespace

std::uint64_t eventCount(const client::SoftBoard& board, std::string_view publicName) {
    const auto event = std::ranges::find(PublicEvents, publicName, &PublicEvent::publicName);
    try {
        return event != PublicEvents.end() ? board.eventCount(event->designName) : 0;
    } catch (const client::CallError&) {
        return 0;  // a design without it
    }
}

TimeWatch::TimeWatch(const client::SoftBoard& board)
    : board_(board), begin_(board.signalTime()), before_(eventCounts(board)) {}

double TimeWatch::passed() const {
    constexpr double ticksPerMicrosecond = 125;
    return std::round((board_.signalTime() - begin_) * ticksPerMicrosecond) / ticksPerMicrosecond;
}

EventCounts TimeWatch::events() const {
    EventCounts raised = eventCounts(board_);
    for (std::size_t i = 0; i < raised.size(); ++i) {
        raised[i].second -= before_[i].second;
    }
    std::erase_if(raised, [](const auto& event) { return event.second == 0; });
    return raised;
}

bool advance(client::SoftBoard& board, double microseconds) {
    constexpr double atOnce = 1e6;
    const Interrupt interrupt;
    for (double left = microseconds; left > 0 && !Interrupt::came(); left -= atOnce) {
        board.advanceSignals(std::min(left, atOnce));
    }
    return !Interrupt::came();
}

void put(Json& json, const TimeWatch& watch) {
    Json events = emptyList();
    for (const auto& [name, count] : watch.events()) {
        append(events, object({{"name", name}, {"count", count}}));
    }
    put(json, "time", inMicroseconds(watch.now()));
    put(json, "passed", inMicroseconds(watch.passed()));
    put(json, "events", events);
}

void print(std::ostream& out, const TimeWatch& watch) {
    out << timeInWords(watch.now()) << " of the board's time, " << timeInWords(watch.passed()) << " more\n";
    Rows rows;
    for (const auto& [name, count] : watch.events()) {
        rows.push_back({name, std::to_string(count)});
    }
    printRows(out, rows, "  ");
}

}  // namespace quillon::cli
