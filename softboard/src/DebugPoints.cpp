#include "softboard/src/DebugPoints.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "softboard/scenes/PictureScene.h"
#include "softboard/softboard.h"

namespace softboard {
namespace {

const std::string Process0 = "Device1_Process0_";

constexpr std::size_t Colours = pixels::Colours;
constexpr double PixelsPerMm = 10.0;
constexpr std::int64_t NanometresPerLine = 100'000;  // of a scene with so many pixels

std::string textOf(const Find& find, const std::string& name) {
    std::string text;
    if (const Parameter* const parameter = find(Process0 + name)) {
        parameter->text(text);
    }
    return text;
}

}  // namespace

void DebugPoints::bind(const Find& find, Switchboard& switchboard, CameraPort& port, FrameAssembler& frames,
                       PixelSettings& settings) {
    *this = DebugPoints();
    switchboard_ = &switchboard;
    port_ = &port;
    assembler_ = &frames;
    settings_ = &settings;
    parallelism_ = find(Process0 + "Buffer_0_LinkPixelSpace_Parallelism");
    const std::string entries = textOf(find, "Debug_Entries");
    for (char number = '0'; !entries.empty() && number < entries.front() && number <= '9'; ++number) {
        points_.push_back(pointOf(find, std::string(1, number)));
    }
    followModes();
}

DebugPoints::Point DebugPoints::pointOf(const Find& find, const std::string& number) {
    Point point;
    point.name = textOf(find, "Debug_N" + number);
    const std::string path = textOf(find, "Debug_P" + number);
    const std::string stem = Process0 + path;
    point.atOutput = path.ends_with("ImageOutput");
    point.mode = watched(find, stem + "_OperationMode");
    point.file = find(stem + "_DebugFile");
    point.insert = watched(find, stem + "_Insert");
    point.writePixel = watched(find, stem + "_Inject_WritePixel");
    point.writeFlag = watched(find, stem + "_Inject_WriteFlag");
    point.ready = find(stem + "_Inject_ReadyForInjection");
    if (textOf(find, "Debug_T" + number) == "InjectMonitor") {
        point.x = find(stem + "_XPosition");
        point.y = find(stem + "_YPosition");
        point.value = find(stem + "_PixelValue");
    }
    return point;
}

void DebugPoints::written(const Parameter& parameter) {
    for (Point& point : points_) {
        if (&parameter == point.mode) {
            followModes();
        } else if (&parameter == point.insert && integerOf(point.insert) == 1) {
            insertFile(point);
        } else if (&parameter == point.writePixel) {
            addPixel(point);
        } else if (&parameter == point.writeFlag) {
            endLine(point);
        }
    }
}

void DebugPoints::followModes() {
    bool camera = false;
    bool output = false;
    for (Point& point : points_) {
        (point.atOutput ? output : camera) |= point.injects();
        if (!point.injects()) {
            point.line.clear();
            point.lines.clear();
        }
    }
    if (sender_ != nullptr && !sender_->injects()) {
        endFrame(false);
    }
    port_->cutOff(camera);
    assembler_->cutOff(camera || output, switchboard_->now());
}

bool DebugPoints::canSend(const Point& point) {
    if (!point.injects()) {
        message_ = "debug point \"" + point.name + "\": its input is switched off";
    } else if (sender_ != nullptr) {
        message_ = "debug point \"" + point.name + "\": a frame is still being inserted";
    } else {
        return true;
    }
    return false;
}

// ---- Files ----

void DebugPoints::insertFile(Point& point) {
    if (!canSend(point)) {
        return;
    }
    std::string file;
    if (point.file != nullptr) {
        point.file->text(file);
    }
    try {
        send(point, pictureFor(point, file));
    } catch (const scenes::PictureError& error) {
        message_ = "debug point \"" + point.name + "\": " + error.what();
    }
}

scenes::Picture DebugPoints::pictureFor(const Point& point, const std::string& file) const {
    if (file.empty()) {
        throw scenes::PictureError("no file is given");
    }
    std::array<std::byte, 8> head{};
    std::error_code error;
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file, error)) {
        stream.open(file, std::ios::binary);
        stream.read(reinterpret_cast<char*>(head.data()), head.size());
    }
    // What cannot be opened is left to the reader of pictures, which tells why.
    const bool raw = stream.is_open() && !scenes::looksLikePicture(head);
    return raw ? rawPicture(point, file) : scenes::readPicture(file);
}

/// Words of 16 bits, low byte first, three for a pixel.
scenes::Picture DebugPoints::rawPicture(const Point& point, const std::string& file) const {
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(file, error);
    const std::uint64_t lineBytes = std::uint64_t{widthAt(point)} * Colours * sizeof(std::uint16_t);
    if (error || size == 0 || lineBytes == 0 || size % lineBytes != 0 ||
        size / lineBytes * widthAt(point) > scenes::MostPixels) {
        throw scenes::PictureError(file + ": neither a picture (PNG, PNM) nor whole lines of " +
                                   std::to_string(widthAt(point)) + " pixels of three 16-bit words, at most " +
                                   std::to_string(scenes::MostPixels) + " pixels");
    }
    scenes::Picture picture{widthAt(point), static_cast<std::uint32_t>(size / lineBytes), 16, {}};
    picture.pixels.resize(static_cast<std::size_t>(size));
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(reinterpret_cast<char*>(picture.pixels.data()), static_cast<std::streamsize>(size))) {
        throw scenes::PictureError(file + ": cannot be read");
    }
    return picture;
}

// ---- Pixels ----

void DebugPoints::addPixel(Point& point) {
    if (!canSend(point)) {
        return;
    }
    const auto pixel = static_cast<std::uint64_t>(integerOf(point.writePixel));
    if (point.line.size() < std::size_t{widthAt(point)} * Colours) {
        for (unsigned colour = 0; colour < Colours; ++colour) {
            point.line.push_back(static_cast<std::uint16_t>(pixel >> (16 * colour)));
        }
    }
}

void DebugPoints::endLine(Point& point) {
    if (!canSend(point)) {
        return;
    }
    const std::uint32_t width = widthAt(point);
    const bool endOfFrame = integerOf(point.writeFlag) == 1;
    if (!endOfFrame || !point.line.empty()) {
        if ((point.lines.size() + 1) * width > scenes::MostPixels) {
            message_ = "debug point \"" + point.name + "\": a frame has at most " + std::to_string(scenes::MostPixels) +
                       " pixels";
            return;
        }
        point.line.resize(std::size_t{width} * Colours);
        point.lines.push_back(std::exchange(point.line, {}));
    }
    if (endOfFrame && !point.lines.empty() && width != 0) {
        scenes::Picture picture{width, static_cast<std::uint32_t>(point.lines.size()), 16, {}};
        for (std::vector<std::uint16_t>& line : point.lines) {
            line.resize(std::size_t{width} * Colours);
            const auto bytes = std::as_bytes(std::span(line));
            picture.pixels.insert(picture.pixels.end(), bytes.begin(), bytes.end());
        }
        point.lines.clear();
        send(point, std::move(picture));
    }
}

// ---- Sending ----

std::uint32_t DebugPoints::widthAt(const Point& point) const {
    const pixels::Settings settings = pixels::effective(*settings_->current());
    return point.atOutput ? std::min(settings.xLength, pixels::MostSensorPixels) : settings.sensorWidth;
}

void DebugPoints::send(Point& point, scenes::Picture picture) {
    sender_ = &point;
    line_ = 0;
    lineCount_ = picture.height;
    const std::uint32_t width = widthAt(point);
    frameSettings_ = settings_->derive([&](pixels::Settings& settings) {
        settings.simulator = false;
        settings.bits = 16;
        settings.scene = std::make_shared<scenes::PictureScene>(std::move(picture), false, PixelsPerMm);
        if (point.atOutput) {
            // What lies before the output does not act.
            settings.order = {0, 1, 2};
            settings.sensorWidth = width;
            settings.xMirror = false;
            settings.yMirror = false;
            settings.xOffset = 0;
            settings.coefficient = {1.0, 1.0, 1.0};
            settings.lookup = false;
        }
    });
    lineTicks_ = std::max<Tick>(width / std::max<std::int64_t>(integerOf(parallelism_), 1), 1);
    nextLine_ = switchboard_->now() + lineTicks_;
    setReady(point, false);
}

void DebugPoints::happen() {
    const Tick now = switchboard_->now();
    const bool camera = !sender_->atOutput;
    if (line_ == 0) {
        assembler_->beginInjected(frameSettings_);
        if (camera) {
            switchboard_->setLevel(SOFTBOARD_FVAL, true);
            switchboard_->pulse(SOFTBOARD_FRAME_START);
        }
    }
    if (camera) {
        switchboard_->pulse(SOFTBOARD_LINE_START);
        switchboard_->pulse(SOFTBOARD_LINE_END);
    }
    assembler_->injectLine({.tick = now,
                            .position = line_ * NanometresPerLine,
                            .settings = frameSettings_->version,
                            .exposure = 0,
                            .flash = 0,
                            .inverted = 0},
                           now);
    if (++line_ < lineCount_) {
        nextLine_ = now + lineTicks_;
    } else {
        endFrame(true);
    }
}

/// The frame that is sent is over, or is given up.
void DebugPoints::endFrame(bool whole) {
    if (whole) {
        assembler_->endInjected(switchboard_->now());
    }
    if (!sender_->atOutput && line_ != 0) {
        switchboard_->setLevel(SOFTBOARD_FVAL, false);
        switchboard_->pulse(SOFTBOARD_FRAME_END);
    }
    setReady(*sender_, true);
    sender_ = nullptr;
    nextLine_ = Never;
}

void DebugPoints::setReady(const Point& point, bool ready) {
    if (point.ready != nullptr) {
        point.ready->setInteger(ready ? 1 : 0);
    }
}

// ---- What passes ----

void DebugPoints::passed(const pixels::LastPixel& pixel) {
    for (const Point& point : points_) {
        if (!point.monitors()) {
            continue;
        }
        if (point.x != nullptr && point.y != nullptr) {
            point.x->setInteger(pixel.x);
            point.y->setInteger(pixel.y);
        }
        point.value->setInteger(pixel.rgb[0] | pixel.rgb[1] << 8 | pixel.rgb[2] << 16);
    }
}

}  // namespace softboard
