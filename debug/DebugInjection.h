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

    void setDebugSource(std::uint32_t value);                        ///< index of a debug point
    void setDebugInEnable(std::uint32_t value, bool reportErrors);   ///< FG_ON, FG_OFF
    void setDebugFile(const char* path, bool reportErrors);          ///< the file to inject
    void setDebugInsert(std::uint32_t value);                        ///< FG_APPLY
    void setDebugWritePixel(std::uint64_t value);                    ///< 57 bits
    void setDebugWriteFlag(std::uint32_t value, bool reportErrors);  ///< FG_ENDOFLINE, FG_ENDOFFRAME
    void setDebugOutEnable(std::uint32_t value);  ///< FG_ON, FG_OFF; sent only where the point shows pixels
    void setDebugSaveConfig(const char* path);    ///< has the SDK save its own configuration

    const std::string& sourceName() const { return chosen().name; }
    std::uint32_t readInEnable() const;
    std::uint32_t readOutEnable() const;
    std::uint32_t readOutXPosition() const;  ///< 0 where the point shows no pixels, as for the next two
    std::uint32_t readOutYPosition() const;
    std::uint32_t readOutPixel() const;
    std::uint32_t readReady() const;
    std::string readFile() const;  ///< from the design, not as remembered

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
