#include "debug/DebugInjection.h"

#include <algorithm>
#include <limits>

#include "design/HandlerFrame.h"
#include "info/RegisterInfoTree.h"

namespace quillon {

namespace {

constexpr std::int32_t Inject = 0;
constexpr std::int32_t InjectMonitor = 1;
constexpr std::uint32_t InBit = 1;   ///< of "_OperationMode": pixels are injected
constexpr std::uint32_t OutBit = 2;  ///< and pixels are shown
constexpr std::uint64_t MaxPixel = 0x1FFFFFFFFFFFFFF;
constexpr std::size_t NameLimit = 128;  ///< characters of a point's texts

/// How far the first character of a text lies above "0".
std::int32_t leadingDigit(const std::string& text) {
    return (text.empty() ? '\0' : text.front()) - '0';
}

}  // namespace

void DebugInjection::buildDebugTable() {
    try {
        std::string text;
        require(design_.readText("Device1_Process0_Debug_Entries", text) == Success, InternalFailure);
        const std::int32_t count = leadingDigit(text);
        require(count <= DebugTable::MaxEntries, InternalFailure);
        table_.debugEntryCount = count;
        for (std::int32_t i = 0; i < count; ++i) {
            readEntry(i);
        }
    } catch (int) {
        // The design tells less than it should: later uses of the debug parameters report it.
    }
}

/// Makes all three reads of an entry before it judges any. What comes before the first that is bad is kept.
void DebugInjection::readEntry(int index) {
    const std::string number = std::to_string(index);
    DebugEntry& entry = table_.entries[static_cast<std::size_t>(index)];
    std::string type;
    std::string path;
    const int nameCode = design_.readText("Device1_Process0_Debug_N" + number, entry.name);
    const int typeCode = design_.readText("Device1_Process0_Debug_T" + number, type);
    const int pathCode = design_.readText("Device1_Process0_Debug_P" + number, path);
    entry.name.resize(std::min(entry.name.size(), NameLimit));
    require(nameCode == Success && typeCode == Success, InternalFailure);
    require(type == "Inject" || type == "InjectMonitor", InternalFailure);
    entry.kind = type == "Inject" ? Inject : InjectMonitor;
    require(pathCode == Success, InternalFailure);
    entry.path = path.substr(0, NameLimit);
}

/// The chosen point. A design that tells of no points refuses no choice: such a choice is of an empty point.
const DebugEntry& DebugInjection::chosen() const {
    static const DebugEntry none;
    return debug_.debugSource < table_.entries.size() ? table_.entries[debug_.debugSource] : none;
}

bool DebugInjection::isMonitor() const {
    return chosen().kind == InjectMonitor;
}

std::string DebugInjection::debugParameterName(const char* suffix) const {
    return "Device1_Process0_" + chosen().path + suffix;
}

std::uint32_t DebugInjection::read(const char* suffix, int failure) const {
    std::uint32_t value = 0;
    const int result = design_.getById(parameterId(suffix), &value, FgTypeUInt32);
    require(result == Success, failure != Success ? failure : result);
    return value;
}

std::uint32_t DebugInjection::readMonitor(const char* suffix) const {
    return isMonitor() ? read(suffix, InternalFailure) : 0;
}

void DebugInjection::write(const char* suffix, const void* value, FgParamTypes type) const {
    require(design_.setById(parameterId(suffix), value, type) == Success, InternalFailure);
}

void DebugInjection::setDebugSource(std::uint32_t value) {
    changeField(
        debug_.debugSource, value, Reporting,
        [&] {
            std::string text;
            require(design_.readText("Device1_Process0_Debug_Entries", text) == Success, InternalFailure);
            // Unsigned: with no points the bound wraps, and nothing is refused.
            require(value <= static_cast<std::uint32_t>(leadingDigit(text) - 1), ValueOutOfRange);
        },
        [&](std::uint32_t /*previous*/) {
            require(chosen().kind == Inject || chosen().kind == InjectMonitor, InternalFailure);
            records_.setAccessFlags(FG_DEBUGOUTENABLE, isMonitor() ? OpenAccess : ReadOnlyAccess);
            refreshLimit([&] { records_.setMaximum(FG_DEBUGOUTPIXEL, isMonitor() ? describedPixelMaximum() : 0U); });
        });
}

/// The largest pixel value that the SDK's own description of the point tells.
std::uint32_t DebugInjection::describedPixelMaximum() const {
    const RegisterInfoTree tree(wrapper_.getUnwrappedParameterInfo());
    const RegisterInfo* record = tree.find(parameterId("_PixelValue"));
    require(record != nullptr, InternalFailure);
    switch (record->type) {
        case RegisterTypeUInt:
        case RegisterTypeInt: return record->as.uint.max;
        case RegisterTypeUInt64:
        case RegisterTypeInt64:
            return static_cast<std::uint32_t>(
                std::min<std::uint64_t>(record->as.uint64.max, std::numeric_limits<std::uint32_t>::max()));
        default: fail(InternalFailure);
    }
}

void DebugInjection::setDebugInEnable(std::uint32_t value, bool reportErrors) {
    changeField(
        debug_.debugInEnable, value, reportErrors, [&] { requireRange<std::uint32_t>(value, FG_OFF, FG_ON); },
        [&](std::uint32_t /*previous*/) {
            const std::uint32_t kept = isMonitor() ? read("_OperationMode", Success) & OutBit : 0;
            const std::uint32_t mode = kept | (value == FG_ON ? InBit : 0);
            write("_OperationMode", &mode, FgTypeUInt32);
        });
}

void DebugInjection::setDebugOutEnable(std::uint32_t value) {
    changeField(
        debug_.debugOutEnable, value, Reporting, [&] { requireRange<std::uint32_t>(value, FG_OFF, FG_ON); },
        [&](std::uint32_t /*previous*/) {
            if (isMonitor()) {
                const std::uint32_t kept = read("_OperationMode", InternalFailure) & InBit;
                const std::uint32_t mode = kept | (value == FG_ON ? OutBit : 0);
                write("_OperationMode", &mode, FgTypeUInt32);
            }
        });
}

void DebugInjection::setDebugFile(const char* path, bool reportErrors) {
    changeField(
        debug_.debugFile, std::string(path != nullptr ? path : ""), reportErrors,
        [&] { require(path != nullptr, ValueOutOfRange); },
        [&](const std::string& /*previous*/) { write("_DebugFile", debug_.debugFile.c_str(), FgTypeCharBuffer); });
}

void DebugInjection::setDebugInsert(std::uint32_t value) {
    changeField(
        debug_.debugInsert, value, Reporting, [&] { require(value == FG_APPLY, ValueOutOfRange); },
        [&](std::uint32_t /*previous*/) {
            read("_OperationMode", InternalFailure);  // only has to succeed
            const std::uint32_t apply = 1;
            write("_Insert", &apply, FgTypeUInt32);
        });
}

void DebugInjection::setDebugWritePixel(std::uint64_t value) {
    changeField(
        debug_.debugWritePixel, value, Reporting, [&] { require(value <= MaxPixel, ValueOutOfRange); },
        [&](std::uint64_t /*previous*/) { write("_Inject_WritePixel", &value, FgTypeUInt64); });
}

void DebugInjection::setDebugWriteFlag(std::uint32_t value, bool reportErrors) {
    changeField(
        debug_.debugWriteFlag, value, reportErrors,
        [&] { requireRange<std::uint32_t>(value, FG_ENDOFLINE, FG_ENDOFFRAME); },
        [&](std::uint32_t /*previous*/) { write("_Inject_WriteFlag", &value, FgTypeUInt32); });
}

void DebugInjection::setDebugSaveConfig(const char* path) {
    require(path != nullptr, ValueOutOfRange);
    debug_.debugSaveConfig = path;
    // The SDK's own answer means nothing here.
    callIfThere(wrapper_.wrapperFg().Fg_saveConfig, wrapper_.fglibFg(), debug_.debugSaveConfig.c_str());
}

std::uint32_t DebugInjection::readInEnable() const {
    return read("_OperationMode", InternalFailure) & InBit;
}

std::uint32_t DebugInjection::readOutEnable() const {
    return (readMonitor("_OperationMode") & OutBit) / OutBit;
}

std::uint32_t DebugInjection::readOutXPosition() const {
    return readMonitor("_XPosition");
}

std::uint32_t DebugInjection::readOutYPosition() const {
    return readMonitor("_YPosition");
}

std::uint32_t DebugInjection::readOutPixel() const {
    return readMonitor("_PixelValue");
}

std::uint32_t DebugInjection::readReady() const {
    return read("_Inject_ReadyForInjection", InternalFailure);
}

std::string DebugInjection::readFile() const {
    std::string text;
    require(design_.readText(parameterId("_DebugFile"), text) == Success, InternalFailure);
    return text;
}

}  // namespace quillon
