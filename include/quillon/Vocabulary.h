/// @file
/// The numbers that an application and the applet exchange: parameter ids, enumerators, value types, the records of
/// table entries, error codes and the keys of Info. For C (C11) and C++.
#ifndef QUILLON_VOCABULARY_H
#define QUILLON_VOCABULARY_H

#include <stdint.h>

/* In C++ an enumeration is an int, as it is in C. */
#ifdef __cplusplus
#define QUILLON_INT : int
#else
#define QUILLON_INT
#endif

/// Ids of the public parameters: FG_WIDTH, FG_HEIGHT ... quillon/Parameters.def tells access, kind and meaning of each.
enum FgParameterId QUILLON_INT {
#define PUBLIC_PARAMETER(name, id, access, kind, description) name = id,
#include "quillon/Parameters.def"
#undef PUBLIC_PARAMETER
};

/* Where the ids of other parameters begin. (Macros, as an id is the sum of two enumerators otherwise.) */
/// Register n of the design is parameter FG_REGISTER_IDS + n, where ORLO_ENABLE_DRA is on.
#define FG_REGISTER_IDS 1000000
/// Parameter n of the SDK itself is parameter FG_SDK_IDS + n.
#define FG_SDK_IDS 2000000

/// The values of enumerated parameters that have names: FG_ON, FG_COL24, GRABBER_CONTROLLED ...
enum FgEnumerator QUILLON_INT {
#define ENUMERATOR(name, value) name = value,
#include "quillon/Enumerators.def"
#undef ENUMERATOR
};

/// Error codes of the applet: QuillonSuccess, QuillonValueOutOfRange ... Any other code that a call answers is the
/// SDK's or the design's own, handed on.
enum QuillonCode QUILLON_INT {
#define ERROR_CODE(name, code, sentence) Quillon##name = code,
#include "quillon/ErrorCodes.def"
#undef ERROR_CODE
};

/// What `value` points to in a parameter call.
enum FgParamTypes QUILLON_INT {
    FgTypeInt32 = 1,       ///< a signed 32-bit integer
    FgTypeUInt32 = 2,      ///< an unsigned 32-bit integer
    FgTypeInt64 = 3,       ///< a signed 64-bit integer
    FgTypeUInt64 = 4,      ///< an unsigned 64-bit integer
    FgTypeDouble = 5,      ///< a double
    FgTypeCharBuffer = 6,  ///< a text: a read fills the caller's buffer, whose length is not known; a write takes it
    FgTypeString = 22,     ///< a `char*` that a read stores, to be released with Fg_freeParameterStringWithType
    FgTypeFieldAccess = 4096,  ///< a FieldParameterAccess
    FgTypeFieldInt = 4098,     ///< a FieldParameterInt_s
};

typedef enum FgParamTypes FgParamTypes;

/// One entry of a table of 32-bit values.
typedef struct FieldParameterInt_s {
    uint32_t value;
    uint32_t index;
} FieldParameterInt_s;

/// One entry of a table of doubles.
typedef struct FieldParameterDouble_s {
    double value;
    uint32_t index;
} FieldParameterDouble_s;

/// `count` entries from `index` on; the values stay the caller's.
typedef struct FieldParameterAccess {
    FgParamTypes vtype;  ///< width of the values: FgTypeInt32, FgTypeUInt32: 4 bytes; FgTypeInt64, FgTypeUInt64,
                         ///< FgTypeDouble: 8 bytes
    uint32_t index;
    uint32_t count;
    void* value;
} FieldParameterAccess;

/// Keys of Info. "stores" names the slot, `in` or `out`, and what the call puts there; a null slot is skipped. Keys
/// that are not listed are known to the SDK alone: 848, 1040, 1045, 1792, 1872, 1888, 2064, 2160, 2192, 2304, 2560,
/// 2816, 3072, 3328, 4624, 4640, 4656, 4672, 4688, 4704.
enum QuillonInfoKey QUILLON_INT {
    QuillonInfoIcon = 1041,                    ///< stores the size as uint64_t in `in`, the PNG's bytes in `out`
    QuillonInfoDesignImage = 1042,             ///< stores the size as uint64_t in `in`, the bytes in `out`
    QuillonInfoDesignIdentifier = 1043,        ///< stores a text (const char*) in `out`
    QuillonInfoSecondDesignIdentifier = 1044,  ///< stores a text in `out`
    QuillonInfoInterfaceVersion = 2048,        ///< answers it
    QuillonInfoBoardType = 2176,               ///< answers the loader's number of the board that the design is for
    QuillonInfoDescription = 4096,             ///< stores a text in `out`: the design in a sentence
    QuillonInfoCategory = 4112,                ///< stores a text in `out`: the family that the design belongs to
    QuillonInfoTags = 4128,                    ///< stores a text in `out`: "key=value" pairs, separated by commas
    QuillonInfoDevice = 4144,                  ///< stores the IXdevice* of the latest Std_entry in `in`, or null
    QuillonInfoDesign = 4160,                  ///< stores the latest design's pointer in `in`, or null
    QuillonInfoName = 4176,                    ///< stores a text in `out`: "Quillon"
    QuillonInfoVersion = 4192,                 ///< stores a text in `out`
    QuillonInfoVersionWithDate = 4208,         ///< stores a text in `out`
    QuillonInfoEnumerator = 4352,              ///< answers the value of the enumerator whose name is the text at `in`
    QuillonInfoProcesses = 4608,               ///< answers the number of processes
};

#endif
