/// @file
/// The digital side of a board: input levels, what the outputs carry, and the two signal analyzers.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string_view>

#include "softboard/src/Parameter.h"

namespace grabber {

/// Not locked; the board's lock guards it. A design that lacks the parameters has no such signals.
class Signals {
public:
    static constexpr unsigned InputCount = 12;   ///< GPI 0 to 7, front GPI 0 to 3
    static constexpr unsigned OutputCount = 11;  ///< camera trigger, GPO 0 to 7, front GPO 0 and 1

    using Find = std::function<Parameter*(std::string_view name)>;

    /// Takes up the parameters of a design, which have to stay in place until the next call.
    void bind(const Find& find);

    /// Moves the time of the signals on, by microseconds. It stands still otherwise.
    void advance(double microseconds) { now_ += microseconds; }
    /// Gives an input a level, now. An edge that an analyzer is set to counts as a pulse for it.
    int setInput(unsigned input, bool level);
    /// The level of an output. The camera's own signals are taken to be low.
    int output(unsigned output, bool& level) const;

    /// To be told of every write: a write of 1 to the analyzers' clear parameter sets them back.
    void written(const Parameter& parameter) {
        if (&parameter == clear_) {
            clearAnalyzers();
        }
    }

private:
    struct Route {
        Parameter* select = nullptr;
        Parameter* invert = nullptr;
        bool bound() const { return select != nullptr && invert != nullptr; }
        bool inverted() const;
        /// The input that the route carries; nothing for a signal of another kind.
        std::optional<unsigned> input() const;
    };
    struct Analyzer {
        Route route;
        Parameter* periodCurrent = nullptr;
        Parameter* periodMax = nullptr;
        Parameter* periodMin = nullptr;
        Parameter* pulseCount = nullptr;
        std::optional<double> lastPulse;
        bool bound() const;
        void pulse(double now);
        void clear();
    };

    static Route routeOf(const Find& find, const std::string& stem);
    bool inputLevel(unsigned input) const;
    void clearAnalyzers();
    void updateDifference();

    double now_ = 0.0;
    Parameter* inputs_ = nullptr;
    Parameter* clear_ = nullptr;
    Parameter* difference_ = nullptr;
    std::array<Route, OutputCount> outputs_;
    std::array<Analyzer, 2> analyzers_;
};

}  // namespace grabber
