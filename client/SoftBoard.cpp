#include "quillon/client/SoftBoard.h"

#include <array>
#include <utility>

#include "client/SoftBoardFunctions.h"
#include "quillon/client/Errors.h"
#include "quillon/client/Installation.h"

namespace quillon::client {

static_assert(static_cast<int>(Direction::Read) == SOFTBOARD_READ &&
              static_cast<int>(Direction::Write) == SOFTBOARD_WRITE &&
              static_cast<int>(Direction::Call) == SOFTBOARD_CALL);
static_assert(static_cast<unsigned>(Signal::Exsync) == SOFTBOARD_EXSYNC &&
              static_cast<unsigned>(Signal::Exsync2) == SOFTBOARD_EXSYNC2 &&
              static_cast<unsigned>(Signal::Flash) == SOFTBOARD_FLASH &&
              static_cast<unsigned>(Signal::LineValid) == SOFTBOARD_LVAL &&
              static_cast<unsigned>(Signal::FrameValid) == SOFTBOARD_FVAL);
static_assert(static_cast<int>(SignalChange::Kind::Signal) == SOFTBOARD_CHANGE_SIGNAL &&
              static_cast<int>(SignalChange::Kind::Output) == SOFTBOARD_CHANGE_OUTPUT &&
              static_cast<int>(SignalChange::Kind::Event) == SOFTBOARD_CHANGE_EVENT);
static_assert(static_cast<int>(ClockMode::Stepped) == SOFTBOARD_CLOCK_STEPPED &&
              static_cast<int>(ClockMode::Real) == SOFTBOARD_CLOCK_REAL &&
              static_cast<int>(ClockMode::Free) == SOFTBOARD_CLOCK_FREE &&
              static_cast<int>(ClockMode::Auto) == SOFTBOARD_CLOCK_AUTO);

std::string Access::line() const {
    const bool failed = direction == Direction::Call ? result < 0 : result != 0;
    const std::string failure = failed ? " ! " + std::to_string(result) : "";
    switch (direction) {
        case Direction::Read: return name + " ? " + value + failure;
        case Direction::Write: return name + " = " + value + failure;
        case Direction::Call: return name + "(" + value + ")" + failure;
    }
    throw Error("a transcript entry has the unknown direction " + std::to_string(static_cast<int>(direction)));
}

SoftBoardLibrary::SoftBoardLibrary(const std::filesystem::path& standInDirectory)
    : loaded_(std::make_shared<const Loaded>(std::filesystem::absolute(standInDirectory) / "libsoftboard.so")) {}

std::vector<Access> SoftBoardLibrary::transcript() const {
    return loaded_->transcript(nullptr);
}

void SoftBoardLibrary::clearTranscript() {
    expectOk("transcript_clear", loaded_->transcript_clear(nullptr));
}

void SoftBoardLibrary::planCallFault(const std::string& function, unsigned nth, std::int64_t code) {
    expectOk("plan_fault", loaded_->plan_fault(nullptr, function.c_str(), SOFTBOARD_CALL, nth, code));
}

void SoftBoardLibrary::clearFaults() {
    expectOk("clear_faults", loaded_->clear_faults(nullptr));
}

void SoftBoardLibrary::setSdkError(int number) {
    expectOk("set_sdk_error", loaded_->set_sdk_error(nullptr, number));
}

std::uint64_t SoftBoardLibrary::callCount(const std::string& function) const {
    return loaded_->call_count(function.c_str());
}

std::uint64_t SoftBoardLibrary::liveDesigns() const {
    return loaded_->live_designs();
}

std::uint64_t SoftBoardLibrary::liveHandles() const {
    return loaded_->live_handles();
}

void SoftBoard::Close::operator()(IXdevice* board) const {
    loaded->close(board);
}

SoftBoard::SoftBoard() : SoftBoard(requireInstallation().softBoard) {}

SoftBoard::SoftBoard(const std::filesystem::path& standInDirectory) : SoftBoard(SoftBoardLibrary(standInDirectory)) {}

SoftBoard::SoftBoard(SoftBoardLibrary library)
    : library_(std::move(library)), board_(library_.loaded_->open(), Close{library_.loaded_}) {
    if (board_ == nullptr) {
        throw Error("the software board did not open");
    }
}

std::vector<Access> SoftBoard::transcript() const {
    return board().transcript(device());
}

void SoftBoard::clearTranscript() {
    expectOk("transcript_clear", board().transcript_clear(device()));
}

void SoftBoard::record(bool enabled) {
    expectOk("transcript_record", board().transcript_record(device(), enabled ? 1 : 0));
}

std::vector<std::string> SoftBoard::lines(std::optional<Direction> direction) const {
    std::vector<std::string> result;
    for (const Access& access : transcript()) {
        if (direction ? access.direction == *direction : access.direction != Direction::Call) {
            result.push_back(access.line());
        }
    }
    return result;
}

std::vector<std::string> SoftBoard::accesses() const {
    return lines(std::nullopt);
}

std::vector<std::string> SoftBoard::writes() const {
    return lines(Direction::Write);
}

std::vector<std::string> SoftBoard::reads() const {
    return lines(Direction::Read);
}

std::vector<std::string> SoftBoard::calls() const {
    return lines(Direction::Call);
}

void SoftBoard::planFault(const std::string& name, Direction direction, unsigned nth, std::int64_t code) {
    expectOk("plan_fault", board().plan_fault(device(), name.c_str(), static_cast<int>(direction), nth, code));
}

void SoftBoard::planFaultAt(unsigned nth, std::int64_t code) {
    expectOk("plan_fault_at", board().plan_fault_at(device(), nth, code));
}

void SoftBoard::clearFaults() {
    expectOk("clear_faults", board().clear_faults(device()));
}

void SoftBoard::setInteger(const std::string& name, std::int64_t value) {
    expectOk("set_integer of " + name, board().set_integer(device(), name.c_str(), value));
}

std::int64_t SoftBoard::integer(const std::string& name) const {
    std::int64_t value = 0;
    expectOk("get_integer of " + name, board().get_integer(device(), name.c_str(), &value));
    return value;
}

void SoftBoard::setDouble(const std::string& name, double value) {
    expectOk("set_double of " + name, board().set_double(device(), name.c_str(), value));
}

double SoftBoard::real(const std::string& name) const {
    double value = 0;
    expectOk("get_double of " + name, board().get_double(device(), name.c_str(), &value));
    return value;
}

void SoftBoard::setText(const std::string& name, const std::string& value) {
    expectOk("set_text of " + name, board().set_text(device(), name.c_str(), value.c_str()));
}

std::string SoftBoard::text(const std::string& name) const {
    std::array<char, 4096> buffer{};
    expectOk("get_text of " + name, board().get_text(device(), name.c_str(), buffer.data(), buffer.size()));
    return buffer.data();
}

void SoftBoard::setElement(const std::string& name, std::size_t index, std::int64_t value) {
    expectOk("set_element of " + name, board().set_element(device(), name.c_str(), index, value));
}

std::int64_t SoftBoard::element(const std::string& name, std::size_t index) const {
    std::int64_t value = 0;
    expectOk("get_element of " + name, board().get_element(device(), name.c_str(), index, &value));
    return value;
}

void SoftBoard::hideParameter(const std::string& name) {
    expectOk("hide_parameter of " + name, board().hide_parameter(device(), name.c_str()));
}

void SoftBoard::setRegister(const std::string& name, std::uint64_t value) {
    expectOk("set_register of " + name, board().set_register(device(), name.c_str(), value));
}

std::uint64_t SoftBoard::registerValue(const std::string& name) const {
    std::uint64_t value = 0;
    expectOk("get_register of " + name, board().get_register(device(), name.c_str(), &value));
    return value;
}

RegisterAccess SoftBoard::registerAccess(const std::string& name) const {
    int direction = 0;
    expectOk("get_register_direction of " + name, board().get_register_direction(device(), name.c_str(), &direction));
    return static_cast<RegisterAccess>(direction);
}

void SoftBoard::setSdkError(int number) {
    expectOk("set_sdk_error", board().set_sdk_error(device(), number));
}

void SoftBoard::setRedFirst(bool redFirst) {
    expectOk("byte_order", board().byte_order(device(), redFirst ? 1 : 0));
}

void SoftBoard::advanceSignals(double microseconds) {
    expectOk("advance_signals", board().advance_signals(device(), microseconds));
}

double SoftBoard::signalTime() const {
    double microseconds = 0;
    expectOk("get_signal_time", board().get_signal_time(device(), &microseconds));
    return microseconds;
}

void SoftBoard::setInput(unsigned input, bool high) {
    expectOk("set_input", board().set_input(device(), input, high ? 1 : 0));
}

bool SoftBoard::output(unsigned output) const {
    int level = 0;
    expectOk("get_output", board().get_output(device(), output, &level));
    return level != 0;
}

bool SoftBoard::signal(Signal signal) const {
    return this->signal(static_cast<unsigned>(signal));
}

bool SoftBoard::signal(unsigned select) const {
    int level = 0;
    expectOk("get_signal", board().get_signal(device(), select, &level));
    return level != 0;
}

bool SoftBoard::advanceToEvent(const std::string& event, double microseconds) {
    int raised = 0;
    expectOk("advance_to_event " + event, board().advance_to_event(device(), event.c_str(), microseconds, &raised));
    return raised != 0;
}

void SoftBoard::recordSignals(std::size_t most) {
    expectOk("record_signals", board().record_signals(device(), most));
}

SignalRecording SoftBoard::recordedSignals() const {
    SignalRecording recording;
    std::size_t kept = 0;
    expectOk("recording_size", board().recording_size(device(), &kept, &recording.lost));
    std::vector<softboard_change> changes(kept);
    expectOk("recorded_changes", board().recorded_changes(device(), 0, kept, changes.data()));
    recording.changes.reserve(kept);
    for (const softboard_change& change : changes) {
        if (change.event != nullptr) {
            recording.events.try_emplace(change.number, change.event);
        }
        recording.changes.push_back(
            {change.tick, static_cast<SignalChange::Kind>(change.kind), change.number, change.level != 0});
    }
    return recording;
}

std::uint64_t SoftBoard::lostChanges() const {
    std::size_t kept = 0;
    std::uint64_t lost = 0;
    expectOk("recording_size", board().recording_size(device(), &kept, &lost));
    return lost;
}

std::uint64_t SoftBoard::eventCount(const std::string& event) const {
    std::uint64_t count = 0;
    expectOk("event_count of " + event, board().event_count(device(), event.c_str(), &count));
    return count;
}

void SoftBoard::setClock(ClockMode mode, double speed) {
    expectOk("clock", board().clock(device(), static_cast<int>(mode), speed));
}

void SoftBoard::deliverPictures(std::int64_t count) {
    expectOk("deliver_pictures", board().deliver_pictures(device(), count));
}

}  // namespace quillon::client
