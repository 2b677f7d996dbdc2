#include "softboard/src/PixelSettings.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace softboard {
namespace {

const std::string Process0 = "Device1_Process0_";

std::string textOf(const Parameter* parameter) {
    std::string text;
    if (parameter != nullptr) {
        parameter->text(text);
    }
    return text;
}

/// The number at the end of a text, 0 if there is none: "FG_COL30" is 30.
std::uint32_t numberAtTheEnd(const std::string& text) {
    const std::size_t begin = text.find_last_not_of("0123456789") + 1;
    std::uint32_t number = 0;
    std::from_chars(text.data() + begin, text.data() + text.size(), number);
    return number;
}

std::uint32_t unsignedOf(const Parameter* parameter, std::uint32_t otherwise) {
    return parameter != nullptr ? static_cast<std::uint32_t>(integerOf(parameter)) : otherwise;
}

}  // namespace

const Parameter* PixelSettings::depend(const Find& find, const std::string& name) {
    const Parameter* const parameter = watched(find, Process0 + name);
    if (parameter != nullptr) {
        dependencies_.push_back(parameter);
    }
    return parameter;
}

void PixelSettings::bind(const Find& find) {
    const bool redFirst = redFirst_;
    const std::uint32_t version = version_;
    auto scene = std::move(scene_);
    *this = PixelSettings();
    scene_ = std::move(scene);
    redFirst_ = redFirst;
    version_ = version;
    pixelFormat_ = depend(find, "Buffer_0_PixelFormat");
    enableX_ = depend(find, "CameraSimulator_EnableX_Enable_Value");
    yDivisor_ = depend(find, "CameraSimulator_Y_Divisor");
    frameDivisor_ = depend(find, "CameraSimulator_Frame_Divisor");
    offset_ = depend(find, "CameraSimulator_Offset_Value");
    sensorWidth_ = depend(find, "Buffer_0_SensorWidth");
    xMirror_ = depend(find, "Buffer_0_XMirror");
    yMirror_ = depend(find, "Buffer_0_YMirror");
    xOffset_ = depend(find, "Buffer_0_XOffset");
    xLength_ = depend(find, "Buffer_0_XLength");
    lookup_ = depend(find, "LookupTable_EnableLUT_Value");
    shift_ = depend(find, "OutputFormat_DynamicShift_Shift_Value");
    format_ = depend(find, "OutputFormat_FG_FORMAT_SelectSource");
    const std::array<std::string, pixels::Colours> names = {"Red", "Green", "Blue"};
    const std::array<std::string, pixels::Colours> letters = {"R", "G", "B"};
    for (std::size_t colour = 0; colour < pixels::Colours; ++colour) {
        order_[colour] =
            depend(find, "Camera_SortImage_ColorInterpret_SelectComponents_" + names[colour] + "Component");
        coefficient_[colour] = depend(find, "WhiteBalance_White_" + names[colour] + "Coefficient");
        tables_[colour].parameter = watched(find, Process0 + "LookupTable_" + letters[colour] + "_LUTcontent");
    }
    const std::string inputs = Process0 + "OutputFormat_FG_FORMAT_Input";
    for (std::uint32_t branch = 0;; ++branch) {
        const std::string number = std::to_string(branch);
        const Parameter* const input = find(inputs + number);
        if (input == nullptr) {
            break;
        }
        branches_.push_back({numberAtTheEnd(textOf(input)) / static_cast<std::uint32_t>(pixels::Colours),
                             depend(find, "OutputFormat_Convert" + number + "_VirtualTrash_EnableTrash_Value")});
    }
}

void PixelSettings::written(const Parameter& parameter) {
    for (BoundTable& table : tables_) {
        if (table.parameter == &parameter) {
            table.stale = true;
            stale_ = true;
            return;
        }
    }
    stale_ = stale_ || std::find(dependencies_.begin(), dependencies_.end(), &parameter) != dependencies_.end();
}

void PixelSettings::setSimulator(bool simulator) {
    stale_ = stale_ || simulator != simulator_;
    simulator_ = simulator;
}

void PixelSettings::setScene(std::shared_ptr<pixels::Scene> scene) {
    stale_ = stale_ || scene != scene_;
    scene_ = std::move(scene);
}

void PixelSettings::setRedFirst(bool redFirst) {
    stale_ = stale_ || redFirst != redFirst_;
    redFirst_ = redFirst;
}

const std::shared_ptr<const pixels::Settings>& PixelSettings::current() {
    if (stale_) {
        take();
        stale_ = false;
    }
    return current_;
}

std::uint32_t PixelSettings::formatBits() const {
    const auto selected = static_cast<std::size_t>(integerOf(format_));
    if (selected >= branches_.size() || integerOf(branches_[selected].trash) == 1) {
        return 0;
    }
    return branches_[selected].bits;
}

void PixelSettings::take() {
    auto settings = std::make_shared<pixels::Settings>();
    settings->version = ++version_;
    settings->bits = unsignedOf(pixelFormat_, settings->bits);
    settings->scene = scene_;
    settings->simulator = simulator_;
    settings->ramp.enableX = integerOf(enableX_) == 1;
    settings->ramp.yDivisor = unsignedOf(yDivisor_, 1);
    settings->ramp.frameDivisor = unsignedOf(frameDivisor_, 1);
    settings->ramp.offset = unsignedOf(offset_, 0);
    settings->sensorWidth = unsignedOf(sensorWidth_, 0);
    settings->xMirror = integerOf(xMirror_) == 1;
    settings->yMirror = integerOf(yMirror_) == 1;
    settings->xOffset = unsignedOf(xOffset_, 0);
    settings->xLength = unsignedOf(xLength_, settings->sensorWidth);
    settings->lookup = integerOf(lookup_) == 1;
    for (std::size_t colour = 0; colour < pixels::Colours; ++colour) {
        settings->order[colour] = unsignedOf(order_[colour], static_cast<std::uint32_t>(colour));
        settings->coefficient[colour] = coefficient_[colour] != nullptr ? realOf(coefficient_[colour]) : 1.0;
        BoundTable& table = tables_[colour];
        if (settings->lookup && table.parameter != nullptr) {
            if (table.stale) {
                auto content = std::make_shared<pixels::Table>();
                table.parameter->copyTable(*content);
                table.content = std::move(content);
                table.stale = false;
            }
            settings->table[colour] = table.content;
        }
    }
    settings->shift = unsignedOf(shift_, 0);
    settings->formatBits = formatBits();
    settings->redFirst = redFirst_;
    current_ = std::move(settings);
}

}  // namespace softboard
