/// @file
/// The counting of pictures: a model of acquisition without picture contents.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace softboard {

/// Not locked; the board's lock guards it.
///
/// Pictures arrive by time, at the period that is in force when somebody asks, or because the host delivers them.
class Acquisition {
public:
    using Clock = std::chrono::steady_clock;

    bool running() const { return running_; }
    std::int64_t pictures() const { return pictures_; }
    /// Pictures asked for, -1 without end.
    std::int64_t wanted() const { return wanted_; }

    void start(std::int64_t count, Clock::time_point now);
    void stop() { running_ = false; }

    /// Counts what has arrived since the last call, at a picture every `period` seconds; none arrive without a period.
    void advance(Clock::time_point now, std::optional<double> period);
    /// `count` further pictures arrive at once.
    void deliver(std::int64_t count);

private:
    bool running_ = false;
    std::int64_t wanted_ = 0;
    std::int64_t pictures_ = 0;
    double begunPicture_ = 0.0;  ///< the part of the next picture that has arrived, 0 to 1
    Clock::time_point last_;
};

}  // namespace softboard
