/// @file
/// What the client throws, and what the codes of the applet mean.
#pragma once

#include <stdexcept>
#include <string>

#include "quillon/ErrorCode.h"

namespace quillon::client {

/// The meaning of a code that a call of the applet answered: the applet's own, or the software board's. Any other is
/// told as one that the applet only hands on, without a name.
CodeText codeText(int code);

/// "-6000 (ValueOutOfRange)", or the number alone where the code has no name.
std::string describeCode(int code);

/// Everything that the client throws.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A shared library cannot be loaded, or lacks a function.
class LibraryError : public Error {
public:
    using Error::Error;
};

/// Std_entry gave no object. `status` is what it stored.
class OpenError : public Error {
public:
    explicit OpenError(int openStatus);
    int status;
};

/// A call answered a code other than 0.
class CallError : public Error {
public:
    CallError(const std::string& function, int answeredCode);
    int code;
};

/// A get or set answered a code other than 0.
class ParameterError : public CallError {
public:
    ParameterError(const std::string& function, int parameterId, int answeredCode);
    int id;
};

}  // namespace quillon::client
