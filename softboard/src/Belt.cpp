#include "softboard/src/Belt.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "softboard/softboard.h"
#include "softboard/src/Switchboard.h"

namespace softboard {
namespace {

constexpr double NanometresPerMm = 1e6;
constexpr double MostCountsPerMm = 1e5;
constexpr double FastestMmPerSecond = 1e6;
constexpr double FarthestMm = 1e9;
constexpr double ShortestPart = 1.0;  // nanometres, and so is the shortest gap

double nanometresPerTick(double mmPerSecond) {
    return mmPerSecond * NanometresPerMm / (TicksPerMicrosecond * 1e6);
}

bool isInput(unsigned input) {
    return input < InputCount;
}

Message noInput(unsigned input) {
    return {SOFTBOARD_E_RANGE, "input " + std::to_string(input) + ": 0 to 7 are GPI, 8 to 11 are front GPI"};
}

Message refusedMoves(const std::vector<softboard_move>& moves) {
    double until = 0.0;
    for (const softboard_move& move : moves) {
        if (!(move.until_us > until)) {
            return {SOFTBOARD_E_ARGUMENT, "a move of the belt ends behind the one before it, the first behind 0 us"};
        }
        if (!(std::abs(move.mm_per_s) <= FastestMmPerSecond)) {
            return {SOFTBOARD_E_ARGUMENT, "the belt's speed is a number, at most 1000000 mm/s either way"};
        }
        until = move.until_us;
    }
    return {};
}

}  // namespace

std::optional<double> Marks::at(std::int64_t number) const {
    if ((number < 0 && !bothWays) || (number > 1 && pitch == 0.0)) {
        return std::nullopt;
    }
    const bool second = number % 2 != 0;
    const std::int64_t pitches = (number - (second ? 1 : 0)) / 2;
    return first + static_cast<double>(pitches) * pitch + (second ? length : 0.0);
}

std::int64_t Marks::inFrontOf(double position) const {
    const double distance = position - first;
    const double pitches = pitch == 0.0 ? 0.0 : std::floor(distance / pitch);
    const double rest = distance - pitches * pitch;
    const std::int64_t count = 2 * static_cast<std::int64_t>(pitches) + (rest > 0.0 ? 1 : 0) + (rest > length ? 1 : 0);
    return bothWays ? count : std::max<std::int64_t>(count, 0);
}

double Belt::fastest(const std::vector<softboard_move>& moves) {
    double fastest = 0.0;
    for (const softboard_move& move : moves) {
        fastest = std::max(fastest, std::abs(nanometresPerTick(move.mm_per_s)));
    }
    return fastest;
}

Message Belt::set(unsigned a, unsigned b, double countsPerMm, std::vector<softboard_move> moves, Tick now,
                  Edges& edges) {
    for (const unsigned track : {a, b}) {
        if (track != SOFTBOARD_NO_INPUT && !isInput(track)) {
            return noInput(track);
        }
    }
    if (a == b && a != SOFTBOARD_NO_INPUT) {
        return {SOFTBOARD_E_ARGUMENT, "the two tracks of an encoder are two inputs"};
    }
    if (!(countsPerMm >= 0.0 && countsPerMm <= MostCountsPerMm)) {
        return {SOFTBOARD_E_ARGUMENT, "an encoder has 0 to 100000 counts per mm"};
    }
    if (Message refusal = refusedMoves(moves); refusal.code != SOFTBOARD_OK) {
        return refusal;
    }
    Sensor encoder;
    if (countsPerMm > 0.0) {
        const double quarter = NanometresPerMm / countsPerMm / 4;
        encoder.marks = {0.0, 2 * quarter, quarter, true};
        if (quarter < fastest(moves)) {
            return {SOFTBOARD_E_ARGUMENT,
                    "the belt is too fast for so many counts: a quarter of one lasts at least 8 ns"};
        }
    }
    for (const Barrier& barrier : barriers_) {
        if (barrier.sensor.marks.shortest() < fastest(moves)) {
            return {SOFTBOARD_E_ARGUMENT, "the belt is too fast for a light barrier: a part lasts at least 8 ns"};
        }
    }
    a_ = a;
    b_ = b;
    hasEncoder_ = countsPerMm > 0.0;
    encoder_ = encoder;
    moves_ = std::move(moves);
    start(now, edges);
    return {};
}

Message Belt::setBarrier(unsigned input, double first, double pitch, double length, Tick now, Edges& edges) {
    if (!isInput(input)) {
        return noInput(input);
    }
    if (!(std::abs(first) <= FarthestMm && pitch >= 0.0 && pitch <= FarthestMm && length >= 0.0 &&
          length <= FarthestMm)) {
        return {SOFTBOARD_E_ARGUMENT, "the places of a light barrier are numbers of at most 1000000000 mm"};
    }
    if (pitch != 0.0 && pitch <= length) {
        return {SOFTBOARD_E_ARGUMENT, "the parts in a light barrier touch: their pitch is greater than their length"};
    }
    Barrier barrier;
    barrier.input = input;
    barrier.sensor.marks = {first * NanometresPerMm, pitch * NanometresPerMm, length * NanometresPerMm, false};
    if (length != 0.0 && barrier.sensor.marks.shortest() < ShortestPart) {
        return {SOFTBOARD_E_ARGUMENT, "a part and the gap behind it are at least 0.000001 mm long"};
    }
    if (length != 0.0 && barrier.sensor.marks.shortest() < fastest(moves_)) {
        return {SOFTBOARD_E_ARGUMENT, "a part is too short for the belt: at its fastest it lasts at least 8 ns"};
    }
    std::erase_if(barriers_, [&](const Barrier& it) { return it.input == input; });
    if (length != 0.0) {
        barrier.sensor.passed = barrier.sensor.marks.inFrontOf(position(now));
        barriers_.push_back(barrier);
    }
    edges.push_back({input, length != 0.0 && barrier.isCovered()});
    schedule(now);
    return {};
}

void Belt::restart(Edges& edges) {
    if (exists()) {
        start(0, edges);
    }
}

void Belt::start(Tick now, Edges& edges) {
    started_ = now;
    move_ = 0;
    beginMove(now, 0.0);
    encoder_.passed = encoder_.marks.inFrontOf(0.0);
    if (hasEncoder_) {
        showTracks(edges);
    }
    for (Barrier& barrier : barriers_) {
        barrier.sensor.passed = barrier.sensor.marks.inFrontOf(0.0);
        edges.push_back({barrier.input, barrier.isCovered()});
    }
    schedule(now);
}

void Belt::beginMove(Tick now, double position) {
    moveBegan_ = now;
    moveFrom_ = position;
    moveEnds_ = Never;
    speed_ = 0.0;
    if (move_ < moves_.size()) {
        const Tick ticks = wholeTicks(moves_[move_].until_us);
        speed_ = nanometresPerTick(moves_[move_].mm_per_s);
        moveEnds_ = ticks != Never ? std::max(started_ + ticks, now) : Never;
    }
}

double Belt::position(Tick now) const {
    return moveFrom_ + speed_ * static_cast<double>(now - moveBegan_);
}

/// When the next mark comes by in this move.
Tick Belt::passes(const Sensor& sensor, Tick now) const {
    const auto mark = speed_ == 0.0 ? std::nullopt : sensor.marks.at(sensor.passed - (speed_ < 0.0 ? 1 : 0));
    if (!mark) {
        return Never;
    }
    constexpr double Longest = 1e18;
    const double ticks = std::ceil(std::max((*mark - moveFrom_) / speed_, 0.0));
    return ticks < Longest && ticks <= static_cast<double>(moveEnds_ - moveBegan_)
               ? std::max(moveBegan_ + static_cast<Tick>(ticks), now)
               : Never;
}

bool Belt::pass(Sensor& sensor, Tick now) const {
    if (passes(sensor, now) > now) {
        return false;
    }
    sensor.passed += speed_ < 0.0 ? -1 : 1;
    return true;
}

/// Track A is high in the first two quarters of a period, track B in the second and third.
void Belt::showTracks(Edges& edges) const {
    const std::int64_t quarter = (encoder_.passed - 1) & 3;
    if (a_ != SOFTBOARD_NO_INPUT) {
        edges.push_back({a_, quarter < 2});
    }
    if (b_ != SOFTBOARD_NO_INPUT) {
        edges.push_back({b_, quarter == 1 || quarter == 2});
    }
}

void Belt::happen(Tick now, Edges& edges) {
    if (hasEncoder_ && pass(encoder_, now)) {
        showTracks(edges);
    }
    for (Barrier& barrier : barriers_) {
        if (pass(barrier.sensor, now)) {
            edges.push_back({barrier.input, barrier.isCovered()});
        }
    }
    schedule(now);
    if (edges.empty() && moveEnds_ <= now) {
        const double end = position(now);
        ++move_;
        beginMove(now, end);
        schedule(now);
    }
}

void Belt::schedule(Tick now) {
    next_ = moveEnds_;
    if (hasEncoder_) {
        next_ = std::min(next_, passes(encoder_, now));
    }
    for (const Barrier& barrier : barriers_) {
        next_ = std::min(next_, passes(barrier.sensor, now));
    }
}

}  // namespace softboard
