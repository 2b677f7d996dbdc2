/// @file
/// Where lines enter the image path: from the camera, or from the camera simulator in its place.
#pragma once

#include <cstdint>

#include "softboard/pixels/Line.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/ImageTrigger.h"
#include "softboard/src/PathFaults.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

enum class LineSource { Camera, Simulator };

/// Not locked; the board's lock guards it.
///
/// One source is connected at a time. A change of the selection waits until the frame under way has ended.
class CameraPort {
public:
    void bind(const Find& find, Switchboard& switchboard, ImageTrigger& image);

    LineSource connected() const { return connected_; }
    /// The source that the design selects is connected, now that no frame is under way. True if it is another one.
    bool connect();
    /// True while another source is selected than is connected.
    bool switchWaits() const { return selected() != connected_; }
    /// True if `parameter` is the selection.
    bool selects(const Parameter& parameter) const { return &parameter == select_; }

    /// A line begins, from here on; the one that is still under way ends. A source that is not connected is not heard.
    void beginLine(LineSource source, const pixels::Line& line);
    void endLine(LineSource source);
    bool transferring() const { return transferring_; }
    /// While it is cut off, no line is heard. The one under way ends.
    void cutOff(bool cutOff);

    /// Lines that came in since the design was put on the board.
    std::uint64_t lines() const { return lines_; }

    LineFaults& faults() { return faults_; }

private:
    LineSource selected() const;
    void startLine();
    void finishLine();

    Switchboard* switchboard_ = nullptr;
    ImageTrigger* image_ = nullptr;
    const Parameter* select_ = nullptr;
    LineSource connected_ = LineSource::Camera;
    bool cutOff_ = false;
    bool transferring_ = false;
    pixels::Line line_{};   ///< the one that is under way
    bool repeats_ = false;  ///< it comes once more when it has ended
    std::uint64_t lines_ = 0;
    LineFaults faults_;
};

}  // namespace softboard
