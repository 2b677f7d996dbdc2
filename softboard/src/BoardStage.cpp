/// @file
/// A board's side of scene.h and faults.h: what stands in front of the camera, and what goes wrong behind it.

#include <utility>

#include "softboard/src/Board.h"

namespace softboard {

// ---- In front of the camera ----

void Board::setScene(std::shared_ptr<pixels::Scene> scene) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    signals_.stage().setScene(std::move(scene));
    signals_.stageChanged();
}

void Board::setLight(const scenes::Light& light) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    signals_.stage().setLight(light);
    signals_.stageChanged();
}

scenes::Light Board::light() {
    const std::lock_guard guard(recorder_.mutex);
    return signals_.stage().light();
}

Message Board::setBelt(unsigned a, unsigned b, double countsPerMm, std::vector<softboard_move> moves) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    Belt::Edges edges;
    Message refusal = signals_.stage().belt().set(a, b, countsPerMm, std::move(moves), signals_.now(), edges);
    signals_.follow(edges);
    changed_.notify_all();
    return refusal;
}

Message Board::setBarrier(unsigned input, double first, double pitch, double length) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    Belt::Edges edges;
    Message refusal = signals_.stage().belt().setBarrier(input, first, pitch, length, signals_.now(), edges);
    signals_.follow(edges);
    changed_.notify_all();
    return refusal;
}

double Board::beltPosition() {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    constexpr double NanometresPerMm = 1e6;
    return signals_.stage().belt().position(signals_.now()) / NanometresPerMm;
}

// ---- Behind it ----

void Board::planLineFault(std::uint64_t nth, std::size_t what) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    signals_.lineFaults().plan(nth, what);
}

void Board::planFrameFault(std::uint64_t nth, const FrameFault& fault) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    acquisition_.frameFaults().plan(nth, fault);
}

Message Board::planOutage(int what, double after, double duration) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    if (!description_) {
        return {SOFTBOARD_E_NO_DESIGN, "the board's time begins with a design"};
    }
    if (wholeTicks(after) == Never) {
        return {};  // no clock gets there
    }
    const Tick from = signals_.now() + wholeTicks(after);
    signals_.outages().plan(what, from, wholeTicks(duration) == Never ? Never : from + wholeTicks(duration));
    changed_.notify_all();
    return {};
}

void Board::setCamera(bool connected) {
    change("FG_CAMSTATUS_EXTENDED", [connected](Parameter& status) {
        const std::int64_t clock = 1;
        return status.setInteger(connected ? status.integer() | clock : status.integer() & ~clock);
    });
}

void Board::setLink(bool up) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    acquisition_.linkChanged(up, signals_.now());
    changed_.notify_all();
}

void Board::setDmaRate(double bytesPerSecond) {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    acquisition_.setDmaRate(bytesPerSecond, signals_.now());
    changed_.notify_all();
}

void Board::clearPathFaults() {
    const std::lock_guard guard(recorder_.mutex);
    followDayLocked();
    signals_.lineFaults().clear();
    acquisition_.frameFaults().clear();
    acquisition_.endStall(signals_.now());
    signals_.endOutages();
    changed_.notify_all();
}

// ---- Messages ----

int Board::note(Message message) {
    const std::lock_guard guard(recorder_.mutex);
    if (message.code != SOFTBOARD_OK) {
        lastMessage_ = std::move(message.text);
    }
    return message.code;
}

std::string Board::lastMessage() {
    const std::lock_guard guard(recorder_.mutex);
    return lastMessage_;
}

}  // namespace softboard
