#include "client/Errors.h"

#include <algorithm>
#include <array>

#include "softboard/softboard.h"
#include "support/ErrorCode.h"

namespace quillon::client {

namespace {

struct CodeRow {
    int code;
    CodeText text;
};

constexpr std::array codeRows{
    CodeRow{Success, {"Success", "done"}},
    CodeRow{ShadingNotAllocated, {"ShadingNotAllocated", "a shading handle could not be allocated"}},
    CodeRow{NotAvailable,
            {"NotAvailable", "not available: the parameter can only be read, or the SDK lacks the function"}},
    CodeRow{DesignNotLoaded, {"DesignNotLoaded", "the design could not be loaded or handed to the SDK"}},
    CodeRow{BufferTooSmall, {"BufferTooSmall", "the buffer is too small for the description"}},
    CodeRow{InvalidHandle, {"InvalidHandle", "the handle is not valid"}},
    CodeRow{InternalFailure,
            {"InternalFailure",
             "a library, a function or a design parameter is missing, or the design gave an impossible value"}},
    CodeRow{InvalidParameter,
            {"InvalidParameter", "no such parameter, name, process or string, or an access outside a field"}},
    CodeRow{ValueNotInList, {"ValueNotInList", "the value is not one of those that the parameter accepts"}},
    CodeRow{FileNotFound, {"FileNotFound", "the file does not exist or cannot be opened"}},
    CodeRow{NotAString, {"NotAString", "the value is not a string handed out by the applet"}},
    CodeRow{NotImplemented, {"NotImplemented", "this applet does not have the function"}},
    CodeRow{ConfigurationUnreadable,
            {"ConfigurationUnreadable", "the configuration file cannot be read or is not for this applet"}},
    CodeRow{FileNotWritten, {"FileNotWritten", "the file could not be written"}},
    CodeRow{ValueOutOfRange, {"ValueOutOfRange", "the value is out of range"}},
    CodeRow{ValueNotAligned, {"ValueNotAligned", "the value is not a multiple of the parameter's step"}},
    CodeRow{KeyNotFound, {"KeyNotFound", "a key is not in the configuration file"}},
    CodeRow{SOFTBOARD_E_ARGUMENT,
            {"SoftBoardArgument", "the software board was called with an argument that it does not know"}},
    CodeRow{SOFTBOARD_E_UNKNOWN_ID,
            {"SoftBoardUnknownId", "the software board has no parameter, register or event of this id or name"}},
    CodeRow{SOFTBOARD_E_TYPE, {"SoftBoardType", "the software board's parameter is not accessed with this value type"}},
    CodeRow{SOFTBOARD_E_READ_ONLY,
            {"SoftBoardReadOnly", "the software board's parameter or register can only be read"}},
    CodeRow{SOFTBOARD_E_WRITE_ONLY,
            {"SoftBoardWriteOnly", "the software board's parameter or register can only be written"}},
    CodeRow{SOFTBOARD_E_RANGE,
            {"SoftBoardRange", "an access outside a field of the software board, or a text too long"}},
    CodeRow{SOFTBOARD_E_NO_DESIGN, {"SoftBoardNoDesign", "no design has been loaded on the software board"}},
    CodeRow{SOFTBOARD_E_ACQUISITION,
            {"SoftBoardAcquisition", "the software board's acquisition is not in the state for this call"}},
    CodeRow{SOFTBOARD_E_TIMEOUT, {"SoftBoardTimeout", "a picture did not arrive on the software board in time"}},
    CodeRow{SOFTBOARD_E_NOT_IMPLEMENTED,
            {"SoftBoardNotImplemented", "the software board's SDK does not have the function"}},
    CodeRow{SOFTBOARD_E_FILE,
            {"SoftBoardFile", "the software board could not read or write a file, or its content makes no sense"}},
    CodeRow{SOFTBOARD_E_INTERNAL, {"SoftBoardInternal", "the software board is short of memory"}},
};

}  // namespace

CodeText codeText(int code) {
    const auto row =
        std::find_if(codeRows.begin(), codeRows.end(), [&](const CodeRow& entry) { return entry.code == code; });
    return row != codeRows.end() ? row->text : CodeText{"", "a code of the SDK or the design, handed on by the applet"};
}

std::string describeCode(int code) {
    const CodeText text = codeText(code);
    const std::string number = std::to_string(code);
    return text.name.empty() ? number : number + " (" + std::string(text.name) + ")";
}

OpenError::OpenError(int openStatus)
    : Error("the applet did not open: " + describeCode(openStatus) + ", " + std::string(codeText(openStatus).sentence)),
      status(openStatus) {}

CallError::CallError(const std::string& function, int answeredCode)
    : Error(function + " answered " + describeCode(answeredCode) + ", " + std::string(codeText(answeredCode).sentence)),
      code(answeredCode) {}

ParameterError::ParameterError(const std::string& function, int parameterId, int answeredCode)
    : CallError(function + " of parameter " + std::to_string(parameterId), answeredCode), id(parameterId) {}

}  // namespace quillon::client
