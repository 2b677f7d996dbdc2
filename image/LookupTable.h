#pragma once

#include <cstdint>
#include <string>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// The lookup tables: 16384 entries of 16 bits per colour, computed from offset, gain, gamma and invert, or loaded from
/// a `.lut` file, or written entry by entry.
///
/// A refused value fails with ValueOutOfRange; a file that does not exist with FileNotFound, one that can't be read or
/// written with FileNotWritten.
class LookupTable {
public:
    using Table = LookupTableState::Table;
    using Channel = LookupTableState::Channel;
    static constexpr std::uint32_t EntryCount = LookupTableState::EntryCount;
    static constexpr std::uint32_t MaxValue = 65535;

    LookupTable(AppletState& state, DesignParameters& design, ParameterRecords& records)
        : lut_(state.lookupTable), design_(design), records_(records) {}

    /// FG_LUT_ENABLE: FG_ON, FG_OFF.
    void setLutEnable(std::uint32_t value, bool reportErrors);
    /// FG_LUT_TYPE: LUT_TYPE_PROCESSING, LUT_TYPE_CUSTOM.
    void setLutType(std::uint32_t value, bool reportErrors);
    /// FG_PROCESSING_OFFSET: -1 to 1.
    void setProcessingOffset(double value);
    /// FG_PROCESSING_GAIN: 0 to 16384.
    void setProcessingGain(double value);
    /// FG_PROCESSING_GAMMA: -1000 to 1000.
    void setProcessingGamma(double value);
    /// FG_PROCESSING_INVERT: FG_ON, FG_OFF.
    void setProcessingInvert(std::uint32_t value);
    /// FG_LUT_CUSTOM_FILE: loads the file where the type is LUT_TYPE_CUSTOM.
    void setLutCustomFile(const char* path);
    /// FG_LUT_SAVE_FILE: saves the tables to the file.
    void setLutSaveFile(const char* path);

    /// FG_LUT_VALUE_RED, FG_LUT_VALUE_GREEN, FG_LUT_VALUE_BLUE: entries of one colour, in the applet's table and the
    /// design's. InvalidParameter for a width of values that the tables don't have.
    void setLutValue(Channel channel, const FieldParameterInt_s* record);
    void setLutValue(Channel channel, const FieldParameterAccess* record);
    void getLutValue(Channel channel, FieldParameterInt_s* record) const;
    void getLutValue(Channel channel, const FieldParameterAccess* record) const;

    /// The processing curve of `state` into `table`.
    static void computeLut(const LookupTableState& state, Table& table);

private:
    template <class Value>
    void changeProcessing(Value& field, Value value, Value low, Value high);
    void pushProcessingLut();
    void loadLutFile(const std::string& path);
    void writeDesignTables();
    void publishProcessingAccess();

    LookupTableState& lut_;
    DesignParameters& design_;
    ParameterRecords& records_;
};

}  // namespace quillon
