/// @file
/// The control interface over boards and process.

#include "softboard/softboard.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "softboard/clock.h"
#include "softboard/recording.h"
#include "softboard/src/Board.h"
#include "softboard/src/Guarded.h"
#include "softboard/src/Process.h"

namespace {

using softboard::guarded;
using softboard::Parameter;
using softboard::Process;

/// The recorder of a board, of the process if `board` is null, null if there is no such board.
softboard::Recorder* recorderOf(IXdevice* board) {
    if (board == nullptr) {
        return &Process::instance().recorder();
    }
    return Process::instance().isBoard(board) ? &board->recorder() : nullptr;
}

/// Runs `body` with the recorder locked.
template <class Body>
int withRecorder(IXdevice* board, Body body) {
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
        softboard::Recorder* const recorder = recorderOf(board);
        if (recorder == nullptr) {
            return SOFTBOARD_E_ARGUMENT;
        }
        const std::lock_guard guard(recorder->mutex);
        return body(*recorder);
    });
}

/// Runs `body` if the board exists and the name is not null.
template <class Body>
int withBoard(IXdevice* board, const char* name, Body body) {
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
        if (name == nullptr || !Process::instance().isBoard(board)) {
            return SOFTBOARD_E_ARGUMENT;
        }
        return body();
    });
}

/// Hands a level to the caller as 0 or 1, if `body`, which gets it as a bool to fill, succeeds.
template <class Body>
int withLevel(IXdevice* board, int* level, Body body) {
    return withBoard(board, level != nullptr ? "" : nullptr, [&] {
        bool high = false;
        const int result = body(high);
        if (result == SOFTBOARD_OK) {
            *level = high ? 1 : 0;
        }
        return result;
    });
}

/// In microseconds.
bool canAdvance(double microseconds) {
    constexpr double LongestAdvance = 60e6;
    return microseconds >= 0.0 && microseconds <= LongestAdvance;
}

}  // namespace

IXdevice* softboard_open(void) {
    return guarded<IXdevice*>(nullptr, [] { return Process::instance().openBoard(); });
}

int softboard_close(IXdevice* board) {
    return guarded<int>(SOFTBOARD_E_INTERNAL,
                        [&] { return Process::instance().closeBoard(board) ? SOFTBOARD_OK : SOFTBOARD_E_ARGUMENT; });
}

size_t softboard_transcript_size(IXdevice* board) {
    size_t size = 0;
    withRecorder(board, [&](softboard::Recorder& recorder) {
        size = recorder.transcript.size();
        return SOFTBOARD_OK;
    });
    return size;
}

int softboard_transcript_get(IXdevice* board, size_t index, softboard_access* out) {
    return withRecorder(board, [&](softboard::Recorder& recorder) -> int {
        if (out == nullptr || index >= recorder.transcript.size()) {
            return SOFTBOARD_E_ARGUMENT;
        }
        *out = recorder.transcript.at(index);
        return SOFTBOARD_OK;
    });
}

int softboard_transcript_clear(IXdevice* board) {
    return withRecorder(board, [](softboard::Recorder& recorder) {
        recorder.transcript.clear();
        return SOFTBOARD_OK;
    });
}

int softboard_transcript_record(IXdevice* board, int enabled) {
    return withRecorder(board, [&](softboard::Recorder& recorder) {
        recorder.transcript.setRecording(enabled != 0);
        return SOFTBOARD_OK;
    });
}

int softboard_plan_fault(IXdevice* board, const char* name, int direction, unsigned nth, int64_t code) {
    return withRecorder(board, [&](softboard::Recorder& recorder) -> int {
        if (name == nullptr || direction < SOFTBOARD_READ || direction > SOFTBOARD_CALL) {
            return SOFTBOARD_E_ARGUMENT;
        }
        recorder.faults.plan(name, static_cast<softboard_direction>(direction), nth, code);
        return SOFTBOARD_OK;
    });
}

int softboard_plan_fault_at(IXdevice* board, unsigned nth, int64_t code) {
    return withRecorder(board, [&](softboard::Recorder& recorder) {
        recorder.faults.planAnyAccess(nth, code);
        return SOFTBOARD_OK;
    });
}

int softboard_clear_faults(IXdevice* board) {
    const int result = withRecorder(board, [](softboard::Recorder& recorder) {
        recorder.faults.clear();
        return SOFTBOARD_OK;
    });
    if (result == SOFTBOARD_OK && board != nullptr) {
        board->clearPathFaults();
    }
    return result;
}

int softboard_set_integer(IXdevice* board, const char* name, int64_t value) {
    return withBoard(board, name,
                     [&] { return board->change(name, [value](Parameter& it) { return it.setInteger(value); }); });
}

int softboard_get_integer(IXdevice* board, const char* name, int64_t* value) {
    return withBoard(board, value != nullptr ? name : nullptr,
                     [&] { return board->inspect(name, [value](const Parameter& it) { return it.integer(*value); }); });
}

int softboard_set_double(IXdevice* board, const char* name, double value) {
    return withBoard(board, name,
                     [&] { return board->change(name, [value](Parameter& it) { return it.setReal(value); }); });
}

int softboard_get_double(IXdevice* board, const char* name, double* value) {
    return withBoard(board, value != nullptr ? name : nullptr,
                     [&] { return board->inspect(name, [value](const Parameter& it) { return it.real(*value); }); });
}

int softboard_set_text(IXdevice* board, const char* name, const char* value) {
    return withBoard(board, value != nullptr ? name : nullptr, [&] {
        return board->change(name, [text = std::string(value)](Parameter& it) { return it.setText(text); });
    });
}

int softboard_get_text(IXdevice* board, const char* name, char* buffer, size_t size) {
    return withBoard(board, buffer != nullptr ? name : nullptr, [&]() -> int {
        std::string text;
        const int result = board->inspect(name, [&text](const Parameter& it) { return it.text(text); });
        if (result != SOFTBOARD_OK) {
            return result;
        }
        if (text.size() >= size) {
            return SOFTBOARD_E_RANGE;
        }
        std::memcpy(buffer, text.c_str(), text.size() + 1);
        return SOFTBOARD_OK;
    });
}

int softboard_set_element(IXdevice* board, const char* name, size_t index, int64_t value) {
    return withBoard(board, name,
                     [&] { return board->change(name, [=](Parameter& it) { return it.setElement(index, value); }); });
}

int softboard_get_element(IXdevice* board, const char* name, size_t index, int64_t* value) {
    return withBoard(board, value != nullptr ? name : nullptr, [&] {
        return board->inspect(name, [=](const Parameter& it) { return it.element(index, *value); });
    });
}

int softboard_hide_parameter(IXdevice* board, const char* name) {
    return withBoard(board, name, [&] { return board->hide(name); });
}

int softboard_set_register(IXdevice* board, const char* name, uint64_t value) {
    return withBoard(board, name, [&] { return board->setRegister(name, value); });
}

int softboard_get_register(IXdevice* board, const char* name, uint64_t* value) {
    return withBoard(board, value != nullptr ? name : nullptr, [&] { return board->registerValue(name, *value); });
}

int softboard_get_register_direction(IXdevice* board, const char* name, int* direction) {
    return withBoard(board, direction != nullptr ? name : nullptr,
                     [&] { return board->registerDirection(name, *direction); });
}

int softboard_set_input(IXdevice* board, unsigned input, int level) {
    return withBoard(board, "", [&] { return board->setInput(input, level != 0); });
}

int softboard_get_output(IXdevice* board, unsigned output, int* level) {
    return withLevel(board, level, [&](bool& high) { return board->outputLevel(output, high); });
}

int softboard_get_signal(IXdevice* board, unsigned signal, int* level) {
    return withLevel(board, level, [&](bool& high) { return board->signalLevel(signal, high); });
}

int softboard_event_count(IXdevice* board, const char* name, uint64_t* count) {
    return withBoard(board, count != nullptr ? name : nullptr, [&] { return board->eventCount(name, *count); });
}

int softboard_advance_signals(IXdevice* board, double microseconds) {
    return withBoard(board, canAdvance(microseconds) ? "" : nullptr, [&] {
        board->advanceSignals(microseconds);
        return SOFTBOARD_OK;
    });
}

int softboard_advance_to_event(IXdevice* board, const char* event, double microseconds, int* raised) {
    return withBoard(board, raised != nullptr && canAdvance(microseconds) ? event : nullptr, [&] {
        bool came = false;
        const int code = board->advanceToEvent(event, microseconds, came);
        if (code == SOFTBOARD_OK) {
            *raised = came ? 1 : 0;
        }
        return code;
    });
}

int softboard_get_signal_time(IXdevice* board, double* microseconds) {
    return withBoard(board, microseconds != nullptr ? "" : nullptr, [&] {
        *microseconds = board->signalTime();
        return SOFTBOARD_OK;
    });
}

int softboard_record_signals(IXdevice* board, size_t most) {
    return withBoard(board, most <= SOFTBOARD_RECORDING_MOST ? "" : nullptr,
                     [&] { return board->recordSignals(most); });
}

int softboard_recording_size(IXdevice* board, size_t* kept, uint64_t* lost) {
    return withBoard(board, kept != nullptr && lost != nullptr ? "" : nullptr, [&] {
        return board->inspectRecording([&](const softboard::SignalRecording& recording) {
            *kept = recording.changes().size();
            *lost = recording.lost();
            return SOFTBOARD_OK;
        });
    });
}

int softboard_recorded_changes(IXdevice* board, size_t first, size_t count, softboard_change* changes) {
    return withBoard(board, changes != nullptr || count == 0 ? "" : nullptr, [&] {
        return board->inspectRecording([&](const softboard::SignalRecording& recording) -> int {
            const std::vector<softboard_change>& all = recording.changes();
            if (first > all.size() || count > all.size() - first) {
                return SOFTBOARD_E_RANGE;
            }
            std::copy_n(all.data() + first, count, changes);
            return SOFTBOARD_OK;
        });
    });
}

int softboard_clock(IXdevice* board, int mode, double speed) {
    return withBoard(board, "", [&] { return board->setClock(mode, speed); });
}

int softboard_deliver_pictures(IXdevice* board, int64_t count) {
    return withBoard(board, count >= 0 ? "" : nullptr, [&] { return board->deliverPictures(count); });
}

int softboard_set_sdk_error(IXdevice* board, int number) {
    if (board == nullptr) {
        Process::instance().pinInitError(number);
        return SOFTBOARD_OK;
    }
    return withBoard(board, "", [&] {
        board->pinError(number);
        return SOFTBOARD_OK;
    });
}

uint64_t softboard_call_count(const char* function) {
    return function != nullptr ? softboard::callCount(function) : 0;
}

uint64_t softboard_live_designs(void) {
    return Process::instance().designCount();
}

uint64_t softboard_live_handles(void) {
    return Process::instance().handleCount();
}
