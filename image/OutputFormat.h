#pragma once

#include <cstdint>
#include <string>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// The order in which colour lines arrive, and the way that the processed pixels leave: branch, alignment and bit
/// shift.
///
/// Which output branches there are is told by texts of the design. A refused value fails with ValueOutOfRange;
/// InternalFailure marks a design parameter that can't be reached.
class OutputFormat {
public:
    OutputFormat(AppletState& state, DesignParameters& design, ParameterRecords& records)
        : format_(state.outputFormat), table_(state.outputFormatTable), design_(design), records_(records) {}

    /// Reads the table of output branches from the design. A failure ends the reading in silence, with the table as far
    /// as it got; the writes that need what is missing fail then.
    void buildOutputFormatTable();

    /// FG_LINEORDER: FG_LINEORDER_...
    void setLineOrder(std::uint32_t value, bool reportErrors);
    /// FG_FORMAT: FG_COL24 to FG_COL48.
    void setOutputFormat(std::uint32_t value, bool reportErrors);
    /// FG_BITALIGNMENT: FG_..._ALIGNED or FG_CUSTOM_BIT_SHIFT_MODE.
    void setBitAlignment(std::uint32_t value, bool reportErrors);
    /// FG_CUSTOM_BIT_SHIFT_RIGHT: bits, 0 to maxCustomShift of the output format.
    void setCustomBitShift(std::uint32_t value, bool reportErrors);

private:
    void readBranch(int index);
    void applyOutputFormat();
    std::int32_t shiftFor(std::int32_t selectedBits) const;

    OutputFormatState& format_;
    OutputFormatTable& table_;
    DesignParameters& design_;
    ParameterRecords& records_;
};

}  // namespace quillon
