/// @file
/// What the client throws, and what the codes of the applet mean.
#pragma once

#include <stdexcept>
#include <string>

#include "quillon/ErrorCode.h"
#include "quillon/client/Export.h"

namespace quillon::client {

/// The meaning of a code that a call of the applet answered: the applet's own, or the software board's. Any other is
/// told as one that the applet only hands on, without a name.
QUILLON_CLIENT_API CodeText codeText(int code);

/// "-6000 (ValueOutOfRange)", or the number alone where the code has no name.
QUILLON_CLIENT_API std::string describeCode(int code);

/// "was refused: -6000 (ValueOutOfRange), the value is out of range", and lines with what would be accepted and why,
/// where they are not empty.
QUILLON_CLIENT_API std::string describeRefusal(int code, const std::string& accepted, const std::string& reason);

/// Everything that the client throws.
class QUILLON_CLIENT_API Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A shared library cannot be loaded, or lacks a function.
class QUILLON_CLIENT_API LibraryError : public Error {
public:
    using Error::Error;
};

/// Std_entry gave no object. `status` is what it stored.
class QUILLON_CLIENT_API OpenError : public Error {
public:
    explicit OpenError(int openStatus);
    int status;
};

/// A call answered a code other than 0.
class QUILLON_CLIENT_API CallError : public Error {
public:
    CallError(const std::string& function, int answeredCode);
    /// With words of whoever answered; they may be empty.
    CallError(const std::string& function, int answeredCode, const std::string& reason);
    int code;

protected:
    struct Whole {};
    /// With words that tell all.
    CallError(const std::string& words, int answeredCode, Whole) : Error(words), code(answeredCode) {}
};

/// A get or set answered a code other than 0, or there is no such parameter.
class QUILLON_CLIENT_API ParameterError : public CallError {
public:
    ParameterError(const std::string& function, int parameterId, int answeredCode);
    /// There is no parameter of that name: the code is InvalidParameter.
    ParameterError(const std::string& function, std::string_view name);
    int id = 0;  ///< 0 for a name that is none

protected:
    /// For those who tell more.
    ParameterError(int parameterId, int answeredCode, const std::string& words);
};

/// A value was refused. what() tells the parameter, the value, the code, what would be accepted and why:
///
///     FG_WIDTH = 2046 was refused: -7080 (ValueNotAligned), the value is not a multiple of the parameter's step
///       accepted: 4 to 16384 pixel in steps of 4
///       because:  at most 16384 less FG_XOFFSET, a multiple of 4
class QUILLON_CLIENT_API Refused : public ParameterError {
public:
    /// `acceptedValues` and `rangeReason` may be empty.
    Refused(int parameterId, std::string parameterName, const std::string& value, int answeredCode,
            std::string acceptedValues, std::string rangeReason);
    std::string name;      ///< the parameter's
    std::string accepted;  ///< what would be accepted, where the code is about the value
    std::string reason;    ///< why the range is what it is now, where it follows other parameters
};

/// A value is of another type than the parameter or the caller asks for; nothing was called.
class QUILLON_CLIENT_API ValueError : public Error {
public:
    using Error::Error;
};

/// Whether the code says that another value would have been accepted.
QUILLON_CLIENT_API bool isAboutTheValue(int code);

}  // namespace quillon::client
