#include "cli/Plan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

#include "cli/ExitStatus.h"
#include "cli/Refusals.h"
#include "cli/Units.h"
#include "quillon/Vocabulary.h"
#include "quillon/client/Frames.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

constexpr double Micro = 1e6;
constexpr double Components = 3;
constexpr double CameraLink = 20e9;        ///< bit/s
constexpr double LaneGeneration1 = 250e6;  ///< byte/s
constexpr double LaneGeneration2 = 500e6;
constexpr double Gibi = 1024.0 * 1024 * 1024;

constexpr int MostDownscale = 255;
struct Filter {
    const char* name;
    int counts;  ///< for each pulse of a track
};
constexpr std::array Filters{Filter{"FILTER_X1", 1}, Filter{"FILTER_X2", 2}, Filter{"FILTER_X4", 4}};

/// The number of an option, above 0, in `unit`.
double positive(const char* option, const std::string& text, const char* unit) {
    try {
        constexpr double most = 1e15;  // no machine has more of anything
        const double number = parseQuantity(text, unit);
        if (number > 1 / most && number < most) {
            return number;
        }
    } catch (const UsageError& error) {
        throw UsageError(std::string(option) + " \"" + text + "\": " + error.what());
    }
    throw UsageError(std::string(option) + " \"" + text + "\": it takes a number above 0 that a machine can have");
}

void checkTogether(const Wishes& wishes) {
    const auto refuse = [](bool wrong, const char* text) {
        if (wrong) {
            throw UsageError(text);
        }
    };
    refuse(!wishes.height.empty() && !wishes.framesPerSecond.empty(),
           "--height and --frames-per-second say the same: one of them is enough");
    refuse(!wishes.lineRate.empty() && !wishes.linePitch.empty(),
           "--line-rate and --line-pitch say the same: one of them is enough");
    refuse(wishes.encoder.empty() && (!wishes.speed.empty() || !wishes.linePitch.empty()),
           "--speed and --line-pitch need an --encoder");
    refuse(!wishes.encoder.empty() && wishes.speed.empty(), "--encoder needs the --speed of the belt");
}

/// How an encoder makes lines.
struct Division {
    const Filter* filter;
    int downscale;
    double pitch;  ///< µm
};

/// The division that comes nearest to the pitch; of equals the one with the least counts.
Division divisionFor(double pulse, double pitch) {
    Division best{Filters.data(), 1, pulse};
    for (const Filter& filter : Filters) {
        const double count = pulse / filter.counts;
        const int downscale = static_cast<int>(std::clamp(std::round(pitch / count), 1.0, double{MostDownscale}));
        // As good as equal is no reason for more counts.
        if (std::abs(count * downscale - pitch) < std::abs(best.pitch - pitch) * (1 - 1e-9)) {
            best = {&filter, downscale, count * downscale};
        }
    }
    return best;
}

/// The steps that the design makes times of, as the record of the parameter tells them, µs.
double stepOf(const Parameter& parameter) {
    const auto* range = parameter.record ? std::get_if<client::Range<double>>(&parameter.record->range) : nullptr;
    return range != nullptr && range->step > 0 ? range->step : 0.008;
}

double inSteps(const Parameter& parameter, double time) {
    const double step = stepOf(parameter);
    return std::max(std::round(time / step), 1.0) * step;
}

/// Rounded down to five digits.
std::string atMost(double number, const std::string& unit) {
    const double scale = number > 0 ? std::pow(10.0, 4 - std::floor(std::log10(number))) : 1;
    return "at most " + scaledInWords(std::floor(number * scale) / scale, unit);
}

class Planner {
public:
    Planner(Session& session, const Wishes& wishes)
        : applet_(session.applet()), board_(session.board()), wishes_(wishes) {}

    Plan plan() {
        checkTogether(wishes_);
        wish("FG_PIXELFORMAT", wishes_.pixelFormat);
        wish("FG_FORMAT", wishes_.format);
        wish("FG_XOFFSET", wishes_.xOffset);
        wish("FG_WIDTH", wishes_.width);
        wishForLines();
        wishForHeight();
        wishForExposure();
        if (applet_.readInt("FG_CAMERASIMULATOR_ENABLE") == FG_CAMERASIMULATOR) {
            wish("FG_CAMERASIMULATOR_ENABLE", "FG_CAMPORT");  // what is planned is a camera
        }
        carryOut();
        plan_.linesPerFrame = applet_.readUnsigned("FG_HEIGHT");
        plan_.frameRate = plan_.lineRate / static_cast<double>(plan_.linesPerFrame);
        boundFrameRate();
        boundExposure();
        boundDebouncing();
        boundCameraLink();
        boundPcie();
        boundMemory();
        return std::move(plan_);
    }

private:
    void wish(const char* name, const std::string& text) {
        if (!text.empty()) {
            wanted_.push_back(parseAssignment(applet_, name, text));
        }
    }

    void wishForLines() {
        if (!wishes_.encoder.empty()) {
            wishForEncoder();
        } else if (!wishes_.lineRate.empty()) {
            const double rate = positive("--line-rate", wishes_.lineRate, "Hz");
            const double period = inSteps(findParameter(applet_, "FG_LINEPERIODE"), Micro / rate);
            wish("FG_LINETRIGGERMODE", "GRABBER_CONTROLLED");
            wish("FG_LINEPERIODE", client::readable(period));
            plan_.lineRate = Micro / period;
        } else if (applet_.enumerator("FG_LINETRIGGERMODE").starts_with("GRABBER_CONTROLLED")) {
            plan_.lineRate = Micro / applet_.readDouble("FG_LINEPERIODE");
        } else {
            throw UsageError("the lines come from outside: --line-rate, or --encoder and --speed, tell how fast");
        }
    }

    void wishForEncoder() {
        const double pulse = positive("--encoder", wishes_.encoder, "um");
        const double speed = positive("--speed", wishes_.speed, "um/s");
        double pitch = pulse;
        if (!wishes_.linePitch.empty()) {
            pitch = positive("--line-pitch", wishes_.linePitch, "um");
        } else if (!wishes_.lineRate.empty()) {
            pitch = speed / positive("--line-rate", wishes_.lineRate, "Hz");
        }
        const double finest = pulse / Filters.back().counts;
        const double widest = pulse * MostDownscale;
        if (pitch < finest * (1 - 1e-9) || pitch > widest * (1 + 1e-9)) {
            throw RefusedError("a line every " + client::readable(pitch) +
                               " \u00B5m does not fit: with this encoder it is " + client::readable(finest) + " to " +
                               client::readable(widest) + " \u00B5m from line to line");
        }
        const Division division = divisionFor(pulse, pitch);
        wish("FG_LINETRIGGERMODE", "ASYNC_TRIGGER");
        wish("FG_LINETRIGGERINSRC", "TRGINSRC_GPI_0");
        wish("FG_SHAFTENCODERINSRC", "TRGINSRC_GPI_1");
        wish("FG_SHAFTENCODERON", "FG_ON");
        wish("FG_SHAFTENCODERMODE", division.filter->name);
        wish("FG_LINE_DOWNSCALE", std::to_string(division.downscale));
        plan_.linePitch = division.pitch;
        plan_.wantedPitch = pitch;
        pulseLevel_ = Micro * pulse / speed / 2;
        plan_.lineRate = speed / division.pitch;
        constexpr double near = 1e-3;
        if (std::abs(division.pitch / pitch - 1) > near) {
            plan_.notes.push_back("the lines come at " + scaledInWords(plan_.lineRate, "Hz") + " and not at " +
                                  scaledInWords(speed / pitch, "Hz") + ": the encoder divides to nothing nearer");
        }
    }

    void wishForHeight() {
        if (!wishes_.framesPerSecond.empty()) {
            const double rate = positive("--frames-per-second", wishes_.framesPerSecond, "Hz");
            constexpr double mostLines = 4e9;  // beyond any height
            wish("FG_HEIGHT", client::readable(std::clamp(std::round(plan_.lineRate / rate), 1.0, mostLines)));
            askedFrameRate_ = rate;
        } else if (!wishes_.height.empty()) {
            wish("FG_HEIGHT", client::readable(positive("--height", wishes_.height, "lines")));
        }
    }

    /// One that is longer than a line is told with all else that does not fit.
    void wishForExposure() {
        if (wishes_.exposure.empty()) {
            return;
        }
        const double exposure =
            inSteps(findParameter(applet_, "FG_LINEEXPOSURE"), positive("--exposure", wishes_.exposure, "us"));
        asked_ = exposure;
        if (exposure <= longestExposure() * (1 + 1e-12)) {
            wish("FG_LINEEXPOSURE", client::readable(exposure));
        }
    }

    double longestExposure() const { return Micro / plan_.lineRate; }

    /// Sets what can be set until nothing more can: one value may make room for another.
    void carryOut() {
        while (!wanted_.empty()) {
            std::vector<Assignment> refused;
            int code = 0;
            for (Assignment& assignment : wanted_) {
                if (const int answer = writeValue(applet_, assignment.parameter, assignment.value); answer != 0) {
                    code = refused.empty() ? answer : code;
                    refused.push_back(std::move(assignment));
                } else {
                    plan_.settings.push_back(std::move(assignment));
                }
            }
            if (refused.size() == wanted_.size()) {
                const Assignment& first = refused.front();
                throw RefusedError(first.parameter.name + "=" + first.text + " " +
                                   inWords(explainSet(applet_, first.parameter, first.value, code, &board_)));
            }
            wanted_ = std::move(refused);
        }
    }

    double linePixels() const { return applet_.get<double>("FG_XOFFSET") + applet_.get<double>("FG_WIDTH"); }
    /// Of a pixel on its way from the camera.
    double pixelBits() const {
        return Components * static_cast<double>(board_.integer("Device1_Process0_Buffer_0_PixelFormat"));
    }

    /// A rate whose period, taken in whole steps, is still no faster.
    std::string atMostRate(double rate) const {
        const double step = stepOf(findParameter(applet_, "FG_LINEPERIODE"));
        return atMost(Micro / (std::ceil(Micro / rate / step * (1 - 1e-12)) * step), "Hz");
    }

    void boundFrameRate() {
        if (askedFrameRate_) {
            plan_.bounds.push_back({"Frame rate", "Hz", *askedFrameRate_, plan_.lineRate,
                                    atMost(plan_.lineRate, "Hz") + ", a frame of one line each"});
        }
    }

    void boundExposure() {
        const double exposure = asked_.value_or(applet_.readDouble("FG_LINEEXPOSURE"));
        plan_.bounds.push_back(
            {"Exposure", "\u00B5s", exposure, longestExposure(),
             "an exposure of " + atMost(longestExposure(), "\u00B5s") + ", or " + atMostRate(Micro / exposure)});
    }

    void boundDebouncing() {
        if (pulseLevel_) {
            plan_.bounds.push_back({"Debouncing", "\u00B5s", applet_.readDouble("FG_LINETRIGGERDEBOUNCING"),
                                    *pulseLevel_, "an FG_LINETRIGGERDEBOUNCING of " + atMost(*pulseLevel_, "\u00B5s")});
        }
    }

    void boundCameraLink() {
        const double linePerSecond = pixelBits() * plan_.lineRate;
        const double pixels = std::floor(CameraLink / linePerSecond / 4) * 4;
        const double bits = pixelBits() * linePixels();
        plan_.bounds.push_back({"Camera link", "bit/s", linePerSecond * linePixels(), CameraLink,
                                atMostRate(CameraLink / bits) +
                                    (pixels > 0 ? ", or " + client::readable(pixels) + " pixels a line" : "")});
    }

    void boundPcie() {
        const double lanes = applet_.readUnsigned("FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH");
        const bool generation2 = applet_.readInt("FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE") == FG_YES &&
                                 applet_.readInt("FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE") == FG_YES;
        const double link = std::min(lanes * (generation2 ? LaneGeneration2 : LaneGeneration1),
                                     applet_.readDouble("FG_SYSTEMMONITOR_CURRENT_LINK_SPEED") * Gibi);
        rateFormats(link);
        const auto chosen = std::ranges::find(plan_.formats, true, &FormatRate::chosen);
        if (chosen == plan_.formats.end()) {
            return;
        }
        std::string others;
        for (const FormatRate& format : plan_.formats) {
            others += format.fits ? (others.empty() ? ", or " : ", ") + format.name : "";
        }
        plan_.bounds.push_back({"PCIe link", "B/s", chosen->bytesPerSecond, link,
                                atMostRate(plan_.lineRate * link / chosen->bytesPerSecond) + others});
    }

    void rateFormats(double link) {
        const Parameter format = findParameter(applet_, "FG_FORMAT");
        const int chosen = applet_.readInt("FG_FORMAT");
        for (const client::EnumEntry& entry : format.record.value().entries) {
            if (applet_.setInt("FG_FORMAT", entry.value) == 0) {
                const std::size_t bytes = client::frameSize(applet_);
                const double rate = static_cast<double>(bytes) * plan_.frameRate;
                plan_.formats.push_back({entry.name, bytes, rate, rate <= link, entry.value == chosen});
            }
        }
        applet_.set("FG_FORMAT", chosen);
    }

    void boundMemory() {
        const std::string memory = "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_Ram";
        const auto word = static_cast<double>(board_.integer(memory + "DataWidth"));
        const double words = std::exp2(static_cast<double>(board_.integer(memory + "AddressWidth")) - 1);
        const double lines = std::max(std::floor(3 * word * words / pixelBits() / linePixels()) - (word - 1), 0.0);
        plan_.bounds.push_back({"Buffer memory", "lines", static_cast<double>(plan_.linesPerFrame), lines,
                                "at most " + client::readable(lines) + " lines"});
    }

    client::Applet& applet_;
    client::SoftBoard& board_;
    const Wishes& wishes_;
    std::vector<Assignment> wanted_;
    std::optional<double> askedFrameRate_;  ///< Hz
    std::optional<double> asked_;           ///< exposure, µs
    std::optional<double> pulseLevel_;      ///< how long a track of the encoder stays high or low, µs
    Plan plan_{};
};

}  // namespace

bool Plan::fits() const {
    return std::ranges::all_of(bounds, &Bound::fits);
}

Plan makePlan(Session& session, const Wishes& wishes) {
    return Planner(session, wishes).plan();
}

std::string scaledInWords(double number, const std::string& unit) {
    struct Prefix {
        double factor;
        const char* letter;
    };
    constexpr std::array prefixes{Prefix{1e-6, "\u00B5"}, Prefix{1e-3, "m"}, Prefix{1, ""},
                                  Prefix{1e3, "k"},       Prefix{1e6, "M"},  Prefix{1e9, "G"}};
    const auto takes = [&](const Prefix& prefix) {
        const bool isTime = unit == "s";
        const bool isMuch = unit == "Hz" || unit == "bit/s" || unit.starts_with('B');
        return prefix.factor == 1 || (isTime && prefix.factor < 1) || (isMuch && prefix.factor > 1);
    };
    std::optional<Prefix> best;
    for (const Prefix& prefix : prefixes) {
        if (takes(prefix) && (!best || std::abs(number) >= prefix.factor)) {
            best = prefix;
        }
    }
    // The one that changes nothing is always taken.
    const double scaled = number / best.value().factor;
    std::ostringstream text;
    text.precision(5);
    text << scaled;
    // A count of many has no exponent.
    return (std::abs(scaled) >= 1e4 ? client::readable(scaled) : text.str()) + " " + best->letter + unit;
}

}  // namespace quillon::cli
