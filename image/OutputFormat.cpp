#include "image/OutputFormat.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "design/HandlerFrame.h"

namespace quillon {

namespace {

/// The component index that the design uses for each colour, by FG_LINEORDER.
struct LineOrderRow {
    std::uint32_t red, green, blue;
};
constexpr std::array<LineOrderRow, 6> LineOrders = {{
    {0, 1, 2},  // FG_LINEORDER_RGB
    {2, 1, 0},  // FG_LINEORDER_BGR
    {0, 2, 1},  // FG_LINEORDER_RBG
    {2, 0, 1},  // FG_LINEORDER_BRG
    {1, 2, 0},  // FG_LINEORDER_GBR
    {1, 0, 2},  // FG_LINEORDER_GRB
}};

struct FormatBits {
    std::int32_t format, bits;
};

/// An output branch by the name that the design gives it. The branches with an unused component have two alternatives,
/// the formats without it and with one component.
struct BranchRow {
    std::string_view name;
    FormatBits own;
    std::array<FormatBits, 2> alternatives;
    bool hasAlternatives;
};
constexpr std::array<BranchRow, 15> Branches = {{
    {"FG_GRAY", {3, 8}, {}, false},
    {"FG_GRAY10", {21, 10}, {}, false},
    {"FG_GRAY12", {22, 12}, {}, false},
    {"FG_GRAY14", {23, 14}, {}, false},
    {"FG_GRAY16", {1, 16}, {}, false},
    {"FG_COL24", {2, 8}, {}, false},
    {"FG_COL30", {5, 10}, {}, false},
    {"FG_COL36", {7, 12}, {}, false},
    {"FG_COL42", {9, 14}, {}, false},
    {"FG_COL48", {6, 16}, {}, false},
    {"FG_RGBX32", {408, 8}, {{{2, 8}, {3, 8}}}, true},
    {"FG_RGBX40", {410, 10}, {{{5, 10}, {21, 10}}}, true},
    {"FG_RGBX48", {412, 12}, {{{7, 12}, {22, 12}}}, true},
    {"FG_RGBX56", {414, 14}, {{{9, 14}, {23, 14}}}, true},
    {"FG_RGBX64", {416, 16}, {{{6, 16}, {1, 16}}}, true},
}};

constexpr std::int32_t WidestBranch = 16;  ///< bits per component

/// The largest FG_CUSTOM_BIT_SHIFT_RIGHT for an output format.
std::uint32_t maxCustomShift(std::uint32_t format) {
    switch (format) {
        case 2:
        case 3:
        case 50:
        case 408: return 7;
        case 5:
        case 21:
        case 410: return 9;
        case 7:
        case 22:
        case 412: return 11;
        case 9:
        case 23:
        case 414: return 13;
        case 1:
        case 6:
        case 416: return 15;
        case 4:
        case 20: return 31;
        case 8: return 0;
        default: fail(InternalFailure);
    }
}

void requireOutputFormat(std::uint32_t value) {
    requireOneOf<std::uint32_t>(value, {FG_COL24, FG_COL30, FG_COL36, FG_COL42, FG_COL48});
}

void requireBitAlignment(std::uint32_t value) {
    requireOneOf<std::uint32_t>(value, {FG_RIGHT_ALIGNED, FG_LEFT_ALIGNED, FG_CUSTOM_BIT_SHIFT_MODE});
}

/// The distance of character `index` from "0"; a text that is too short ends in a zero byte.
int digitAt(const std::string& text, std::size_t index) {
    return (index < text.size() ? text[index] : '\0') - '0';
}

}  // namespace

void OutputFormat::setLineOrder(std::uint32_t value, bool reportErrors) {
    changeField(
        format_.lineOrder, value, reportErrors, [&] { require(value < LineOrders.size(), ValueOutOfRange); },
        [&](std::uint32_t /*previous*/) {
            const LineOrderRow& row = LineOrders[value];
            const auto send = [this](Ix pixels, Ix header, std::uint32_t component) {
                design_.writeUnsigned(pixels, component);
                design_.writeUnsigned(header, component);
            };
            send(Ix::Camera_SortImage_ColorInterpret_SelectComponents_RedComponent,
                 Ix::Camera_SortImage_ColorInterpret_SelectComponentsHeader_RedComponent, row.red);
            send(Ix::Camera_SortImage_ColorInterpret_SelectComponents_GreenComponent,
                 Ix::Camera_SortImage_ColorInterpret_SelectComponentsHeader_GreenComponent, row.green);
            send(Ix::Camera_SortImage_ColorInterpret_SelectComponents_BlueComponent,
                 Ix::Camera_SortImage_ColorInterpret_SelectComponentsHeader_BlueComponent, row.blue);
        });
}

void OutputFormat::setOutputFormat(std::uint32_t value, bool reportErrors) {
    changeField(
        format_.outputFormat, value, reportErrors, [&] { requireOutputFormat(value); },
        [&](std::uint32_t /*previous*/) { applyOutputFormat(); });
}

void OutputFormat::setBitAlignment(std::uint32_t value, bool reportErrors) {
    changeField(
        format_.bitAlignment, value, reportErrors, [&] { requireBitAlignment(value); },
        [&](std::uint32_t /*previous*/) {
            requireOutputFormat(format_.outputFormat);
            applyOutputFormat();
        });
}

void OutputFormat::setCustomBitShift(std::uint32_t value, bool reportErrors) {
    changeField(
        format_.customBitShift, value, reportErrors,
        [&] { require(value <= maxCustomShift(format_.outputFormat), ValueOutOfRange); },
        [&](std::uint32_t /*previous*/) {
            requireBitAlignment(format_.bitAlignment);
            requireOutputFormat(format_.outputFormat);
            applyOutputFormat();
        });
}

void OutputFormat::buildOutputFormatTable() {
    try {
        std::string text;
        require(design_.readText("Device1_Process0_OutputFormat_FG_FORMAT_NoOfInputs", text) == Success,
                InternalFailure);
        const int count = digitAt(text, 0);
        require(count <= OutputFormatTable::MaxInputs, InternalFailure);
        table_.inputCount = count;
        require(design_.readText("Device1_Process0_OutputFormat_FG_FORMAT_MaxBits", text) == Success, InternalFailure);
        table_.maxBits = 10 * digitAt(text, 0) + digitAt(text, 1);
        for (int i = 0; i < table_.inputCount; ++i) {
            readBranch(i);
        }
    } catch (int) {
        // The design tells less than it should: later writes of the format report it.
    }
}

void OutputFormat::readBranch(int index) {
    const std::string number = std::to_string(index);
    std::string text;
    require(design_.readText("Device1_Process0_OutputFormat_FG_FORMAT_Input" + number, text) == Success,
            InternalFailure);
    const auto* const row = std::find_if(Branches.begin(), Branches.end(),
                                         [&text](const BranchRow& branch) { return branch.name == text; });
    require(row != Branches.end(), InternalFailure);
    const auto entryAt = [this, index](int block) -> OutputFormatEntry& {
        const int position = index + block * OutputFormatTable::BlockSize;
        return table_.entries[static_cast<std::size_t>(position)];
    };
    entryAt(0).format = row->own.format;
    entryAt(0).bits = row->own.bits;
    for (int block = 1; row->hasAlternatives && block <= 2; ++block) {
        const FormatBits& alternative = row->alternatives[static_cast<std::size_t>(block - 1)];
        entryAt(block) = {alternative.format, alternative.bits, block, false, 0};
    }
    require(design_.readText("Device1_Process0_OutputFormat_FG_FORMAT_InputFlag" + number, text) == Success,
            InternalFailure);
    entryAt(0).hasTrash = digitAt(text, 0) == 1;
    entryAt(0).trashParameterId =
        entryAt(0).hasTrash
            ? design_.idByName("Device1_Process0_OutputFormat_Convert" + number + "_VirtualTrash_EnableTrash_Value")
            : 0;
}

/// Releases the chosen branch, switches the others to trash, and sends shift and selection.
void OutputFormat::applyOutputFormat() {
    require(table_.inputCount > 0, ValueOutOfRange);
    int selected = -1;
    for (int i = 0; i < table_.inputCount; ++i) {
        const OutputFormatEntry& entry = table_.entries[static_cast<std::size_t>(i)];
        const bool matches = static_cast<std::uint32_t>(entry.format) == format_.outputFormat;
        if (matches) {
            selected = i;
        }
        if (entry.hasTrash) {
            const std::uint32_t trash = matches ? 0 : 1;
            require(design_.setById(entry.trashParameterId, &trash, FgTypeUInt32) == Success, InternalFailure);
        }
    }
    require(selected >= 0, ValueOutOfRange);
    const std::int32_t shift = shiftFor(table_.entries[static_cast<std::size_t>(selected)].bits);
    design_.writeUnsigned(Ix::OutputFormat_DynamicShift_Shift_Value, static_cast<std::uint32_t>(shift));
    design_.writeUnsigned(Ix::OutputFormat_FG_FORMAT_SelectSource, static_cast<std::uint32_t>(selected));
    refreshLimit([&] { records_.setMaximum(FG_CUSTOM_BIT_SHIFT_RIGHT, maxCustomShift(format_.outputFormat)); });
}

/// How far the internal pixel word is shifted right, in bits. Without a branch above 16 bits, left and right alignment
/// come to the same.
std::int32_t OutputFormat::shiftFor(std::int32_t selectedBits) const {
    const std::int32_t leftAligned = table_.maxBits - selectedBits;
    switch (format_.bitAlignment) {
        case FG_LEFT_ALIGNED: return leftAligned;
        case FG_RIGHT_ALIGNED: return selectedBits > WidestBranch ? table_.maxBits - WidestBranch : leftAligned;
        case FG_CUSTOM_BIT_SHIFT_MODE: {
            // A configuration file can hold a negative shift.
            const std::int64_t shift = std::int64_t{leftAligned} + static_cast<std::int32_t>(format_.customBitShift);
            require(shift >= 0 && shift < table_.maxBits, ValueOutOfRange);
            return static_cast<std::int32_t>(shift);
        }
        default: fail(InternalFailure);
    }
}

}  // namespace quillon
