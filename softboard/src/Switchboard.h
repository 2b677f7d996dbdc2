/// @file
/// The switchboard of the digital signals: their levels, what carries them on, and what listens to their edges.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "softboard/softboard.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/SignalRecording.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Where the inputs stand in a row among the selects of the switchboard: GPI 0 to 7, front GPI 0 to 3.
inline constexpr unsigned FirstInputSelect = 21;
inline constexpr unsigned InputCount = 12;

/// A line did not fit into the board's memory.
inline constexpr std::string_view OverflowEvent = "Device1_Process0_Overflow_Overflow";

/// Not locked; the board's lock guards it. A design that lacks parameters or events has no such routes or counts.
class Switchboard {
public:
    static constexpr unsigned SignalCount = 37;  ///< selects 0 (always low) to 36; not all are signals
    static constexpr unsigned OutputCount = 11;  ///< camera trigger, GPO 0 to 7, front GPO 0 and 1

    /// Takes up a design: all signals are low, all events not yet raised, and it is tick 0.
    void bind(const Find& find, const std::vector<std::string>& events);

    Tick now() const { return now_; }
    void setTime(Tick tick) {
        if (recording_ != nullptr) {
            recordOutputs();  // a routing may have changed since the last edge
        }
        now_ = tick;
    }

    bool level(unsigned select) const { return levels_[select]; }
    /// Gives a signal a level, now. An edge is counted by the analyzers and raises the events that listen to it.
    void setLevel(unsigned select, bool level) {
        if (levels_[select] == level) {
            return;
        }
        levels_[select] = level;
        if (recording_ != nullptr) {
            record(select, level);
        }
        raise(level ? edgeEvents_[select].rising : edgeEvents_[select].falling);
        if (heard_[select]) {
            carry(select, level);
        }
    }
    /// A pulse so short that nobody sees its level, but its edges.
    void pulse(unsigned select) {
        setLevel(select, true);
        setLevel(select, false);
    }

    /// To be told of every change of a watched parameter. True if it decides who listens: nothing else follows it.
    bool written(const Parameter& parameter);

    /// The level of an output: that of the signal it selects, inverted if it says so.
    int output(unsigned output, bool& level) const;
    void clearAnalyzers();

    /// Has edges, changes of outputs and events written down in `recording` from now on; null for no more.
    void recordIn(SignalRecording* recording);
    /// Writes down what a change of the routing has done to the outputs.
    void recordOutputs();

    /// Has `rose` called with every rising edge of the camera trigger, output 0.
    void onCameraTrigger(std::function<void()> rose) { cameraTriggerRose_ = std::move(rose); }

    void raise(std::string_view event);
    /// Null if the design has no such event.
    const std::uint64_t* eventCount(std::string_view name) const;

private:
    struct EventCount {
        unsigned bit = 0;  ///< of the event's mask
        std::uint64_t count = 0;
    };
    using EventCounts = std::map<std::string, EventCount, std::less<>>;
    using Counter = EventCounts::value_type*;  ///< null for an event that the design lacks
    struct Route {
        Parameter* select = nullptr;
        const Parameter* invert = nullptr;
        bool bound() const { return select != nullptr && invert != nullptr; }
        bool inverted() const { return integerOf(invert) == 1; }
        /// True if the signal's change to `level` is a rising edge of what the route carries.
        bool rises(unsigned signal, bool level) const;
    };
    struct Analyzer {
        Route route;
        Parameter* periodCurrent = nullptr;
        Parameter* periodMax = nullptr;
        Parameter* periodMin = nullptr;
        Parameter* pulseCount = nullptr;
        std::optional<Tick> lastPulse;
        bool bound() const;
        void pulse(Tick now);
        void clear();
    };
    struct CustomEvent {
        Route route;
        Counter counter = nullptr;
    };
    struct EdgeEvents {
        Counter rising = nullptr;
        Counter falling = nullptr;
    };

    void raise(Counter counter) {
        if (counter != nullptr) {
            ++counter->second.count;
            if (recording_ != nullptr) {
                recording_->event(now_, counter->first.c_str(), counter->second.bit);
            }
        }
    }
    void record(unsigned select, bool level) {
        // The pulses of lines and frames have no level; they show as events.
        if (select < SOFTBOARD_LINE_START) {
            recording_->signal(now_, select, level);
        }
        recordOutputs();
    }
    /// Low for one that the design does not route.
    bool outputIsHigh(unsigned number) const;
    /// Brings an edge to those that listen.
    void carry(unsigned select, bool level);
    /// The routes of those that hear edges; of the other outputs the levels are asked for.
    std::array<const Route*, 5> listeningRoutes() const;
    void noteListeners();

    static Route routeOf(const Find& find, const std::string& stem);
    void bindRoutes(const Find& find);
    void bindEvents(const std::vector<std::string>& events);
    Counter counterOf(const std::string& event);
    void updateDifference();

    Tick now_ = 0;
    std::array<bool, SignalCount> levels_{};
    std::array<bool, SignalCount> heard_{};  ///< something listens to the signal
    Parameter* difference_ = nullptr;
    std::array<Route, OutputCount> outputs_;
    std::array<Analyzer, 2> analyzers_;
    std::array<CustomEvent, 2> customEvents_;
    std::array<EdgeEvents, SignalCount> edgeEvents_;
    EventCounts eventCounts_;
    std::function<void()> cameraTriggerRose_;
    SignalRecording* recording_ = nullptr;
    std::array<bool, OutputCount> recordedOutputs_{};
};

}  // namespace softboard
