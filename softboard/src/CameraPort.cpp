#include "softboard/src/CameraPort.h"

#include "softboard/softboard.h"

namespace softboard {

void CameraPort::bind(const Find& find, Switchboard& switchboard, ImageTrigger& image) {
    *this = CameraPort();
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

void CameraPort::beginLine(LineSource source, std::int64_t position) {
    if (source != connected_) {
        return;
    }
    if (transferring_) {
        finishLine();
    }
    transferring_ = true;
    ++lines_;
    image_->lineStarted(position);
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
}

}  // namespace softboard
