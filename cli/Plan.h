/// @file
/// What the settings of a line-scan system come to, and whether camera, grabber and computer bear it.
///
///     line rate      1 / FG_LINEPERIODE, in whole steps of 8 ns; with an encoder speed of the belt / line pitch
///     line pitch     way from pulse to pulse x FG_LINE_DOWNSCALE / 1, 2 or 4 for FILTER_X1, FILTER_X2, FILTER_X4
///     frame rate     line rate / FG_HEIGHT
///     data rate      client::frameSize() x frame rate
///
/// What has to fit:
///
///     frame rate     the one that is asked for, at most the line rate
///     exposure       at most the time from line to line: a line trigger during an exposure is lost
///     debouncing     FG_LINETRIGGERDEBOUNCING, at most the time that a track of the encoder stays high or low
///     camera link    (FG_XOFFSET + FG_WIDTH) x 3 x bits of a component in FG_PIXELFORMAT x line rate, at most the
///                    20 Gbit/s of both ports; what the link's protocol takes is not counted
///     PCIe link      the data rate, at most FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH x 500 MB/s if both ends are capable of
///                    generation 2 and x 250 MB/s if not (8 of 10 bits are data), and at most
///                    FG_SYSTEMMONITOR_CURRENT_LINK_SPEED x 2^30 bytes/s; what packets take is not counted
///     buffer memory  FG_HEIGHT, at most as many lines of the camera's as half of the memory of
///                    3 x RamDataWidth x 2^RamAddressWidth bits holds, less RamDataWidth - 1, as the applet itself
///                    reckons for a vantage point at the bottom left
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/Assignments.h"
#include "cli/Session.h"

namespace quillon::cli {

/// What is asked for, each as it was written; empty for what is to stay as it is.
struct Wishes {
    std::string width;
    std::string xOffset;
    std::string height;  ///< or framesPerSecond
    std::string framesPerSecond;
    std::string lineRate;  ///< or linePitch
    std::string exposure;
    std::string pixelFormat;
    std::string format;
    std::string encoder;    ///< way of the belt from one pulse of a track to the next
    std::string speed;      ///< of the belt at its fastest; needs an encoder
    std::string linePitch;  ///< way of the belt from line to line; needs an encoder
};

/// Something that a system has so much of and no more.
struct Bound {
    std::string name;
    std::string unit;
    double needs;
    double has;
    std::string instead;  ///< what would fit, in words
    bool fits() const { return needs <= has * (1 + 1e-12); }
};

/// What an output format would take.
struct FormatRate {
    std::string name;
    std::uint64_t frameBytes;
    double bytesPerSecond;
    bool fits;    ///< through the PCIe link
    bool chosen;  ///< it is the FG_FORMAT
};

struct Plan {
    std::vector<Assignment> settings;  ///< in an order in which they were accepted
    double lineRate;                   ///< Hz; with an encoder at the belt's fastest
    std::optional<double> linePitch;   ///< µm; with an encoder
    double wantedPitch;                ///< what the line pitch comes near to, if it is none that the encoder gives
    std::uint64_t linesPerFrame;
    double frameRate;  ///< Hz, of frames that follow each other without a pause
    std::vector<FormatRate> formats;
    std::vector<Bound> bounds;
    std::vector<std::string> notes;  ///< what is not as it was asked for, though it fits

    bool fits() const;
};

/// Carries out what is asked for on the session's applet, an exposure that is too long left out. Throws UsageError for
/// wishes that make no sense, RefusedError for a value that the applet takes in no order.
Plan makePlan(Session& session, const Wishes& wishes);

/// A number with a unit, in thousands and thousandths as people write it: "20 kHz", "245.76 MB/s".
std::string scaledInWords(double number, const std::string& unit);

}  // namespace quillon::cli
