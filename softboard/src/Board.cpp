#include "softboard/src/Board.h"

#include <algorithm>
#include <cstring>

#include "softboard/src/SdkParameters.h"

namespace softboard {

Board::Board() {
    for (const ParameterDescription& description : sdkParameters()) {
        sdk_.emplace_back(description);
    }
    for (Parameter& parameter : sdk_) {
        sdkById_.emplace(parameter.description().id, &parameter);
        sdkByName_.emplace(parameter.description().name, &parameter);
    }
}

Board::~Board() {
    {
        const std::lock_guard guard(recorder_.mutex);
        if (acquisition_.running()) {
            acquisition_.stop(SOFTBOARD_E_ACQUISITION, signals_.now());
        }
        endThreadLocked();
    }
    settleAcquisition();
    for (char* text : texts_) {
        delete[] text;
    }
}

Parameter* Board::findLocked(int id) {
    const auto position = static_cast<std::size_t>(static_cast<std::int64_t>(id) - FirstDesignId);
    if (position < design_.size()) {
        return hidden_[position] ? nullptr : &design_[position];
    }
    const auto found = sdkById_.find(id);
    return found != sdkById_.end() ? found->second : nullptr;
}

const Parameter* Board::constFindLocked(std::string_view name) const {
    if (description_) {
        const auto found = description_->parameterByName.find(std::string(name));
        if (found != description_->parameterByName.end()) {
            return hidden_[found->second] ? nullptr : &design_[found->second];
        }
    }
    const auto found = sdkByName_.find(name);
    return found != sdkByName_.end() ? found->second : nullptr;
}

Parameter* Board::findLocked(std::string_view name) {
    return const_cast<Parameter*>(constFindLocked(name));
}

void Board::changedLocked(const Parameter& parameter) {
    if (parameter.watched()) {
        signals_.written(parameter);
        if (std::string message = signals_.debugPoints().takeMessage(); !message.empty()) {
            lastMessage_ = std::move(message);
        }
        changed_.notify_all();
    }
}

int Board::idByNameLocked(std::string_view name) const {
    const Parameter* parameter = constFindLocked(name);
    return parameter != nullptr ? parameter->description().id : SOFTBOARD_E_UNKNOWN_ID;
}

std::vector<const Parameter*> Board::parametersLocked() const {
    std::vector<const Parameter*> parameters;
    for (std::size_t position = 0; position < design_.size(); ++position) {
        if (!hidden_[position]) {
            parameters.push_back(&design_[position]);
        }
    }
    for (const Parameter& parameter : sdk_) {
        parameters.push_back(&parameter);
    }
    return parameters;
}

std::optional<std::int64_t> Board::dueFaultLocked(softboard_direction direction, Function function,
                                                  std::string_view name) {
    if (recorder_.faults.empty()) {
        return std::nullopt;
    }
    const auto ofFunction = recorder_.faults.due(SOFTBOARD_CALL, nameOf(function));
    const auto ofAccess = recorder_.faults.due(direction, name);
    return ofFunction ? ofFunction : ofAccess;
}

namespace {

int ownType(const Parameter& parameter) {
    const int type = static_cast<int>(parameter.description().type);
    return type == static_cast<int>(ValueType::Table) ? FieldIntType : type;
}

/// An access that was refused because of what was passed is noted without the value, which cannot be trusted then.
bool valueCanBeShown(std::int64_t result) {
    return result != SOFTBOARD_E_ARGUMENT && result != SOFTBOARD_E_TYPE && result != SOFTBOARD_E_RANGE;
}

const char* const UnknownName = "";

}  // namespace

int Board::readTextLocked(const Parameter& parameter, void* value) {
    if (value == nullptr) {
        return SOFTBOARD_E_ARGUMENT;
    }
    std::string text;
    if (parameter.text(text) != SOFTBOARD_OK) {
        return SOFTBOARD_E_TYPE;
    }
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    texts_.insert(copy.get());
    char* released = copy.release();
    std::memcpy(value, &released, sizeof released);
    return SOFTBOARD_OK;
}

int Board::releaseTextLocked(char* text) {
    if (texts_.erase(text) == 0) {
        return SOFTBOARD_E_ARGUMENT;
    }
    delete[] text;
    return SOFTBOARD_OK;
}

int Board::readParameter(Function function, int id, void* value, unsigned dma, int type) {
    countCall(function);
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    const Parameter* parameter = findLocked(id);
    const char* name = parameter != nullptr ? parameter->description().name.c_str() : UnknownName;
    if (type == OwnType && parameter != nullptr) {
        type = ownType(*parameter);
    }
    const auto fault = dueFaultLocked(SOFTBOARD_READ, function, name);
    int result = SOFTBOARD_OK;
    if (fault) {
        result = static_cast<int>(*fault);
    } else if (parameter == nullptr) {
        result = noteErrorLocked(SOFTBOARD_E_UNKNOWN_ID);
    } else if (dma != 0) {
        result = noteErrorLocked(SOFTBOARD_E_ARGUMENT);
    } else {
        result =
            noteErrorLocked(type == NewTextType ? readTextLocked(*parameter, value) : parameter->read(value, type));
    }
    if (recorder_.transcript.recording()) {
        recorder_.transcript.add(SOFTBOARD_READ, id, dma, type, result, name,
                                 result == SOFTBOARD_OK && !fault ? shownValue(value, type) : std::string());
    }
    return result;
}

int Board::writeParameter(Function function, int id, const void* value, unsigned dma, int type) {
    countCall(function);
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    Parameter* parameter = findLocked(id);
    const char* name = parameter != nullptr ? parameter->description().name.c_str() : UnknownName;
    if (type == OwnType && parameter != nullptr) {
        type = ownType(*parameter);
    }
    const auto fault = dueFaultLocked(SOFTBOARD_WRITE, function, name);
    int result = SOFTBOARD_OK;
    if (fault) {
        result = static_cast<int>(*fault);
    } else if (parameter == nullptr) {
        result = noteErrorLocked(SOFTBOARD_E_UNKNOWN_ID);
    } else if (dma != 0) {
        result = noteErrorLocked(SOFTBOARD_E_ARGUMENT);
    } else {
        result = noteErrorLocked(parameter->write(value, type));
        if (result == SOFTBOARD_OK) {
            changedLocked(*parameter);
        }
    }
    if (recorder_.transcript.recording()) {
        recorder_.transcript.add(SOFTBOARD_WRITE, id, dma, type, result, name,
                                 valueCanBeShown(result) ? shownValue(value, type) : std::string());
    }
    return result;
}

int Board::checkRegisterLocked(int number, bool write) const {
    if (!description_) {
        return SOFTBOARD_E_NO_DESIGN;
    }
    if (number < 1 || static_cast<std::size_t>(number) > registers_.size()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    const RegisterDirection direction = description_->registers[static_cast<std::size_t>(number) - 1].direction;
    if (write) {
        return direction == RegisterDirection::ReadOnly ? SOFTBOARD_E_READ_ONLY : SOFTBOARD_OK;
    }
    return direction == RegisterDirection::WriteOnly ? SOFTBOARD_E_WRITE_ONLY : SOFTBOARD_OK;
}

namespace {

struct RegisterName {
    const char* transcript = UnknownName;
    std::string_view plain = UnknownName;
};

RegisterName registerName(const DesignDescription* description, int number) {
    if (description == nullptr || number < 1 || static_cast<std::size_t>(number) > description->registers.size()) {
        return {};
    }
    const RegisterDescription& reg = description->registers[static_cast<std::size_t>(number) - 1];
    return {reg.transcriptName.c_str(), reg.name};
}

std::uint64_t cutToWidth(std::uint64_t value, int bits) {
    return bits >= 64 ? value : value & ((std::uint64_t{1} << bits) - 1);
}

}  // namespace

int Board::readRegister(int number, std::uint64_t* value) {
    countCall(Function::OrloRegisterRead);
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    const RegisterName name = registerName(description_.get(), number);
    const auto fault = dueFaultLocked(SOFTBOARD_READ, Function::OrloRegisterRead, name.plain);
    int result = fault ? static_cast<int>(*fault) : checkRegisterLocked(number, false);
    if (result == SOFTBOARD_OK && !fault && value == nullptr) {
        result = SOFTBOARD_E_ARGUMENT;
    }
    const bool answered = result == SOFTBOARD_OK && !fault;
    if (answered) {
        showCountersLocked();
        *value = registers_[static_cast<std::size_t>(number) - 1];
    }
    if (recorder_.transcript.recording()) {
        recorder_.transcript.add(SOFTBOARD_READ, number, 0, 0, result, name.transcript,
                                 answered ? std::to_string(*value) : "");
    }
    return result;
}

int Board::writeRegister(int number, std::uint64_t value) {
    countCall(Function::OrloRegisterWrite);
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    const RegisterName name = registerName(description_.get(), number);
    const auto fault = dueFaultLocked(SOFTBOARD_WRITE, Function::OrloRegisterWrite, name.plain);
    const int result = fault ? static_cast<int>(*fault) : checkRegisterLocked(number, true);
    if (result == SOFTBOARD_OK && !fault) {
        const std::size_t position = static_cast<std::size_t>(number) - 1;
        showCountersLocked();
        registers_[position] = cutToWidth(value, description_->registers[position].bits);
    }
    if (recorder_.transcript.recording()) {
        recorder_.transcript.add(SOFTBOARD_WRITE, number, 0, 0, result, name.transcript, std::to_string(value));
    }
    return result;
}

void Board::configureLocked(const fpga_design& design, bool keepState) {
    if (keepState && description_ && description_->fingerprint == design.description->fingerprint) {
        return;
    }
    if (description_ != design.description) {
        earlier_.push_back(design.description);
    }
    description_ = design.description;
    hidden_ = design.hidden;
    design_.clear();
    for (const ParameterDescription& parameter : description_->parameters) {
        design_.emplace_back(parameter);
    }
    registers_.clear();
    for (const RegisterDescription& reg : description_->registers) {
        registers_.push_back(cutToWidth(reg.value, reg.bits));
    }
    std::vector<std::string> events;
    for (const tav_event& event : design.events) {
        events.emplace_back(event.name);
    }
    const Find find = [this](std::string_view name) { return findLocked(name); };
    signals_.bind(find, events, acquisition_);
    acquisition_.bind(find, signals_.switchboard());
    signals_.endOutages();  // their times went by the clock that begins anew
    bindCountersLocked();
    for (const auto& [name, change] : std::exchange(pendingChanges_, {})) {
        if (Parameter* parameter = findLocked(name)) {
            change(*parameter);
            changedLocked(*parameter);
        }
    }
    for (const std::string& name : std::exchange(pendingHidden_, {})) {
        const auto found = description_->parameterByName.find(name);
        if (found != description_->parameterByName.end()) {
            hidden_[found->second] = true;
        }
    }
}

void Board::bindCountersLocked() {
    static constexpr std::array Names = {"FrameCounter", "LineCounter", "TriggerCounter", "DmaByteCounter",
                                         "Timestamp"};
    static_assert(Names.size() == std::tuple_size_v<decltype(counters_)>);
    const auto counts = countsLocked();
    for (std::size_t index = 0; index < counters_.size(); ++index) {
        const auto found = description_->registerByName.find(Names[index]);
        const bool there = found != description_->registerByName.end();
        counters_[index] = {there ? std::optional(found->second) : std::nullopt, counts[index]};
    }
}

Board::Counts Board::countsLocked() const {
    return {signals_.frames(), signals_.lines(), signals_.triggers(), acquisition_.bytesTransferred(),
            static_cast<std::uint64_t>(signals_.now())};
}

/// They count on from whatever was written into them.
void Board::showCountersLocked() {
    const auto counts = countsLocked();
    for (std::size_t index = 0; index < counters_.size(); ++index) {
        CounterRegister& counter = counters_[index];
        if (counter.position) {
            std::uint64_t& value = registers_[*counter.position];
            value =
                cutToWidth(value + (counts[index] - counter.shown), description_->registers[*counter.position].bits);
        }
        counter.shown = counts[index];
    }
}

int Board::lastErrorLocked() const {
    return pinnedError_ != 0 ? pinnedError_ : lastError_;
}

void Board::pinError(int number) {
    const std::lock_guard guard(recorder_.mutex);
    pinnedError_ = number;
}

int Board::change(const std::string& name, std::function<int(Parameter&)> change) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    if (Parameter* parameter = findLocked(name)) {
        const int result = change(*parameter);
        changedLocked(*parameter);
        return result;
    }
    if (description_) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    pendingChanges_.emplace_back(name, std::move(change));
    return SOFTBOARD_OK;
}

int Board::inspect(const std::string& name, const std::function<int(const Parameter&)>& inspect) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    if (const Parameter* parameter = constFindLocked(name)) {
        return inspect(*parameter);
    }
    return description_ ? SOFTBOARD_E_UNKNOWN_ID : SOFTBOARD_E_NO_DESIGN;
}

int Board::hide(const std::string& name) {
    const std::lock_guard guard(recorder_.mutex);
    if (!description_) {
        pendingHidden_.push_back(name);
        return SOFTBOARD_OK;
    }
    const auto found = description_->parameterByName.find(name);
    if (found == description_->parameterByName.end()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    hidden_[found->second] = true;
    return SOFTBOARD_OK;
}

int Board::setRegister(const std::string& name, std::uint64_t value) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    if (!description_) {
        return SOFTBOARD_E_NO_DESIGN;
    }
    const auto found = description_->registerByName.find(name);
    if (found == description_->registerByName.end()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    showCountersLocked();
    registers_[found->second] = cutToWidth(value, description_->registers[found->second].bits);
    return SOFTBOARD_OK;
}

int Board::registerValue(const std::string& name, std::uint64_t& value) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    if (!description_) {
        return SOFTBOARD_E_NO_DESIGN;
    }
    const auto found = description_->registerByName.find(name);
    if (found == description_->registerByName.end()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    showCountersLocked();
    value = registers_[found->second];
    return SOFTBOARD_OK;
}

int Board::registerDirection(const std::string& name, int& direction) {
    const std::lock_guard guard(recorder_.mutex);
    if (!description_) {
        return SOFTBOARD_E_NO_DESIGN;
    }
    const auto found = description_->registerByName.find(name);
    if (found == description_->registerByName.end()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    direction = static_cast<int>(description_->registers[found->second].direction);
    return SOFTBOARD_OK;
}

int Board::setInput(unsigned input, bool level) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    return description_ ? signals_.setInput(input, level) : SOFTBOARD_E_NO_DESIGN;
}

int Board::outputLevel(unsigned output, bool& level) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    return description_ ? signals_.output(output, level) : SOFTBOARD_E_NO_DESIGN;
}

int Board::signalLevel(unsigned select, bool& level) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    return description_ ? signals_.level(select, level) : SOFTBOARD_E_NO_DESIGN;
}

int Board::eventCount(std::string_view event, std::uint64_t& count) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    return description_ ? signals_.eventCount(event, count) : SOFTBOARD_E_NO_DESIGN;
}

int Board::recordSignals(std::size_t most) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    if (!description_) {
        return SOFTBOARD_E_NO_DESIGN;
    }
    signals_.record(most);
    return SOFTBOARD_OK;
}

int Board::inspectRecording(const std::function<int(const SignalRecording&)>& look) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    return description_ ? look(signals_.recording()) : SOFTBOARD_E_NO_DESIGN;
}

}  // namespace softboard
