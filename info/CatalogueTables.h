#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>

#include "info/Enumerations.h"
#include "quillon/PublicParameters.h"
#include "quillon/Vocabulary.h"

namespace quillon {

/// The groups of the catalogue, as positions in catalogueGroups().
enum class CatalogueGroup : std::size_t {
    CameraLinkHs,
    PulseMessageTriggerMapping,
    SensorGeometry,
    Roi,
    DigitalIo,
    DigitalIoCamera,
    DigitalIoGpo,
    DigitalIoGpi,
    DigitalIoEventSource,
    LineTriggerExSync,
    LineTriggerInput,
    LineTriggerDownscale,
    ShaftEncoderFilter,
    ExSyncOutput,
    ImageTriggerFlash,
    ImageTriggerInput,
    Flash,
    SoftwareTrigger,
    SignalAnalyzer,
    Overflow,
    ImageSelector,
    WhiteBalance,
    LookupTable,
    LookupTableProperties,
    Processing,
    OutputFormat,
    CameraSimulator,
    Miscellaneous,
    Debug,
    DebugInput,
    DebugOutput,
    None  ///< the parent of a top-level group
};
inline constexpr auto CatalogueGroupCount = static_cast<std::size_t>(CatalogueGroup::None);

struct CatalogueGroupRow {
    const char* label;
    CatalogueGroup parent;
};

struct UIntRange {
    std::uint32_t min, max, inc;
};

struct IntRange {
    std::int32_t min, max, inc;
};

struct UInt64Range {
    std::uint64_t min, max, inc;
};

struct Int64Range {
    std::int64_t min, max, inc;
};

struct DoubleRange {
    double min, max, inc;
};

struct UIntFieldRange {
    std::int32_t elements;
    std::uint32_t min, max;
};

struct InitialText {
    const char* text;
};

/// What a parameter may hold, which is also the type of its record.
using CatalogueValues =
    std::variant<UIntRange, IntRange, UInt64Range, Int64Range, DoubleRange, UIntFieldRange, InitialText, Enumeration>;

/// What users are shown of a public parameter. It enforces nothing, and may differ from what the applet accepts.
struct CatalogueParameter {
    /// A row; a parameter that there is not does not compile.
    consteval CatalogueParameter(CatalogueGroup parent, const char* words, FgParameterId parameter,
                                 CatalogueValues held, int flags, int level, const char* unitText)
        : group(parent),
          label(words),
          symbol(findPublicParameter(parameter)->name.data()),
          id(parameter),
          values(held),
          accessFlags(flags),
          displayLevel(level),
          unit(unitText) {}

    CatalogueGroup group;
    const char* label;
    const char* symbol;
    int id;
    CatalogueValues values;
    int accessFlags;   ///< bit 0 readable, bit 1 writable, bit 2 carried along
    int displayLevel;  ///< 1 or 2
    const char* unit;  ///< Latin-1; empty for none
};

/// The groups; a parent stands in front of its children.
std::span<const CatalogueGroupRow> catalogueGroups();

/// The public parameters that are described, in the order of their records.
std::span<const CatalogueParameter> catalogueParameters();

}  // namespace quillon
