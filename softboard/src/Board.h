/// @file
/// A board: the SDK's parameters, and the design that it runs with the design's parameters and registers.
#pragma once

#include <array>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "softboard/pixels/LastPixel.h"
#include "softboard/pixels/Renderer.h"
#include "softboard/pixels/Scene.h"
#include "softboard/src/Acquisition.h"
#include "softboard/src/BoardClock.h"
#include "softboard/src/LoadedDesign.h"
#include "softboard/src/Parameter.h"
#include "softboard/src/Recorder.h"
#include "softboard/src/Signals.h"

namespace softboard {

/// All operations lock unless they say otherwise.
class SOFTBOARD_API Board {
public:
    Board();
    ~Board();
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;

    Recorder& recorder() { return recorder_; }

    // Accesses: counted, subject to planned faults, written down. `type` OwnType takes the parameter's own.
    static constexpr int OwnType = -1;
    int readParameter(Function function, int id, void* value, unsigned dma, int type);
    int writeParameter(Function function, int id, const void* value, unsigned dma, int type);
    int readRegister(int number, std::uint64_t* value);
    int writeRegister(int number, std::uint64_t value);

    // Inside recorder().call, which holds the lock.
    /// Puts a design on the board. A board that runs the same description keeps its state if `keepState`.
    void configureLocked(const fpga_design& design, bool keepState);
    int idByNameLocked(std::string_view name) const;
    int releaseTextLocked(char* text);
    /// All parameters there are, the design's before the SDK's.
    std::vector<const Parameter*> parametersLocked() const;
    Parameter* findLocked(std::string_view name);
    /// To be called after every change of a parameter's value, whoever made it.
    void changedLocked(const Parameter& parameter);
    /// `memory` is null, or one of this board that no acquisition fills.
    int startAcquisitionLocked(unsigned dma, std::int64_t count, const softboard_memory* memory);
    int stopAcquisitionLocked(unsigned dma);
    bool acquiringLocked() const;
    std::int64_t picturesLocked() const;
    /// One of the numbers of softboard_status, or 0 to 2.
    std::int64_t acquisitionStatusLocked(unsigned param, std::int64_t data) const;
    std::int32_t designTypeLocked() const { return description_ ? description_->type : 0; }

    /// Waits, at most `seconds`, until picture `number` is there, and gives the number of the last one.
    std::int64_t waitForPicture(std::int64_t number, unsigned dma, unsigned seconds);
    int deliverPictures(std::int64_t count);
    /// To be called without the lock when an acquisition has been started or stopped: waits for what still draws, and
    /// for threads that have nothing to do any more.
    void settleAcquisition();
    /// A buffer has become free: goes on with drawing, if nobody does.
    void drawWaitingFrames();
    int setClock(int mode, double speed);
    void setRedFirst(bool redFirst);

    // What stands in front of the camera, and what goes wrong behind it; see scene.h and faults.h.
    void setScene(std::shared_ptr<pixels::Scene> scene);
    void setLight(const scenes::Light& light);
    scenes::Light light();
    Message setBelt(unsigned a, unsigned b, double countsPerMm, std::vector<softboard_move> moves);
    Message setBarrier(unsigned input, double first, double pitch, double length);
    /// In millimetres.
    double beltPosition();
    void planLineFault(std::uint64_t nth, std::size_t what);
    void planFrameFault(std::uint64_t nth, const FrameFault& fault);
    Message planOutage(int what, double after, double duration);
    void setCamera(bool connected);
    void setLink(bool up);
    void setDmaRate(double bytesPerSecond);
    void clearPathFaults();
    /// Remembers why a call was refused, and gives its code back.
    int note(Message message);
    std::string lastMessage();

    /// Sets what lastErrorLocked answers; with 0 it answers the code of the last failed call.
    void pinError(int number);

    /// The last error: what a test has set, or else the code of the last failed call.
    int lastErrorLocked() const;
    /// Remembers `code` if it is negative, and gives it back.
    template <class Number>
    Number noteErrorLocked(Number code) {
        if (code < 0) {
            lastError_ = static_cast<int>(code);
        }
        return code;
    }

    // The hardware's side. Without a design, a change of an unknown name is kept until a design comes that has it.
    int change(const std::string& name, std::function<int(Parameter&)> change);
    int inspect(const std::string& name, const std::function<int(const Parameter&)>& inspect);
    int hide(const std::string& name);
    int setRegister(const std::string& name, std::uint64_t value);
    int registerValue(const std::string& name, std::uint64_t& value);
    int registerDirection(const std::string& name, int& direction);
    int setInput(unsigned input, bool level);
    int outputLevel(unsigned output, bool& level);
    int signalLevel(unsigned select, bool& level);
    int advanceToEvent(std::string_view event, double microseconds, bool& raised);
    int eventCount(std::string_view event, std::uint64_t& count);
    int recordSignals(std::size_t most);
    /// Runs `look` with the recording.
    int inspectRecording(const std::function<int(const SignalRecording&)>& look);
    void advanceSignals(double microseconds);
    double signalTime();

private:
    Parameter* findLocked(int id);
    const Parameter* constFindLocked(std::string_view name) const;
    std::optional<std::int64_t> dueFaultLocked(softboard_direction direction, Function function, std::string_view name);
    int readTextLocked(const Parameter& parameter, void* value);
    int checkRegisterLocked(int number, bool write) const;
    /// Frames, lines, image triggers, bytes to the host, ticks.
    using Counts = std::array<std::uint64_t, 5>;
    Counts countsLocked() const;
    void bindCountersLocked();
    void showCountersLocked();

    // Time, and the frames that it brings.
    using Lock = std::unique_lock<std::mutex>;
    /// Brings the board's time up to the time of day, if that moves it.
    void followDayLocked();
    /// What time has brought is known to those who wait.
    void timePassedLocked();
    void startThreadLocked();
    void endThreadLocked();
    void followDay(std::uint64_t threadNumber);
    void runLocked(Lock& lock, Tick until);
    /// To be called when the time has been moved on: shows what goes by it, and draws what waits.
    void shownLocked(Lock& lock);
    /// Draws all frames that wait and have a buffer, unless another thread does. The lock is free meanwhile.
    void draw(Lock& lock);
    struct DrawnFrame {
        softboard_frame about;
        std::optional<pixels::LastPixel> last;
    };
    DrawnFrame drawFrame(const WaitingFrame& waiting, std::span<std::byte> buffer);
    /// Waits until no other thread draws.
    void waitForDrawer(Lock& lock);
    std::optional<std::int64_t> waitResultLocked(std::int64_t number) const;
    std::int64_t waitInDay(Lock& lock, std::int64_t number, unsigned seconds);
    std::int64_t waitFree(Lock& lock, std::int64_t number, unsigned seconds);

    Recorder recorder_;
    std::vector<Parameter> sdk_;
    std::unordered_map<int, Parameter*> sdkById_;
    std::unordered_map<std::string_view, Parameter*> sdkByName_;
    std::shared_ptr<const DesignDescription> description_;
    std::vector<std::shared_ptr<const DesignDescription>> earlier_;  ///< transcript entries point to their names
    std::vector<Parameter> design_;
    std::vector<bool> hidden_;
    std::vector<std::uint64_t> registers_;
    std::vector<std::pair<std::string, std::function<int(Parameter&)>>> pendingChanges_;
    std::vector<std::string> pendingHidden_;
    std::unordered_set<char*> texts_;  ///< handed out by reads of type 22
    Acquisition acquisition_;
    Signals signals_;
    /// Registers that count by themselves: where they stand, and how much of their count they have shown.
    struct CounterRegister {
        std::optional<std::size_t> position;
        std::uint64_t shown = 0;
    };
    std::array<CounterRegister, std::tuple_size_v<Counts>> counters_;
    BoardClock clock_;
    bool followsDay_ = false;           ///< the thread of that number moves the time
    std::uint64_t threadNumber_ = 0;    ///< of the thread that may move it
    std::thread::id dayThread_;         ///< it
    std::vector<std::thread> threads_;  ///< it, and those that end
    std::thread::id drawer_;            ///< who draws a frame; nobody's otherwise
    pixels::Renderer renderer_;         ///< the drawer's
    std::condition_variable changed_;   ///< frames have come, or something else that somebody may wait for
    std::string lastMessage_;
    int lastError_ = 0;
    int pinnedError_ = 0;
};

}  // namespace softboard

struct IXdevice final : softboard::Board {};
