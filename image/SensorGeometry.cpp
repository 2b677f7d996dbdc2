#include "image/SensorGeometry.h"

#include <array>

#include "design/HandlerFrame.h"
#include "image/PixelFormat.h"

namespace quillon {

namespace {

constexpr bool isRight(std::uint32_t vantagePoint) {
    return vantagePoint == FG_VANTAGEPOINT_TOP_RIGHT || vantagePoint == FG_VANTAGEPOINT_BOTTOM_RIGHT;
}

constexpr bool isBottom(std::uint32_t vantagePoint) {
    return vantagePoint == FG_VANTAGEPOINT_BOTTOM_LEFT || vantagePoint == FG_VANTAGEPOINT_BOTTOM_RIGHT;
}

/// The bits that the buffer is told for a pixel format of the RGB family, by the code's low nibble.
std::uint32_t bufferBits(std::uint32_t pixelFormat) {
    constexpr std::array<std::uint32_t, 6> bitsByNibble = {64, 8, 10, 12, 14, 16};
    constexpr std::uint32_t rgbFamily = 4;
    const std::uint32_t nibble = pixelFormat & 0xFU;
    require(pixelFormat >> 8U == rgbFamily && nibble < bitsByNibble.size(), ValueNotInList);
    return bitsByNibble[nibble];
}

}  // namespace

void SensorGeometry::setWidth(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.width, value, reportErrors,
        [&] {
            requireRange(value, MinWidth, MaxRoiWidth - geometry_.xOffset);
            require(value % Alignment == 0, ValueNotAligned);
        },
        [&](std::uint32_t previous) {
            requireRoiFits();
            pushTopLeft(previous);
            refreshMaxima({FG_SENSORWIDTH, FG_SENSORHEIGHT, FG_HEIGHT, FG_XOFFSET, FG_YOFFSET});
        });
}

void SensorGeometry::setHeight(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.height, value, reportErrors, [&] { requireRange(value, 1U, MaxRoiHeight); },
        [&](std::uint32_t previous) {
            pushTopLeft(previous);
            triggerBlock_.send();
            refreshMaxima({FG_WIDTH, FG_XOFFSET, FG_YOFFSET});
        });
}

void SensorGeometry::setXOffset(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.xOffset, value, reportErrors,
        [&] {
            requireRange(value, 0U, xOffsetLimit());
            require(value % Alignment == 0, ValueNotAligned);
        },
        [&](std::uint32_t previous) {
            requireRoiFits();
            pushTopLeft(previous);
            refreshMaxima({FG_SENSORWIDTH, FG_SENSORHEIGHT, FG_WIDTH});
        });
}

void SensorGeometry::setYOffset(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.yOffset, value, reportErrors, [&] { requireRange(value, 0U, MaxRoiHeight); },
        [&](std::uint32_t previous) {
            pushTopLeft(previous);
            triggerBlock_.send();
            refreshMaxima({FG_SENSORHEIGHT, FG_HEIGHT});
        });
}

void SensorGeometry::setSensorWidth(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.sensorWidth, value, reportErrors,
        [&] {
            readParallelismAndMemorySize();
            requireRange(value, MinWidth, MaxRoiWidth);
        },
        [&](std::uint32_t previous) {
            requireRoiFits();
            pushTopLeft(previous);
            refreshMaxima({FG_SENSORHEIGHT, FG_WIDTH, FG_HEIGHT, FG_XOFFSET, FG_YOFFSET});
        });
}

void SensorGeometry::setSensorHeight(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.sensorHeight, value, reportErrors,
        [&] {
            readMemorySize();
            requireRange(value, 1U, MaxRoiHeight);
        },
        [&](std::uint32_t previous) {
            pushTopLeft(previous);
            refreshMaxima({FG_SENSORWIDTH, FG_WIDTH, FG_HEIGHT, FG_XOFFSET, FG_YOFFSET});
        });
}

void SensorGeometry::setVantagePoint(std::uint32_t value, bool reportErrors) {
    const bool right = isRight(value);
    const bool bottom = isBottom(value);
    changeField(
        geometry_.vantagePoint, value, reportErrors,
        [&] { requireRange<std::uint32_t>(value, FG_VANTAGEPOINT_TOP_LEFT, FG_VANTAGEPOINT_BOTTOM_RIGHT); },
        [&](std::uint32_t previous) {
            const std::uint32_t roiRight = geometry_.width + geometry_.xOffset;
            require(roiRight <= (right ? geometry_.sensorWidth : MaxRoiWidth), ValueOutOfRange);
            require(!bottom || geometry_.sensorHeight >= geometry_.height + geometry_.yOffset, ValueOutOfRange);
            pushBuffer(right ? geometry_.sensorWidth : roiRight, bottom ? geometry_.sensorHeight : 1, right ? 1 : 0,
                       bottom ? 1 : 0, previous);
            refreshMaxima({FG_XOFFSET});
        });
}

void SensorGeometry::setPixelFormat(std::uint32_t value, bool reportErrors) {
    changeField(
        geometry_.pixelFormat, value, reportErrors, [&] { requireRange<std::uint32_t>(value, RGB8, RGB16); },
        [&](std::uint32_t previous) {
            // The buffer takes the format twice: here, and again among its eight parameters.
            design_.writeUnsigned(Ix::Buffer_0_PixelFormat, bufferBits(value));
            pushTopLeft(previous);
            refreshMaxima({FG_SENSORWIDTH, FG_SENSORHEIGHT, FG_WIDTH, FG_HEIGHT, FG_XOFFSET, FG_YOFFSET});
        });
}

void SensorGeometry::pushBuffer(std::uint32_t sensorWidth, std::uint32_t sensorHeight, std::uint32_t xMirror,
                                std::int32_t yMirror, std::uint32_t previousValue) {
    design_.writeUnsigned(Ix::Buffer_0_SensorWidth, sensorWidth);
    const auto writeSensorHeight = [&] { design_.writeUnsigned(Ix::Buffer_0_SensorHeight, sensorHeight); };
    // The old value of whatever is being set decides whether the height goes ahead of the mirrors or behind them.
    const bool heightFirst = previousValue <= 1;
    if (heightFirst) {
        writeSensorHeight();
    }
    design_.writeUnsigned(Ix::Buffer_0_XMirror, xMirror);
    design_.writeSigned(Ix::Buffer_0_YMirror, yMirror);
    if (!heightFirst) {
        writeSensorHeight();
    }
    design_.writeUnsigned(Ix::Buffer_0_PixelFormat, pixelFormatBits(geometry_.pixelFormat).bitsPerComponent);
    design_.writeUnsigned(Ix::Buffer_0_XLength, geometry_.width);
    design_.writeUnsigned(Ix::Buffer_0_XOffset, geometry_.xOffset);
    design_.writeUnsigned(Ix::Buffer_0_YLength, geometry_.height);
}

/// The form that all handlers but setVantagePoint send, whatever the vantage point is: it clears the design's mirroring
/// while FG_VANTAGEPOINT still reads as set, until the next write of it.
void SensorGeometry::pushTopLeft(std::uint32_t previousValue) {
    pushBuffer(geometry_.width + geometry_.xOffset, 1, 0, 0, previousValue);
}

void SensorGeometry::requireRoiFits() const {
    require(geometry_.width + geometry_.xOffset <= MaxRoiWidth, ValueOutOfRange);
}

std::uint32_t SensorGeometry::xOffsetLimit() {
    const std::uint32_t vantagePoint = geometry_.vantagePoint;
    // Read for the bottom right too, where it bounds nothing: a design that cannot answer refuses the offset there as
    // well.
    const std::uint32_t capacity = isBottom(vantagePoint) ? bufferCapacity() : 0;
    // The subtractions wrap: a width above the bound gives a limit that refuses nothing.
    if (isRight(vantagePoint)) {
        return geometry_.sensorWidth - geometry_.width;
    }
    if (isBottom(vantagePoint) && capacity <= MaxRoiWidth) {
        return capacity - geometry_.width;
    }
    return MaxRoiWidth - geometry_.width;
}

/// How many pixels of a line the memory holds, for as many lines as the sensor has; 0 where the design or the state
/// make no sense.
std::uint32_t SensorGeometry::bufferCapacity() {
    const std::uint64_t addressWidth = design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_0_RamAddressWidth);
    const std::uint64_t dataWidth = design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_0_RamDataWidth);
    const std::uint64_t halfAddresses = addressWidth < 64 ? (std::uint64_t{1} << addressWidth) / 2 : 0;
    const std::uint64_t bitsPerPixel = pixelFormatBits(geometry_.pixelFormat).bitsPerPixel();
    const std::uint64_t paddedHeight = geometry_.sensorHeight + dataWidth - 1;
    if (bitsPerPixel == 0 || paddedHeight == 0) {
        return 0;
    }
    return static_cast<std::uint32_t>(3 * dataWidth * halfAddresses / bitsPerPixel / paddedHeight);
}

void SensorGeometry::readMemorySize() {
    design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_0_RamAddressWidth);
    design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_0_RamDataWidth);
}

void SensorGeometry::readParallelismAndMemorySize() {
    design_.readUnsigned(Ix::Buffer_0_LinkPixelSpace_Parallelism);
    readMemorySize();
}

void SensorGeometry::refreshMaxima(std::initializer_list<FgParameterId> parameters) {
    for (const FgParameterId parameter : parameters) {
        refreshLimit([&] { records_.setMaximum(parameter, publishedMaximum(parameter)); });
    }
}

/// The sensor sizes depend on the design in that it must answer: what it answers bounds nothing.
std::uint32_t SensorGeometry::publishedMaximum(FgParameterId parameter) {
    switch (parameter) {
        case FG_SENSORWIDTH: readParallelismAndMemorySize(); return MaxRoiWidth;
        case FG_SENSORHEIGHT: readMemorySize(); return MaxRoiHeight;
        case FG_WIDTH: return MaxRoiWidth - geometry_.xOffset;
        case FG_XOFFSET: return xOffsetLimit();
        default: return MaxRoiHeight;
    }
}

}  // namespace quillon
