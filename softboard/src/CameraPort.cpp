#include "softboard/src/CameraPort.h"

#include <utility>

#include "softboard/faults.h"
#include "softboard/softboard.h"

namespace softboard {

void CameraPort::bind(const Find& find, Switchboard& switchboard, ImageTrigger& image) {
    LineFaults faults = std::move(faults_);
    *this = CameraPort();
    faults_ = std::move(faults);
    switchboard_ = &switchboard;
    image_ = &image;
    select_ = watched(find, "Device1_Process0_CameraSimulator_Enable_SelectSource");
    connect();
}

LineSource CameraPort::selected() const {
    return integerOf(select_) == 1 ? LineSource::Simulator : LineSource::Camera;
}

bool CameraPort::connect() {
    if (!switchWaits() || image_->inFrame()) {
        return false;
    }
    if (transferring_) {
        finishLine();
    }
    connected_ = selected();
    return true;
}

void CameraPort::beginLine(LineSource source, const pixels::Line& line) {
    if (source != connected_ || cutOff_) {
        return;
    }
    if (transferring_) {
        finishLine();
    }
    line_ = line;
    const auto strikes = faults_.next();
    if (strikes[SOFTBOARD_FAULT_DROP]) {
        image_->faultStruck(true);
        return;
    }
    repeats_ = strikes[SOFTBOARD_FAULT_REPEAT];
    line_.inverted = strikes[SOFTBOARD_FAULT_INVERT_BITS] ? 1 : 0;
    startLine();
    if (strikes.any()) {  // with a line its frame may just have begun
        image_->faultStruck(false);
    }
}

void CameraPort::cutOff(bool cutOff) {
    if (cutOff && transferring_) {
        finishLine();
    }
    cutOff_ = cutOff;
}

void CameraPort::startLine() {
    transferring_ = true;
    ++lines_;
    image_->lineStarted(line_);
    switchboard_->setLevel(SOFTBOARD_LVAL, true);
    switchboard_->pulse(SOFTBOARD_LINE_START);
}

void CameraPort::endLine(LineSource source) {
    if (source == connected_ && transferring_) {
        finishLine();
    }
}

void CameraPort::finishLine() {
    transferring_ = false;
    switchboard_->setLevel(SOFTBOARD_LVAL, false);
    switchboard_->pulse(SOFTBOARD_LINE_END);
    image_->lineEnded();
    if (std::exchange(repeats_, false)) {
        startLine();
        image_->frameSuffers();
        finishLine();
    }
}

}  // namespace softboard
