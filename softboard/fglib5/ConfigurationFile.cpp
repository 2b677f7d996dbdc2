#include "softboard/fglib5/ConfigurationFile.h"

#include <charconv>
#include <fstream>

namespace softboard {
namespace {

template <class Number>
bool parsed(const std::string& text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

bool isKept(const ParameterDescription& description) {
    return description.readable && description.writable && description.type != ValueType::Table;
}

std::string shown(const Parameter& parameter) {
    std::string text;
    double real = 0.0;
    std::int64_t integer = 0;
    if (parameter.real(real) == SOFTBOARD_OK) {
        appendNumber(text, real);
    } else if (parameter.integer(integer) == SOFTBOARD_OK) {
        appendNumber(text, integer);
    } else {
        parameter.text(text);
    }
    return text;
}

bool taken(Parameter& parameter, const std::string& value) {
    double real = 0.0;
    std::int64_t integer = 0;
    switch (parameter.description().type) {
        case ValueType::Text: return parameter.setText(value) == SOFTBOARD_OK;
        case ValueType::Double: return parsed(value, real) && parameter.setReal(real) == SOFTBOARD_OK;
        default: return parsed(value, integer) && parameter.setInteger(integer) == SOFTBOARD_OK;
    }
}

}  // namespace

int saveConfigurationLocked(const Board& board, const std::string& fileName) {
    std::ofstream file(fileName, std::ios::trunc);
    for (const Parameter* parameter : board.parametersLocked()) {
        if (isKept(parameter->description())) {
            file << parameter->description().name << '=' << shown(*parameter) << '\n';
        }
    }
    return file.flush() ? SOFTBOARD_OK : SOFTBOARD_E_FILE;
}

int loadConfigurationLocked(Board& board, const std::string& fileName) {
    std::ifstream file(fileName);
    if (!file) {
        return SOFTBOARD_E_FILE;
    }
    for (std::string line; std::getline(file, line);) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) {
            return SOFTBOARD_E_FILE;
        }
        Parameter* const parameter = board.findLocked(line.substr(0, equals));
        if (parameter == nullptr || !isKept(parameter->description()) || !taken(*parameter, line.substr(equals + 1))) {
            return SOFTBOARD_E_FILE;
        }
        board.changedLocked(*parameter);
    }
    return SOFTBOARD_OK;
}

}  // namespace softboard
