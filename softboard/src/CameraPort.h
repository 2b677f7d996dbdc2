/// @file
/// Where lines enter the image path: from the camera, or from the camera simulator in its place.
#pragma once

#include <cstdint>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/ImageTrigger.h"
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
    /// @param position  where the line lies in what the source shows.
    void beginLine(LineSource source, std::int64_t position);
    void endLine(LineSource source);
    bool transferring() const { return transferring_; }

    /// Lines that came in since the design was put on the board.
    std::uint64_t lines() const { return lines_; }

private:
    LineSource selected() const;
    void finishLine();

    Switchboard* switchboard_ = nullptr;
    ImageTrigger* image_ = nullptr;
    const Parameter* select_ = nullptr;
    LineSource connected_ = LineSource::Camera;
    bool transferring_ = false;
    std::uint64_t lines_ = 0;
};

}  // namespace softboard
