/// @file
/// A belt in front of the camera, with its encoder and its light barriers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "softboard/scene.h"
#include "softboard/src/Message.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Marks along a belt, two in each pitch: at its beginning and `length` behind it.
struct Marks {
    double first = 0.0;     ///< nanometres
    double pitch = 0.0;     ///< nanometres; 0: there are two marks only
    double length = 0.0;    ///< nanometres
    bool bothWays = false;  ///< there are marks in front of the first, too

    /// Where mark `number` is; nothing if there is none.
    std::optional<double> at(std::int64_t number) const;
    /// How many marks lie in front of a position; negative where there are marks in front of the first.
    std::int64_t inFrontOf(double position) const;
    /// From one mark to the next, where they are closest; of an absent pitch the length alone counts.
    double shortest() const { return pitch == 0.0 ? length : std::min(length, pitch - length); }
};

/// Not locked; the board's lock guards it. It moves with one speed from one turning point to the next.
class Belt {
public:
    /// A change of an input that it drives.
    struct Edge {
        unsigned input;
        bool level;
    };
    using Edges = std::vector<Edge>;

    /// See softboard_belt and softboard_barrier. The levels that its inputs have now go to `edges`.
    Message set(unsigned a, unsigned b, double countsPerMm, std::vector<softboard_move> moves, Tick now, Edges& edges);
    Message setBarrier(unsigned input, double first, double pitch, double length, Tick now, Edges& edges);
    /// It is tick 0 again.
    void restart(Edges& edges);

    bool exists() const { return !moves_.empty(); }
    /// In nanometres.
    double position(Tick now) const;

    /// When an edge comes or the speed changes; Never if nothing will.
    Tick next() const { return next_; }
    /// It is that tick: adds what changes to `edges`.
    void happen(Tick now, Edges& edges);

private:
    struct Sensor {
        Marks marks;
        std::int64_t passed = 0;  ///< marks that lie behind
    };
    struct Barrier {
        unsigned input = 0;
        Sensor sensor;
        bool isCovered() const { return sensor.passed % 2 != 0; }
    };

    /// In nanometres a tick.
    static double fastest(const std::vector<softboard_move>& moves);
    void start(Tick now, Edges& edges);
    void beginMove(Tick now, double position);
    Tick passes(const Sensor& sensor, Tick now) const;
    bool pass(Sensor& sensor, Tick now) const;
    void showTracks(Edges& edges) const;
    void schedule(Tick now);

    unsigned a_ = SOFTBOARD_NO_INPUT;
    unsigned b_ = SOFTBOARD_NO_INPUT;
    bool hasEncoder_ = false;
    Sensor encoder_;
    std::vector<Barrier> barriers_;
    std::vector<softboard_move> moves_;

    // The move that is under way.
    Tick started_ = 0;      ///< when the first one began
    std::size_t move_ = 0;  ///< its number; the belt stands behind the last one
    Tick moveBegan_ = 0;
    Tick moveEnds_ = Never;
    double moveFrom_ = 0.0;  ///< nanometres
    double speed_ = 0.0;     ///< nanometres in a tick
    Tick next_ = Never;
};

}  // namespace softboard
