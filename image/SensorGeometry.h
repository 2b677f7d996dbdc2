#pragma once

#include <cstdint>
#include <initializer_list>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"
#include "trigger/TriggerBlock.h"

namespace quillon {

/// Sensor size, region of interest, vantage point and pixel format, and the eight buffer parameters that they turn
/// into.
///
/// Every handler sends all eight, not only the one that changed. A refused value fails with ValueOutOfRange or
/// ValueNotAligned and changes nothing.
class SensorGeometry {
public:
    SensorGeometry(AppletState& state, DesignParameters& design, ParameterRecords& records,
                   const TriggerBlock& triggerBlock)
        : geometry_(state.geometry), design_(design), records_(records), triggerBlock_(triggerBlock) {}

    static constexpr std::uint32_t MaxRoiWidth = 16384;  ///< pixels; bounds the sensor width and width plus offset
    static constexpr std::uint32_t MaxRoiHeight = TriggerBlock::MaxRoiHeight;
    static constexpr std::uint32_t MinWidth = 4;
    static constexpr std::uint32_t Alignment = 4;  ///< of width and horizontal offset, pixels

    /// FG_WIDTH: 4 to 16384 - xOffset pixels, a multiple of 4.
    void setWidth(std::uint32_t value, bool reportErrors);
    /// FG_HEIGHT: 1 to 1398101 lines.
    void setHeight(std::uint32_t value, bool reportErrors);
    /// FG_XOFFSET: 0 to xOffsetLimit() pixels, a multiple of 4.
    void setXOffset(std::uint32_t value, bool reportErrors);
    /// FG_YOFFSET: 0 to 1398101 lines.
    void setYOffset(std::uint32_t value, bool reportErrors);
    /// FG_SENSORWIDTH: 4 to 16384 pixels.
    void setSensorWidth(std::uint32_t value, bool reportErrors);
    /// FG_SENSORHEIGHT: 1 to 1398101 lines.
    void setSensorHeight(std::uint32_t value, bool reportErrors);
    /// FG_VANTAGEPOINT: FG_VANTAGEPOINT_...; bit 0: right, bit 1: bottom.
    void setVantagePoint(std::uint32_t value, bool reportErrors);
    /// FG_PIXELFORMAT: RGB8 to RGB16.
    void setPixelFormat(std::uint32_t value, bool reportErrors);

    /// The largest horizontal offset now, pixels. Reads the memory size from the design while the vantage point is at
    /// the bottom.
    std::uint32_t xOffsetLimit();

private:
    void pushBuffer(std::uint32_t sensorWidth, std::uint32_t sensorHeight, std::uint32_t xMirror, std::int32_t yMirror,
                    std::uint32_t previousValue);
    void pushTopLeft(std::uint32_t previousValue);
    void requireRoiFits() const;
    std::uint32_t bufferCapacity();
    void readMemorySize();
    void readParallelismAndMemorySize();
    void refreshMaxima(std::initializer_list<FgParameterId> parameters);
    std::uint32_t publishedMaximum(FgParameterId parameter);

    GeometryState& geometry_;
    DesignParameters& design_;
    ParameterRecords& records_;
    const TriggerBlock& triggerBlock_;
};

}  // namespace quillon
