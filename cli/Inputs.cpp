#include "cli/Inputs.h"

#include <algorithm>
#include <cctype>

#include "cli/Arguments.h"
#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

constexpr const char* InputStatus = "Device1_Process1_Trigger_Inputs_InputStatus_Status";

}  // namespace

std::string inputName(unsigned input) {
    return input < FirstFrontInput ? "GPI " + std::to_string(input)
                                   : "Front GPI " + std::to_string(input - FirstFrontInput);
}

unsigned parseInput(const std::string& text) {
    // What counts of a name is whether it is a front input, and the number.
    std::string name;
    for (const char character : text) {
        if (character != ' ' && character != '_') {
            name += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        }
    }
    const bool isFront = name.starts_with("front");
    name.erase(0, isFront ? 5 : 0);
    const bool isNamed = name.starts_with("gpi");
    name.erase(0, isNamed ? 3 : 0);
    const auto number = parseWholeNumber(name);
    const std::uint64_t count = isFront ? InputCount - FirstFrontInput : isNamed ? FirstFrontInput : InputCount;
    if (!number || number->negative || number->magnitude >= count) {
        throw UsageError("\"" + text + "\" is no input: they are 0 to 7, and front0 to front3");
    }
    return static_cast<unsigned>(number->magnitude) + (isFront ? FirstFrontInput : 0);
}

std::uint64_t inputLevels(const client::SoftBoard& board) {
    return static_cast<std::uint64_t>(board.integer(InputStatus));
}

void setInputLevels(client::SoftBoard& board, std::uint64_t levels) {
    board.setInteger(InputStatus, static_cast<std::int64_t>(levels));
}

Json inputsToJson(std::uint64_t levels) {
    Json json = object({});
    for (unsigned input = 0; input < InputCount; ++input) {
        put(json, inputName(input), (levels >> input & 1) != 0 ? "high" : "low");
    }
    return json;
}

}  // namespace quillon::cli
