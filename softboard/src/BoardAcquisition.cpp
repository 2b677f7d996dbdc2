/// @file
/// The acquisition side of a board: time, the frames that it brings, drawing them, and waiting for them.

#include <algorithm>
#include <chrono>
#include <iterator>
#include <new>
#include <utility>

#include "softboard/src/Board.h"
#include "softboard/src/Process.h"

namespace softboard {

// ---- Starting and stopping ----

int Board::startAcquisitionLocked(unsigned dma, std::int64_t count, const softboard_memory* memory) {
    auto buffers = memory != nullptr ? Process::instance().memory(memory) : nullptr;
    const bool known = memory == nullptr || (buffers != nullptr && buffers->board() == this);
    if (dma != 0 || count < -1 || !known) {
        return noteErrorLocked(SOFTBOARD_E_ARGUMENT);
    }
    if (acquisition_.running() || (buffers != nullptr && !buffers->beginAcquisition())) {
        return noteErrorLocked(SOFTBOARD_E_ACQUISITION);
    }
    followDayLocked();
    signals_.restartPath();
    acquisition_.start(count, std::move(buffers), signals_.now());
    if (acquisition_.running() && clock_.followsDay(true) && !followsDay_) {
        startThreadLocked();
    }
    return SOFTBOARD_OK;
}

int Board::stopAcquisitionLocked(unsigned dma) {
    if (dma != 0) {
        return noteErrorLocked(SOFTBOARD_E_ARGUMENT);
    }
    if (!acquisition_.running()) {
        return acquisition_.takeEndedByItself() ? int{SOFTBOARD_OK} : noteErrorLocked(SOFTBOARD_E_ACQUISITION);
    }
    acquisition_.stop(SOFTBOARD_E_ACQUISITION, signals_.now());
    if (!clock_.followsDay(false)) {
        endThreadLocked();
    }
    changed_.notify_all();
    return SOFTBOARD_OK;
}

bool Board::acquiringLocked() const {
    return acquisition_.running();
}

std::int64_t Board::picturesLocked() const {
    return acquisition_.pictures();
}

void Board::settleAcquisition() {
    std::vector<std::thread> ended;
    {
        Lock lock(recorder_.mutex);
        if (!acquisition_.running()) {
            waitForDrawer(lock);
        }
        const auto others = std::partition(threads_.begin(), threads_.end(), [&](const std::thread& thread) {
            return (followsDay_ && thread.get_id() == dayThread_) || thread.get_id() == std::this_thread::get_id();
        });
        std::move(others, threads_.end(), std::back_inserter(ended));
        threads_.erase(others, threads_.end());
    }
    for (std::thread& thread : ended) {
        thread.join();
    }
}

// ---- Time ----

int Board::setClock(int mode, double speed) {
    constexpr double Fastest = 1000.0;
    if (mode < SOFTBOARD_CLOCK_STEPPED || mode > SOFTBOARD_CLOCK_AUTO || !(speed > 0.0 && speed <= Fastest)) {
        return SOFTBOARD_E_ARGUMENT;
    }
    {
        const std::lock_guard guard(recorder_.mutex);
        followDayLocked();
        clock_.set(mode, speed);
        const bool follows = clock_.followsDay(acquisition_.running());
        if (follows && !followsDay_) {
            startThreadLocked();
        } else if (!follows) {
            endThreadLocked();
        }
        changed_.notify_all();
    }
    settleAcquisition();
    return SOFTBOARD_OK;
}

void Board::startThreadLocked() {
    clock_.begin();
    followsDay_ = true;
    const std::uint64_t number = ++threadNumber_;
    dayThread_ = threads_.emplace_back([this, number] { followDay(number); }).get_id();
}

void Board::endThreadLocked() {
    followsDay_ = false;
    ++threadNumber_;
    changed_.notify_all();
}

/// The board's thread. It looks every millisecond at most: what is due until then comes at once, but with its own tick.
void Board::followDay(std::uint64_t threadNumber) {
    constexpr std::chrono::milliseconds Shortest{1};
    constexpr std::chrono::milliseconds Longest{100};
    Lock lock(recorder_.mutex);
    while (threadNumber_ == threadNumber) {
        followDayLocked();
        draw(lock);
        if (threadNumber_ != threadNumber) {
            break;
        }
        if (!clock_.followsDay(acquisition_.running())) {
            endThreadLocked();
            break;
        }
        BoardClock::Day::duration pause = Longest;
        if (signals_.next() != Never) {
            // Within what a duration can hold, however fast the clock is.
            const Tick ticks = std::min(signals_.next() - signals_.now(), ticksInSeconds(1000));
            pause = std::clamp<BoardClock::Day::duration>(clock_.duration(ticks), Shortest, Longest);
        }
        changed_.wait_for(lock, pause);
    }
}

void Board::followDayLocked() {
    if (!followsDay_ || !description_) {
        return;
    }
    // Where the computer cannot follow, the board's time lags behind rather than taking all there is.
    constexpr std::chrono::milliseconds MostAtOnce{2};
    constexpr Tick Slice = ticksInSeconds(1) / 1000;
    const auto began = BoardClock::Day::now();
    const Tick until = signals_.ahead(clock_.passed());
    while (signals_.now() < until && BoardClock::Day::now() - began < MostAtOnce) {
        signals_.run(std::min(until, signals_.now() + Slice));
    }
    signals_.show();
    timePassedLocked();
}

void Board::timePassedLocked() {
    acquisition_.checkTimeout(signals_.now());
    changed_.notify_all();
}

void Board::advanceSignals(double microseconds) {
    Lock lock(recorder_.mutex);
    if (!description_) {
        return;
    }
    followDayLocked();
    runLocked(lock, signals_.ahead(microseconds));
    shownLocked(lock);
}

int Board::advanceToEvent(std::string_view event, double microseconds, bool& raised) {
    Lock lock(recorder_.mutex);
    if (!description_) {
        return SOFTBOARD_E_NO_DESIGN;
    }
    followDayLocked();
    std::uint64_t before = 0;
    if (const int code = signals_.eventCount(event, before); code != SOFTBOARD_OK) {
        return code;
    }
    std::uint64_t count = before;
    const Tick until = signals_.ahead(microseconds);
    do {
        runLocked(lock, std::min(until, signals_.next()));
        signals_.eventCount(event, count);
    } while (count == before && signals_.now() < until);
    raised = count != before;
    shownLocked(lock);
    return SOFTBOARD_OK;
}

/// Frames are drawn as they come, so that none waits longer than it would in many short steps.
void Board::runLocked(Lock& lock, Tick until) {
    while (!signals_.run(until)) {
        draw(lock);
    }
}

void Board::shownLocked(Lock& lock) {
    signals_.show();
    timePassedLocked();
    draw(lock);
    waitForDrawer(lock);
}

double Board::signalTime() {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    return signals_.time();
}

// ---- Frames ----

int Board::deliverPictures(std::int64_t count) {
    const std::lock_guard guard(recorder_.mutex);
    if (acquisition_.running() && acquisition_.memory() != nullptr) {
        return SOFTBOARD_E_ACQUISITION;
    }
    followDayLocked();
    acquisition_.count(count, signals_.now());
    changed_.notify_all();
    return SOFTBOARD_OK;
}

void Board::setRedFirst(bool redFirst) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    signals_.pixelSettings().setRedFirst(redFirst);
}

void Board::drawWaitingFrames() {
    Lock lock(recorder_.mutex);
    followDayLocked();
    acquisition_.followHost(signals_.now());
    draw(lock);
    changed_.notify_all();
}

void Board::draw(Lock& lock) {
    if (drawer_ != std::thread::id()) {
        return;
    }
    while (acquisition_.canDraw()) {
        const WaitingFrame waiting = acquisition_.nextArrived();
        const auto memory = acquisition_.memory();
        const std::span<std::byte> buffer = memory->nextBuffer();
        drawer_ = std::this_thread::get_id();
        lock.unlock();
        std::optional<DrawnFrame> drawn;
        try {
            drawn = drawFrame(waiting, buffer);
            memory->deliver(drawn->about);
        } catch (const std::bad_alloc&) {
            drawn.reset();
        }
        lock.lock();
        drawer_ = {};
        if (drawn) {
            if (drawn->last) {
                signals_.debugPoints().passed(*drawn->last);
            }
            acquisition_.drawn(waiting, drawn->about.bytes, signals_.now());
        } else {
            acquisition_.stop(SOFTBOARD_E_INTERNAL, signals_.now());
        }
        changed_.notify_all();
    }
}

namespace {

/// Asks for each line the scene that stood in front of the camera when the line was taken.
class SceneOfEachLine final : public pixels::Scene {
public:
    explicit SceneOfEachLine(const pixels::SettingsOfVersion& settingsOf) : settingsOf_(settingsOf) {}

    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override {
        if (settings_ == nullptr || settings_->version != line.settings) {
            settings_ = settingsOf_(line.settings);
        }
        return settings_->scene->take(line, pixels, bits, memory);
    }

private:
    const pixels::SettingsOfVersion& settingsOf_;
    std::shared_ptr<const pixels::Settings> settings_;
};

}  // namespace

Board::DrawnFrame Board::drawFrame(const WaitingFrame& waiting, std::span<std::byte> buffer) {
    const AssembledFrame& frame = waiting.frame;
    const pixels::SettingsOfVersion settingsOf = [&](std::uint32_t version) -> std::shared_ptr<const pixels::Settings> {
        const auto found = std::lower_bound(frame.settings.begin(), frame.settings.end(), version,
                                            [](const std::shared_ptr<const pixels::Settings>& it,
                                               std::uint32_t wanted) { return it->version < wanted; });
        return found != frame.settings.end() && (*found)->version == version ? *found : nullptr;
    };
    SceneOfEachLine scene(settingsOf);
    const pixels::Drawn drawn = renderer_.draw(frame.lines, settingsOf, scene, buffer);
    // Lines without a format have no bytes; a frame of nothing else is not taken.
    const pixels::Settings& first =
        **std::find_if(frame.settings.begin(), frame.settings.end(),
                       [](const auto& settings) { return pixels::lineBytes(*settings) != 0; });
    const bool mixed = std::any_of(frame.settings.begin(), frame.settings.end(), [&](const auto& settings) {
        return settings->xLength != first.xLength || settings->formatBits != first.formatBits ||
               settings->redFirst != first.redFirst;
    });
    softboard_frame about{};
    about.image = waiting.image;
    about.first_tick = static_cast<std::uint64_t>(frame.firstTick);
    about.last_tick = static_cast<std::uint64_t>(frame.lastTick);
    about.bytes = drawn.bytes;
    about.lost_before = waiting.lostBefore;
    about.width = first.xLength;
    about.lines = static_cast<std::uint32_t>(drawn.lines);
    about.bits = first.formatBits;
    about.flags = frame.flags | (drawn.truncated ? unsigned{SOFTBOARD_FRAME_TRUNCATED} : 0U) |
                  (first.redFirst ? unsigned{SOFTBOARD_FRAME_RED_FIRST} : 0U) |
                  (mixed ? unsigned{SOFTBOARD_FRAME_MIXED} : 0U);
    about.settings = first.version;
    // The monitor's pixel is of the settings that the frame ends with, whichever end that is.
    const bool reversed = first.yMirror;
    const std::size_t lastLine = drawn.lines == 0 ? 0 : reversed ? frame.lines.size() - drawn.lines : drawn.lines - 1;
    const auto last = settingsOf(frame.lines[lastLine].settings);
    return {about, last != nullptr ? pixels::lastPixel(*last, drawn, buffer) : std::nullopt};
}

void Board::waitForDrawer(Lock& lock) {
    changed_.wait(lock, [&] { return drawer_ == std::thread::id() || drawer_ == std::this_thread::get_id(); });
}

// ---- Waiting and asking ----

/// What a wait for picture `number` answers now; nothing if there is still something to wait for.
std::optional<std::int64_t> Board::waitResultLocked(std::int64_t number) const {
    if (acquisition_.pictures() >= number) {
        return acquisition_.pictures();
    }
    if (!acquisition_.running()) {
        return acquisition_.endedWith();
    }
    if (acquisition_.wanted() >= 0 && number > acquisition_.wanted()) {
        return SOFTBOARD_E_ACQUISITION;
    }
    return std::nullopt;
}

/// Waits for the board's thread, or for another thread that moves the time.
std::int64_t Board::waitInDay(Lock& lock, std::int64_t number, unsigned seconds) {
    const auto deadline = BoardClock::Day::now() + std::chrono::seconds(seconds);
    for (;;) {
        if (const auto result = waitResultLocked(number)) {
            return *result;
        }
        if (changed_.wait_until(lock, deadline) == std::cv_status::timeout) {
            followDayLocked();
            return waitResultLocked(number).value_or(SOFTBOARD_E_TIMEOUT);
        }
    }
}

/// Drives the time itself, from frame to frame; `seconds` are the board's. Where time cannot go on, because no buffer
/// is free or nothing is due, another thread has to do something within `seconds` of the day.
std::int64_t Board::waitFree(Lock& lock, std::int64_t number, unsigned seconds) {
    const Tick last = signals_.now() + ticksInSeconds(seconds);
    const auto deadline = BoardClock::Day::now() + std::chrono::seconds(seconds);
    constexpr Tick Slice = ticksInSeconds(1) / 10;
    for (;;) {
        draw(lock);
        if (const auto result = waitResultLocked(number)) {
            return *result;
        }
        const bool standsStill =
            drawer_ != std::thread::id() || acquisition_.waitsForHost() || signals_.next() == Never;
        if (standsStill) {
            if (changed_.wait_until(lock, deadline) == std::cv_status::timeout) {
                return waitResultLocked(number).value_or(SOFTBOARD_E_TIMEOUT);
            }
            continue;
        }
        if (signals_.now() >= last) {
            return SOFTBOARD_E_TIMEOUT;
        }
        if (signals_.run(std::min(last, signals_.now() + Slice))) {
            // No frame for long: others have their turn with the board.
            changed_.wait_for(lock, std::chrono::microseconds(1));
        }
        signals_.show();
        timePassedLocked();
    }
}

std::int64_t Board::waitForPicture(std::int64_t number, unsigned dma, unsigned seconds) {
    countCall(Function::Fg_getLastPicNumberBlockingEx);
    Lock lock(recorder_.mutex);
    const auto fault = recorder_.faults.empty()
                           ? std::nullopt
                           : recorder_.faults.due(SOFTBOARD_CALL, nameOf(Function::Fg_getLastPicNumberBlockingEx));
    std::int64_t result = 0;
    if (fault) {
        result = *fault;
    } else if (dma != 0) {
        result = noteErrorLocked<std::int64_t>(SOFTBOARD_E_ARGUMENT);
    } else {
        followDayLocked();
        result = noteErrorLocked(clock_.isFree() ? waitFree(lock, number, seconds) : waitInDay(lock, number, seconds));
    }
    if (recorder_.transcript.recording()) {
        recorder_.transcript.add(SOFTBOARD_CALL, 0, dma, 0, result, nameOf(Function::Fg_getLastPicNumberBlockingEx),
                                 listed(number, dma, seconds));
    }
    return result;
}

std::int64_t Board::acquisitionStatusLocked(unsigned param, std::int64_t data) const {
    const auto ofFrame = [&](auto softboard_frame::*member) -> std::int64_t {
        const auto memory = acquisition_.lastMemory();
        const auto frame = memory != nullptr ? memory->description(data) : std::nullopt;
        return frame ? static_cast<std::int64_t>((*frame).*member) : std::int64_t{SOFTBOARD_E_RANGE};
    };
    switch (param) {
        case 0: return acquisition_.running() ? 1 : 0;
        case 1: return acquisition_.pictures();
        case 2: return acquisition_.wanted();
        case SOFTBOARD_STATUS_FRAME_BYTES: return ofFrame(&softboard_frame::bytes);
        case SOFTBOARD_STATUS_FRAME_BUFFER: return ofFrame(&softboard_frame::buffer);
        case SOFTBOARD_STATUS_FRAME_FIRST_TICK: return ofFrame(&softboard_frame::first_tick);
        case SOFTBOARD_STATUS_FRAME_LINES: return ofFrame(&softboard_frame::lines);
        case SOFTBOARD_STATUS_FRAME_FLAGS: return ofFrame(&softboard_frame::flags);
        case SOFTBOARD_STATUS_LOST_FRAMES: return static_cast<std::int64_t>(acquisition_.lostFrames());
        case SOFTBOARD_STATUS_LOST_LINES: return static_cast<std::int64_t>(acquisition_.lostLines());
        case SOFTBOARD_STATUS_BYTES_WAITING:
            return static_cast<std::int64_t>(acquisition_.bytesWaiting(signals_.now()));
        case SOFTBOARD_STATUS_FAULTS: return static_cast<std::int64_t>(acquisition_.faults());
        default: return SOFTBOARD_E_ARGUMENT;
    }
}

}  // namespace softboard
