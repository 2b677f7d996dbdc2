/// @file
/// A board: the SDK's parameters, and the design that it runs with the design's parameters and registers.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "softboard/src/Acquisition.h"
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
    int startAcquisitionLocked(unsigned dma, std::int64_t count);
    int stopAcquisitionLocked(unsigned dma);
    /// Brings the picture count up to now.
    Acquisition& acquisitionLocked();
    std::int32_t designTypeLocked() const { return description_ ? description_->type : 0; }

    /// Waits, at most `seconds`, until picture `number` is there, and gives the number of the last one.
    std::int64_t waitForPicture(std::int64_t number, unsigned dma, unsigned seconds);
    void deliverPictures(std::int64_t count);

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
    int inspect(const std::string& name, const std::function<int(const Parameter&)>& inspect) const;
    int hide(const std::string& name);
    int setRegister(const std::string& name, std::uint64_t value);
    int registerValue(const std::string& name, std::uint64_t& value) const;
    int setInput(unsigned input, bool level);
    int outputLevel(unsigned output, bool& level) const;
    int signalLevel(unsigned select, bool& level) const;
    int eventCount(std::string_view event, std::uint64_t& count) const;
    void advanceSignals(double microseconds);
    double signalTime() const;

private:
    Parameter* findLocked(int id);
    const Parameter* constFindLocked(std::string_view name) const;
    std::optional<std::int64_t> dueFaultLocked(softboard_direction direction, Function function, std::string_view name);
    int readTextLocked(const Parameter& parameter, void* value);
    std::optional<double> picturePeriodLocked() const;
    std::optional<double> valueLocked(std::string_view name) const;
    int checkRegisterLocked(int number, bool write) const;

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
    std::condition_variable pictureArrived_;
    int lastError_ = 0;
    int pinnedError_ = 0;
};

}  // namespace softboard

struct IXdevice final : softboard::Board {};
