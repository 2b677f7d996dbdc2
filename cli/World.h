/// @file
/// What stands in front of the board's camera and what goes wrong on the way of its pictures. It is no parameter: undo
/// leaves it alone, and it ends with the board.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "quillon/client/Applet.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

struct ScenePattern {
    std::string text;  ///< as the board takes it: "noise:7"
};

struct ScenePicture {
    std::filesystem::path file;
    bool tiled = false;
    double pixelsPerMm = 10;
};

struct Illumination {
    client::Light light;
    std::uint64_t seed = 1;  ///< of the noise
};

/// What the camera sees.
struct Scene {
    std::variant<std::monostate, ScenePattern, ScenePicture> content;  ///< nothing: what it has seen so far
    std::optional<Illumination> illumination;                          ///< nothing: as it has been so far
    bool isEmpty() const { return content.index() == 0 && !illumination; }
};

/// An encoder whose tracks are where somebody wants them, or where the parameters look for them.
struct BeltEncoder {
    double countsPerMm = 0;
    bool isConnected = false;  ///< to the inputs that follow
    std::optional<unsigned> a;
    std::optional<unsigned> b;
};

/// A light barrier at an input, or at the one that the image trigger listens to.
struct BeltBarrier {
    double firstMm = 0;
    double lengthMm = 0;
    double pitchMm = 0;  ///< 0: one part comes
    std::optional<unsigned> input;
};

struct Belt {
    std::vector<client::BeltMove> moves;  ///< none: no belt is wanted
    std::optional<BeltEncoder> encoder;
    std::vector<BeltBarrier> barriers;
};

struct PlannedLineFault {
    std::uint64_t nth;
    client::LineFault fault;
};
struct PlannedFrameFault {
    std::uint64_t nth;
    client::FrameFault fault;
    double amount;
};
struct PlannedOutage {
    client::Outage outage;
    double fromUs;
    double toUs;
};
using Fault = std::variant<PlannedLineFault, PlannedFrameFault, PlannedOutage>;

struct Faults {
    std::vector<Fault> planned;
    std::optional<double> bytesPerSecond;  ///< of the DMA
};

/// A belt that runs on a board.
struct RunningBelt {
    std::vector<client::BeltMove> moves;
    double countsPerMm;              ///< 0: no encoder
    std::vector<unsigned> barriers;  ///< the inputs that they drive
    double sinceUs;                  ///< of the board's time

    /// mm/s at a board's time.
    double speedAt(double microseconds) const;
};

/// Put it on the board. Throw RefusedError with the board's words for numbers that it does not take and files that it
/// cannot read, and UsageError for inputs that do not go together.
void apply(client::SoftBoard& board, const Scene& scene);
void apply(client::SoftBoard& board, const Faults& faults);
/// Starts the belt in place of `running`, with its barriers, if one is wanted; inputs that are not named are those of
/// the parameters now.
void apply(client::SoftBoard& board, const client::Applet& applet, const Belt& belt,
           std::optional<RunningBelt>& running);
/// Takes a belt away, with its barriers.
void takeAway(client::SoftBoard& board, std::optional<RunningBelt>& running);

/// Where a parameter does not fit to it: what that does, and the "NAME=VALUE" with which it would fit.
struct Hint {
    std::string text;
    std::string assignment;
};
std::vector<Hint> hintsFor(const client::Applet& applet, const Scene& scene);
std::vector<Hint> hintsFor(const client::Applet& applet, const Belt& belt);

/// "line 100 does not arrive", "frame 3 keeps 100 lines", "the camera is gone from 10 ms to 30 ms".
std::string inWords(const Fault& fault);

}  // namespace quillon::cli
