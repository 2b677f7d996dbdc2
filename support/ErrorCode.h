/// @file
/// The error numbers that the applet itself produces. Any other number that a caller sees is the SDK's own, handed on.
///
/// Inside the applet a failure is a thrown plain `int`; it becomes a return value in FgIxWrapperImpl::setParameter and
/// getParameter, and nowhere else. (An `int`, so that a code of the SDK travels the same road.)
#pragma once

namespace quillon {

enum ErrorCode : int {
    Success = 0,
    ShadingNotAllocated = -1,         ///< a shading handle could not be allocated; only ever seen as last error
    NotAvailable = -12,               ///< the SDK lacks the function, or a read-only parameter was written
    DesignNotLoaded = -100,           ///< the design could not be loaded or handed over
    BufferTooSmall = -500,            ///< the buffer does not hold the XML description
    InvalidHandle = -2001,            ///< a null handle, or a handle whose location holds null
    InternalFailure = -2031,          ///< a library or function is missing, or a design read gave an impossible value
    InvalidParameter = -2070,         ///< null pointer, unknown id, DMA, name or string, field access out of bounds
    ValueNotInList = -2075,           ///< a value outside the list that an enumerated parameter accepts
    FileNotFound = -2076,             ///< a file could not be opened or does not exist
    NotAString = -2078,               ///< a string operation with a value type other than 22
    NotImplemented = -2130,           ///< shading functions, unknown Info key
    ConfigurationUnreadable = -5000,  ///< configuration file unreadable or not for this applet
    FileNotWritten = -5001,           ///< configuration or LUT file could not be written
    ValueOutOfRange = -6000,          ///< value out of range
    ValueNotAligned = -7080,          ///< value not aligned as the parameter requires
    KeyNotFound = -8000               ///< a key is not in a configuration file; never leaves the file parser
};

/// Ends the current operation with `code`.
[[noreturn]] inline void fail(int code) {
    throw code;
}

/// Ends the current operation with `code` unless `condition` holds.
inline void require(bool condition, int code) {
    if (!condition) {
        fail(code);
    }
}

}  // namespace quillon
