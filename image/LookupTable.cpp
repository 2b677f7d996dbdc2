#include "image/LookupTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "design/HandlerFrame.h"
#include "files/LutFileParser.h"

namespace quillon {

namespace {

constexpr double LargestInput = LookupTable::EntryCount - 1;
static_assert(LookupTable::EntryCount == Fg_LutFileParser::MaxElements);

constexpr std::array<Ix, 3> DesignTables = {Ix::LookupTable_R_LUTcontent, Ix::LookupTable_G_LUTcontent,
                                            Ix::LookupTable_B_LUTcontent};

/// The table is computed in blocks, and each block in loops of one kind of work, which the compiler can vectorise.
constexpr std::size_t BlockSize = 256;
using Block = std::array<double, BlockSize>;
static_assert(LookupTable::EntryCount % BlockSize == 0);

/// Raises the values to the power; one below 0 becomes 0, whatever the exponent.
void raise(Block& values, double exponent) {
    if (exponent == 1.0) {  // pow(v, 1) is v to the bit, for every v
        for (double& v : values) {
            v = v < 0.0 ? 0.0 : v;
        }
        return;
    }
    for (double& v : values) {
        v = v < 0.0 ? 0.0 : std::pow(v, exponent);
    }
}

/// Truncates toward zero; what does not fit becomes the smallest 32-bit value, which the clamp behind turns into 0.
std::int32_t truncateToInt32(double value) {
    constexpr double smallest = std::numeric_limits<std::int32_t>::min();
    const double fitting = value < 2147483648.0 ? value : smallest;  // not a number falls under the second
    return static_cast<std::int32_t>(std::max(fitting, smallest));
}

/// The entry of a value from 0 (black) to 1 (white), held between them.
std::uint32_t entryOf(double value, bool invert) {
    const auto out = static_cast<std::uint32_t>(truncateToInt32(value * LookupTable::MaxValue + 0.5));
    // 32-bit arithmetic, wrapping. The clamp stands behind it, and takes an overflow for a negative value.
    const auto inverted = static_cast<std::int32_t>(invert ? LookupTable::MaxValue - out : out);
    return static_cast<std::uint32_t>(std::clamp<std::int32_t>(inverted, 0, LookupTable::MaxValue));
}

/// The width of the values of a field access, bytes; 0 where nothing is moved.
std::size_t valueSize(FgParamTypes type) {
    switch (type) {
        case FgTypeInt32:
        case FgTypeUInt32: return 4;
        case FgTypeInt64:
        case FgTypeUInt64:
        case FgTypeDouble: return 8;
        default: return 0;
    }
}

/// Whether the entries of `record` lie inside a table.
bool liesInTable(const FieldParameterAccess& record) {
    return record.index < LookupTable::EntryCount && record.count <= LookupTable::EntryCount &&
           record.index <= LookupTable::EntryCount - record.count;
}

}  // namespace

void LookupTable::computeLut(const LookupTableState& state, Table& table) {
    const double offset = state.processingOffset;
    const double gain = state.processingGain;
    const double exponent = 1.0 / state.processingGamma;
    const bool invert = state.processingInvert == FG_ON;
    for (std::size_t first = 0; first < table.size(); first += BlockSize) {
        Block values;
        for (std::size_t i = 0; i < BlockSize; ++i) {
            values[i] = (static_cast<int>(first + i) / LargestInput + offset) * gain;
        }
        raise(values, exponent);
        for (std::size_t i = 0; i < BlockSize; ++i) {
            table[first + i] = entryOf(values[i], invert);
        }
    }
}

void LookupTable::pushProcessingLut() {
    computeLut(lut_, lut_.tables[LookupTableState::lutRed]);
    lut_.tables[LookupTableState::lutGreen] = lut_.tables[LookupTableState::lutRed];
    lut_.tables[LookupTableState::lutBlue] = lut_.tables[LookupTableState::lutRed];
    writeDesignTables();
}

/// The design gets the blue table three times. After a file was loaded, red and green stay in the applet, where reads
/// and saves find them.
void LookupTable::writeDesignTables() {
    FieldParameterAccess all{FgTypeUInt32, 0, EntryCount, lut_.tables[LookupTableState::lutBlue].data()};
    for (const Ix table : DesignTables) {
        design_.write(table, &all, FgTypeFieldAccess);
    }
}

template <class Value>
void LookupTable::changeProcessing(Value& field, Value value, Value low, Value high) {
    changeField(
        field, value, Reporting, [&] { requireRange(value, low, high); },
        [&](Value /*previous*/) {
            if (lut_.lutType == LUT_TYPE_PROCESSING) {
                pushProcessingLut();
            }
        });
}

void LookupTable::setProcessingOffset(double value) {
    changeProcessing(lut_.processingOffset, value, -1.0, 1.0);
}

void LookupTable::setProcessingGain(double value) {
    changeProcessing(lut_.processingGain, value, 0.0, 16384.0);
}

void LookupTable::setProcessingGamma(double value) {
    changeProcessing(lut_.processingGamma, value, -1000.0, 1000.0);
}

void LookupTable::setProcessingInvert(std::uint32_t value) {
    changeProcessing<std::uint32_t>(lut_.processingInvert, value, FG_OFF, FG_ON);
}

void LookupTable::publishProcessingAccess() {
    const int access = lut_.lutEnable == FG_ON && lut_.lutType == LUT_TYPE_PROCESSING ? OpenAccess : ReadOnlyAccess;
    for (const FgParameterId parameter :
         {FG_PROCESSING_GAIN, FG_PROCESSING_GAMMA, FG_PROCESSING_OFFSET, FG_PROCESSING_INVERT}) {
        records_.setAccessFlags(parameter, access);
    }
}

void LookupTable::setLutEnable(std::uint32_t value, bool reportErrors) {
    changeField(
        lut_.lutEnable, value, reportErrors, [&] { requireRange<std::uint32_t>(value, FG_OFF, FG_ON); },
        [&](std::uint32_t /*previous*/) {
            publishProcessingAccess();
            design_.writeUnsigned(Ix::LookupTable_EnableLUT_Value, value);
        });
}

void LookupTable::setLutType(std::uint32_t value, bool reportErrors) {
    changeField(
        lut_.lutType, value, reportErrors,
        [&] {
            requireOneOf<std::uint32_t>(value, {LUT_TYPE_PROCESSING, LUT_TYPE_CUSTOM});
        },
        [&](std::uint32_t /*previous*/) {
            if (value == LUT_TYPE_CUSTOM) {
                loadLutFile(lut_.lutCustomFile);
            } else {
                pushProcessingLut();
            }
            records_.setAccessFlags(FG_LUT_CUSTOM_FILE, value == LUT_TYPE_CUSTOM ? OpenAccess : ReadOnlyAccess);
            publishProcessingAccess();
        });
}

void LookupTable::loadLutFile(const std::string& path) {
    if (lut_.lutType != LUT_TYPE_CUSTOM || path.empty()) {
        return;
    }
    Fg_LutFileParser parser;
    require(parser.checkFileExist(path.c_str()), FileNotFound);
    std::array<LookupTable_s, 3> records{};
    for (std::size_t channel = 0; channel < records.size(); ++channel) {
        records[channel].id = static_cast<std::uint32_t>(channel);
        records[channel].nrOfElements = EntryCount;
    }
    const int result = parser.getLutFromFile(path.c_str(), &records[0], &records[1], &records[2]);
    const std::array<std::unique_ptr<std::uint32_t[]>, 3> buffers = {std::unique_ptr<std::uint32_t[]>(records[0].data),
                                                                     std::unique_ptr<std::uint32_t[]>(records[1].data),
                                                                     std::unique_ptr<std::uint32_t[]>(records[2].data)};
    require(result == Success, FileNotWritten);
    for (std::size_t channel = 0; channel < records.size(); ++channel) {
        // A short file leaves the rest of a table as it was.
        std::copy_n(buffers[channel].get(), std::min(records[channel].nrOfElements, EntryCount),
                    lut_.tables[channel].begin());
    }
    writeDesignTables();
}

void LookupTable::setLutCustomFile(const char* path) {
    require(path != nullptr, ValueOutOfRange);
    changeField(
        lut_.lutCustomFile, std::string(path), Reporting, [] {},
        [&](const std::string& /*previous*/) { loadLutFile(lut_.lutCustomFile); });
}

void LookupTable::setLutSaveFile(const char* path) {
    require(path != nullptr, ValueOutOfRange);
    changeField(
        lut_.lutSaveFile, std::string(path), Reporting, [] {},
        [&](const std::string& /*previous*/) {
            if (lut_.lutSaveFile.empty()) {
                return;
            }
            std::array<LookupTable_s, 3> records{};
            for (std::size_t channel = 0; channel < records.size(); ++channel) {
                records[channel].data = lut_.tables[channel].data();
                records[channel].id = static_cast<std::uint32_t>(channel);
                records[channel].nrOfElements = EntryCount;
            }
            Fg_LutFileParser parser;
            require(parser.saveLutToFile(lut_.lutSaveFile.c_str(), &records[0], &records[1], &records[2]) == Success,
                    FileNotWritten);
        });
}

void LookupTable::setLutValue(Channel channel, const FieldParameterInt_s* record) {
    require(record != nullptr && record->index < EntryCount && record->value <= MaxValue, ValueOutOfRange);
    changeField(
        lut_.tables[channel][record->index], record->value, Reporting, [] {},
        [&](std::uint32_t /*previous*/) { design_.write(DesignTables[channel], record, FgTypeFieldInt); });
}

void LookupTable::setLutValue(Channel channel, const FieldParameterAccess* record) {
    require(record != nullptr && liesInTable(*record), ValueOutOfRange);
    require(record->vtype == FgTypeInt32 || record->vtype == FgTypeUInt32 || record->vtype == FgTypeFieldInt,
            InvalidParameter);
    if (record->count != 0) {
        require(record->value != nullptr, InvalidParameter);
        // The first value stands for all: the others are not inspected.
        require(*static_cast<const std::uint32_t*>(record->value) <= MaxValue, ValueOutOfRange);
    }
    auto* const first = lut_.tables[channel].data() + record->index;
    const std::vector<std::uint32_t> previous(first, first + record->count);
    FgIxWrapper::setFieldCache(lut_.tables[channel].data(), record);
    try {
        design_.write(DesignTables[channel], record, FgTypeFieldAccess);
    } catch (int) {
        std::copy(previous.begin(), previous.end(), first);
        throw;
    }
}

void LookupTable::getLutValue(Channel channel, FieldParameterInt_s* record) const {
    require(record != nullptr && record->index < EntryCount, InvalidParameter);
    FgIxWrapper::getFieldCache(lut_.tables[channel].data(), record);
}

void LookupTable::getLutValue(Channel channel, const FieldParameterAccess* record) const {
    require(record != nullptr && liesInTable(*record), InvalidParameter);
    require(record->count == 0 || record->value != nullptr, InvalidParameter);
    const std::size_t width = valueSize(record->vtype);
    if (width == 0 || record->count == 0) {
        return;
    }
    // The bounds count entries, and a wide value takes two: it is read on into the next colours' tables. Behind the
    // last there is nothing, and that reads as zeros.
    const std::size_t available = (lut_.tables.size() - channel) * sizeof(Table) / width;
    const std::size_t present = available - std::min<std::size_t>(available, record->index);
    FieldParameterAccess inside = *record;
    inside.count = static_cast<std::uint32_t>(std::min<std::size_t>(record->count, present));
    FgIxWrapper::getFieldCache(lut_.tables[channel].data(), &inside);
    std::memset(static_cast<std::byte*>(record->value) + inside.count * width, 0,
                (record->count - inside.count) * width);
}

}  // namespace quillon
