/// @file
/// The acquisition side of a board: when pictures arrive, and waiting for them.

#include <chrono>
#include <limits>

#include "softboard/src/Board.h"
#include "softboard/src/SdkParameters.h"

namespace softboard {

std::optional<double> Board::valueLocked(std::string_view name) const {
    const Parameter* parameter = constFindLocked(name);
    if (parameter == nullptr) {
        return std::nullopt;
    }
    double real = 0.0;
    if (parameter->real(real) == SOFTBOARD_OK) {
        return real;
    }
    std::int64_t integer = 0;
    if (parameter->integer(integer) == SOFTBOARD_OK) {
        return static_cast<double>(integer);
    }
    return std::nullopt;
}

/// Seconds from one picture to the next: the simulator's if it feeds the image path, otherwise line period times height
/// while a camera sends pixels. Nothing if no pictures come or the design has other parameters.
std::optional<double> Board::picturePeriodLocked() const {
    constexpr double ClockPeriod = 8e-9;
    const auto simulated = valueLocked("Device1_Process0_CameraSimulator_Enable_SelectSource");
    if (simulated && *simulated == 1.0) {
        const auto lines = valueLocked("Device1_Process0_CameraSimulator_Size_ImageHeight");
        const auto cyclesPerLine =
            valueLocked("Device1_Process0_CameraSimulator_PixelFrequency_SequenceLength_ImageWidth");
        const auto active = valueLocked("Device1_Process0_CameraSimulator_PixelFrequency_ActivePixel_Number");
        const auto blocksPerLine = valueLocked("Device1_Process0_CameraSimulator_Size_ImageWidth");
        const auto byLine = valueLocked("Device1_Process0_CameraSimulator_ControlPixelClock_Mode");
        if (!lines || !cyclesPerLine || !active || !blocksPerLine || !byLine) {
            return std::nullopt;
        }
        // With the pixel clock in control, `active` of `cyclesPerLine` cycles move a block of 32 pixels each.
        const double lineCycles = *byLine == 1.0 ? *cyclesPerLine : *blocksPerLine * *cyclesPerLine / *active;
        return *lines * lineCycles * ClockPeriod;
    }
    const auto camera = valueLocked("FG_CAMSTATUS_EXTENDED");
    const auto linePeriod = valueLocked("Device1_Process0_Trigger_Trigger_ExsyncPeriod");
    const auto height = valueLocked("Device1_Process0_ImageHeight_ImageHeight");
    if (!camera || (static_cast<std::int64_t>(*camera) & 1) == 0 || !linePeriod || !height) {
        return std::nullopt;
    }
    return *linePeriod * 1e-6 * *height;
}

Acquisition& Board::acquisitionLocked() {
    acquisition_.advance(Acquisition::Clock::now(), picturePeriodLocked());
    return acquisition_;
}

int Board::startAcquisitionLocked(unsigned dma, std::int64_t count) {
    if (dma != 0 || count < -1) {
        return noteErrorLocked(SOFTBOARD_E_ARGUMENT);
    }
    if (acquisition_.running()) {
        return noteErrorLocked(SOFTBOARD_E_ACQUISITION);
    }
    acquisition_.start(count, Acquisition::Clock::now());
    sdkById_.at(SdkDmaStatus)->setInteger(1);
    return SOFTBOARD_OK;
}

int Board::stopAcquisitionLocked(unsigned dma) {
    if (dma != 0) {
        return noteErrorLocked(SOFTBOARD_E_ARGUMENT);
    }
    if (!acquisition_.running()) {
        return noteErrorLocked(SOFTBOARD_E_ACQUISITION);
    }
    acquisitionLocked().stop();
    sdkById_.at(SdkDmaStatus)->setInteger(0);
    pictureArrived_.notify_all();
    return SOFTBOARD_OK;
}

void Board::deliverPictures(std::int64_t count) {
    const std::lock_guard guard(recorder_.mutex);
    acquisitionLocked().deliver(count);
    pictureArrived_.notify_all();
}

std::int64_t Board::waitForPicture(std::int64_t number, unsigned dma, unsigned seconds) {
    countCall(Function::Fg_getLastPicNumberBlockingEx);
    std::unique_lock lock(recorder_.mutex);
    const auto fault = recorder_.faults.empty()
                           ? std::nullopt
                           : recorder_.faults.due(SOFTBOARD_CALL, nameOf(Function::Fg_getLastPicNumberBlockingEx));
    std::int64_t result = 0;
    const auto deadline = Acquisition::Clock::now() + std::chrono::seconds(seconds);
    if (fault) {
        result = *fault;
    } else if (dma != 0) {
        result = noteErrorLocked<std::int64_t>(SOFTBOARD_E_ARGUMENT);
    } else {
        while (acquisitionLocked().pictures() < number && acquisition_.running() &&
               Acquisition::Clock::now() < deadline) {
            // Sleeps until the picture is due at today's rate, or somebody changes something.
            const auto period = picturePeriodLocked();
            const double missing = static_cast<double>(number - acquisition_.pictures());
            auto until = deadline;
            if (period && *period * missing < static_cast<double>(seconds)) {
                until = std::min(deadline,
                                 Acquisition::Clock::now() + std::chrono::duration_cast<Acquisition::Clock::duration>(
                                                                 std::chrono::duration<double>(*period * missing)));
            }
            pictureArrived_.wait_until(lock, until);
        }
        const bool arrived = acquisition_.pictures() >= number;
        const int missed = acquisition_.running() ? SOFTBOARD_E_TIMEOUT : SOFTBOARD_E_ACQUISITION;
        result = arrived ? acquisition_.pictures() : noteErrorLocked<std::int64_t>(missed);
    }
    if (recorder_.transcript.recording()) {
        recorder_.transcript.add(SOFTBOARD_CALL, 0, dma, 0, result, nameOf(Function::Fg_getLastPicNumberBlockingEx),
                                 listed(number, dma, seconds));
    }
    return result;
}

}  // namespace softboard
