#include "quillon/client/Errors.h"

#include <algorithm>
#include <span>
#include <utility>

#include "quillon/ErrorCode.h"
#include "softboard/softboard.h"

namespace quillon::client {

namespace {

constexpr CodeText softBoardTexts[] = {
    {SOFTBOARD_E_ARGUMENT, "SoftBoardArgument", "the software board was called with an argument that it does not know"},
    {SOFTBOARD_E_UNKNOWN_ID, "SoftBoardUnknownId",
     "the software board has no parameter, register or event of this id or name"},
    {SOFTBOARD_E_TYPE, "SoftBoardType", "the software board's parameter is not accessed with this value type"},
    {SOFTBOARD_E_READ_ONLY, "SoftBoardReadOnly", "the software board's parameter or register can only be read"},
    {SOFTBOARD_E_WRITE_ONLY, "SoftBoardWriteOnly", "the software board's parameter or register can only be written"},
    {SOFTBOARD_E_RANGE, "SoftBoardRange", "an access outside a field of the software board, or a text too long"},
    {SOFTBOARD_E_NO_DESIGN, "SoftBoardNoDesign", "no design has been loaded on the software board"},
    {SOFTBOARD_E_ACQUISITION, "SoftBoardAcquisition",
     "the software board's acquisition is not in the state for this call"},
    {SOFTBOARD_E_TIMEOUT, "SoftBoardTimeout", "a picture did not arrive on the software board in time"},
    {SOFTBOARD_E_NOT_IMPLEMENTED, "SoftBoardNotImplemented", "the software board's SDK does not have the function"},
    {SOFTBOARD_E_FILE, "SoftBoardFile",
     "the software board could not read or write a file, or its content makes no sense"},
    {SOFTBOARD_E_INTERNAL, "SoftBoardInternal", "the software board is short of memory"},
};

}  // namespace

CodeText codeText(int code) {
    for (const auto texts : {std::span<const CodeText>(ErrorCodeTexts), std::span<const CodeText>(softBoardTexts)}) {
        const auto found = std::ranges::find(texts, code, &CodeText::code);
        if (found != texts.end()) {
            return *found;
        }
    }
    return {code, "", "a code of the SDK or the design, handed on by the applet"};
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

CallError::CallError(const std::string& function, int answeredCode, const std::string& reason)
    : CallError(CallError(function, answeredCode).what() + (reason.empty() ? "" : ": " + reason), answeredCode,
                Whole{}) {}

ParameterError::ParameterError(const std::string& function, int parameterId, int answeredCode)
    : CallError(function + " of parameter " + std::to_string(parameterId), answeredCode), id(parameterId) {}

ParameterError::ParameterError(const std::string& function, std::string_view name)
    : CallError(function + " of \"" + std::string(name) + "\", which is no parameter,", InvalidParameter) {}

ParameterError::ParameterError(int parameterId, int answeredCode, const std::string& words)
    : CallError(words, answeredCode, Whole{}), id(parameterId) {}

std::string describeRefusal(int code, const std::string& accepted, const std::string& reason) {
    return "was refused: " + describeCode(code) + ", " + std::string(codeText(code).sentence) +
           (accepted.empty() ? "" : "\n  accepted: " + accepted) + (reason.empty() ? "" : "\n  because:  " + reason);
}

Refused::Refused(int parameterId, std::string parameterName, const std::string& value, int answeredCode,
                 std::string acceptedValues, std::string rangeReason)
    : ParameterError(parameterId, answeredCode,
                     parameterName + " = " + value + " " + describeRefusal(answeredCode, acceptedValues, rangeReason)),
      name(std::move(parameterName)),
      accepted(std::move(acceptedValues)),
      reason(std::move(rangeReason)) {}

bool isAboutTheValue(int code) {
    return code == ValueOutOfRange || code == ValueNotAligned || code == ValueNotInList;
}

}  // namespace quillon::client
