/// @file
/// The design's debug points: what they send into the image path in place of the camera, and what they show of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "softboard/pixels/LastPixel.h"
#include "softboard/scenes/Picture.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/CameraPort.h"
#include "softboard/src/FrameAssembler.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it.
///
/// Debug_Entries says how many points there are, and the texts Debug_N, _T and _P their names, types and paths. A point
/// lies where the camera's pixels come in, or, if its path ends with "ImageOutput", behind the lookup table.
///
/// While bit 0 of OperationMode is 1, the path behind the point takes nothing from before it. A 1 written to Insert
/// sends DebugFile as a frame: a picture, or otherwise words of 16 bits, red, green and blue of each pixel. A value
/// written to Inject_WritePixel adds a pixel to a line: red in bits 0 to 15, green in 16 to 31, blue in 32 to 47;
/// Inject_WriteFlag ends the line (0), or the line and the frame (1). Lines come as fast as a camera sends them, and
/// Inject_ReadyForInjection is 0 until the last one is through. A line has as many pixels as the path takes at the
/// point; what is missing is black.
///
/// While bit 1 is 1, a point of the type InjectMonitor shows the pixel that has passed last.
class DebugPoints {
public:
    void bind(const Find& find, Switchboard& switchboard, CameraPort& port, FrameAssembler& frames,
              PixelSettings& settings);

    void written(const Parameter& parameter);
    /// When the next line comes; Never if none will.
    Tick next() const { return nextLine_; }
    /// Lets it come; the switchboard's time is that tick already.
    void happen();

    /// A frame has been drawn, and this is its last pixel.
    void passed(const pixels::LastPixel& pixel);

    /// Why the last insert came to nothing, once; the empty text otherwise.
    std::string takeMessage() { return std::exchange(message_, {}); }

private:
    struct Point {
        std::string name;
        bool atOutput = false;
        const Parameter* mode = nullptr;
        const Parameter* file = nullptr;
        const Parameter* insert = nullptr;
        const Parameter* writePixel = nullptr;
        const Parameter* writeFlag = nullptr;
        Parameter* ready = nullptr;
        Parameter* x = nullptr;  ///< null where nothing is shown
        Parameter* y = nullptr;
        Parameter* value = nullptr;
        // What has been written since the last frame.
        std::vector<std::uint16_t> line;
        std::vector<std::vector<std::uint16_t>> lines;

        bool injects() const { return (integerOf(mode) & 1) != 0; }
        bool monitors() const { return value != nullptr && (integerOf(mode) & 2) != 0; }
    };

    static Point pointOf(const Find& find, const std::string& number);
    void followModes();
    /// False, with a message, if the point takes nothing now.
    bool canSend(const Point& point);
    void insertFile(Point& point);
    scenes::Picture pictureFor(const Point& point, const std::string& file) const;
    scenes::Picture rawPicture(const Point& point, const std::string& file) const;
    void addPixel(Point& point);
    void endLine(Point& point);
    std::uint32_t widthAt(const Point& point) const;
    void send(Point& point, scenes::Picture picture);
    void endFrame(bool whole);
    static void setReady(const Point& point, bool ready);

    Switchboard* switchboard_ = nullptr;
    CameraPort* port_ = nullptr;
    FrameAssembler* assembler_ = nullptr;
    PixelSettings* settings_ = nullptr;
    const Parameter* parallelism_ = nullptr;
    std::vector<Point> points_;
    std::string message_;

    // The frame that is being sent.
    Point* sender_ = nullptr;
    std::shared_ptr<const pixels::Settings> frameSettings_;
    std::uint32_t lineCount_ = 0;
    std::uint32_t line_ = 0;  ///< the one that comes next
    Tick lineTicks_ = 1;
    Tick nextLine_ = Never;
};

}  // namespace softboard
