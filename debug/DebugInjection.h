#pragma once

#include <cstdint>
#include <string>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// The design's debug points: places where a file or single pixels can be injected into the image path, some of which
/// also show what passes. One of them is chosen, and all but the choice itself works on it, through design parameters
/// whose names are composed at every use.
///
/// A refused value fails with ValueOutOfRange, an access that the design refuses with InternalFailure; but the read of
/// the operation mode in setDebugInEnable fails with the SDK's own code.
class DebugInjection {
public:
    DebugInjection(AppletState& state, DesignParameters& design, ParameterRecords& records, FgIxWrapper& wrapper)
        : debug_(state.debug), table_(state.debugTable), design_(design), records_(records), wrapper_(wrapper) {}

    /// Reads the debug points from the design's texts. A failure ends the reading in silence, with the table as far as
    /// it got.
    void buildDebugTable();

    /// FG_DEBUGSOURCE: index of a debug point.
    void setDebugSource(std::uint32_t value);
    /// FG_DEBUGINENABLE: FG_ON, FG_OFF.
    void setDebugInEnable(std::uint32_t value, bool reportErrors);
    /// FG_DEBUGFILE: the file to inject.
    void setDebugFile(const char* path, bool reportErrors);
    /// FG_DEBUGINSERT: FG_APPLY.
    void setDebugInsert(std::uint32_t value);
    /// FG_DEBUGWRITEPIXEL: 57 bits.
    void setDebugWritePixel(std::uint64_t value);
    /// FG_DEBUGWRITEFLAG: FG_ENDOFLINE, FG_ENDOFFRAME.
    void setDebugWriteFlag(std::uint32_t value, bool reportErrors);
    /// FG_DEBUGOUTENABLE: FG_ON, FG_OFF; sent only where the point shows pixels.
    void setDebugOutEnable(std::uint32_t value);
    /// FG_DEBUGSAVECONFIG: has the SDK save its own configuration.
    void setDebugSaveConfig(const char* path);

    /// FG_DEBUGSOURCENAME: of the chosen point, as the design tells it.
    const std::string& sourceName() const { return chosen().name; }
    /// FG_DEBUGINENABLE: from the design, not as remembered.
    std::uint32_t readInEnable() const;
    /// FG_DEBUGOUTENABLE: from the design; 0 where the point shows no pixels.
    std::uint32_t readOutEnable() const;
    /// FG_DEBUGOUTXPOS: 0 where the point shows no pixels, as for the next two.
    std::uint32_t readOutXPosition() const;
    /// FG_DEBUGOUTYPOS: lines.
    std::uint32_t readOutYPosition() const;
    /// FG_DEBUGOUTPIXEL: the value of the pixel there.
    std::uint32_t readOutPixel() const;
    /// FG_DEBUGREADY: whether the point takes the next pixel.
    std::uint32_t readReady() const;
    /// FG_DEBUGFILE: from the design, not as remembered.
    std::string readFile() const;

private:
    void readEntry(int index);
    const DebugEntry& chosen() const;
    bool isMonitor() const;
    /// The full name of a parameter of the chosen point.
    std::string debugParameterName(const char* suffix) const;
    int parameterId(const char* suffix) const { return design_.idByName(debugParameterName(suffix)); }
    /// Fails with `failure`, or with the SDK's own code where that is Success.
    std::uint32_t read(const char* suffix, int failure) const;
    std::uint32_t readMonitor(const char* suffix) const;
    void write(const char* suffix, const void* value, FgParamTypes type) const;
    std::uint32_t describedPixelMaximum() const;

    DebugState& debug_;
    DebugTable& table_;
    DesignParameters& design_;
    ParameterRecords& records_;
    FgIxWrapper& wrapper_;
};

}  // namespace quillon
