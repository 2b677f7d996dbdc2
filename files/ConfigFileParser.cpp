#include "files/ConfigFileParser.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "support/Failure.h"
#include "support/FgLog.h"

namespace quillon {

namespace {

// With its line feed, which is part of what a look-up in the header searches for.
constexpr const char* HeaderSection = "[Kamerasektion]\n";
constexpr const char* MissingText = "Error";
constexpr const char* ValueDelimiters = "=;''";
constexpr int NumberNotFound = -1;
constexpr int DoubleDigits = 12;

/// Where nothing but the end of the line stands behind the delimiters, the value is empty.
bool isEndOfLine(const char* token) {
    return token[0] == '\r' || token[0] == '\n';
}

/// Goes on to the first line that holds `text` anywhere. Most lines lack its first character, which is quicker to look
/// for.
bool findLineHolding(LineReader& lines, const char* text, TextLine& copy) {
    for (std::string_view line; lines.next(line);) {
        if (text[0] == '\0' || line.find(text[0]) != std::string_view::npos) {
            LineReader::copy(line, copy);
            if (std::strstr(copy.data(), text) != nullptr) {
                return true;
            }
        }
    }
    return false;
}

/// Goes on to the first line that begins with `key` and a '='. A line of a longer key with the same beginning has
/// another character in the place of the '=' and is passed over; that character is looked at first, as it settles most
/// lines.
bool findLineOfKey(LineReader& lines, std::string_view key, TextLine& copy) {
    for (std::string_view line; lines.next(line);) {
        if (line.size() > key.size() && line[key.size()] == '=' && line.starts_with(key)) {
            LineReader::copy(line, copy);
            return true;
        }
    }
    return false;
}

/// A look-up that found its line ends behind the line after it; a write goes there.
void skipLine(LineReader& lines) {
    std::string_view line;
    lines.next(line);
}

}  // namespace

Fg_ConfigFileParser::Fg_ConfigFileParser(Fg_Log* messageLog, const char* fileName, bool readOnly) : log_(messageLog) {
    logEntry("Fg_ConfigFileParser::Fg_ConfigFileParser");
    if (!checkFileType(fileName) || !checkFileExist(fileName)) {
        logError("Config File is Invalid");
        return;
    }
    logInfo("Config File is valid");
    file_ = openTextFile(fileName, readOnly ? "r" : "r+");
    if (!file_) {
        logError("Config File: fopen failed");
    }
}

Fg_ConfigFileParser::~Fg_ConfigFileParser() {
    logEntry("Fg_ConfigFileParser::~Fg_ConfigFileParser");
}

bool Fg_ConfigFileParser::checkFileType(const char* fileName) const {
    logEntry("Fg_ConfigFileParser::checkFileType");
    const bool isConfigFile = fileName != nullptr && std::strstr(fileName, ".mcf") != nullptr;
    logInfo(isConfigFile ? "File type ok" : "File type not ok");
    return isConfigFile;
}

bool Fg_ConfigFileParser::checkFileExist(const char* fileName) const {
    logEntry("Fg_ConfigFileParser::checkFileExist");
    const bool exists = openTextFile(fileName, "r") != nullptr;
    logInfo(exists ? "Config File exist" : "Config File don't exist");
    return exists;
}

bool Fg_ConfigFileParser::setSaveFile(const char* fileName) {
    logEntry("Fg_ConfigFileParser::setSaveFile");
    if (!checkFileType(fileName)) {
        logError("Config File is Invalid");
        return false;
    }
    file_ = openTextFile(fileName, "w");
    lines_.forget();
    if (!file_) {
        logError("Config File: fopen failed");
    }
    return file_ != nullptr;
}

std::string Fg_ConfigFileParser::getPortString(int portNumber) const {
    logEntry("Fg_ConfigFileParser::getPortString");
    return std::string("[Port ") + static_cast<char>('A' + portNumber) + "]";
}

template <typename... Arguments>
void Fg_ConfigFileParser::writeLine(const char* format, Arguments... arguments) {
    if (file_) {
        lines_.handOver(file_.get());
        std::fprintf(file_.get(), format, arguments...);
        std::fflush(file_.get());
    }
}

void Fg_ConfigFileParser::writeConfigFile(const char* key, const std::string& value) {
    logEntry("Fg_ConfigFileParser::writeConfigFile");
    writeLine("%s='%s';\n", key, value.c_str());
}

void Fg_ConfigFileParser::writeConfigFileValue(const char* key, const std::string& value) {
    logEntry("Fg_ConfigFileParser::writeConfigFileValue");
    writeLine("%s=%s;\n", key, value.c_str());
}

template <typename... Arguments>
void Fg_ConfigFileParser::writeNumber(const char* key, const char* format, Arguments... arguments) {
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(), format, arguments...);
    writeConfigFileValue(key, text.data());
}

void Fg_ConfigFileParser::writeConfigFileIntKey(const char* key, int value) {
    logEntry("Fg_ConfigFileParser::writeConfigFileIntKey");
    writeNumber(key, "%d", value);
}

void Fg_ConfigFileParser::writeConfigFileUInt64Key(const char* key, unsigned long value) {
    logEntry("Fg_ConfigFileParser::writeConfigFileUInt64Key");
    writeNumber(key, "%lu", value);
}

void Fg_ConfigFileParser::writeConfigFileInt64Key(const char* key, long value) {
    logEntry("Fg_ConfigFileParser::writeConfigFileUInt64Key");
    writeNumber(key, "%li", value);
}

void Fg_ConfigFileParser::writeConfigFileDoubleKey(const char* key, double value) {
    // Readers of these logs search for this spelling.
    logEntry("Fg_ConfigFileParser::wrtiteConfigFileDoubleKey");
    writeNumber(key, "%.*g", DoubleDigits, value);
}

void Fg_ConfigFileParser::writeConfigFileHeader() {
    logEntry("Fg_ConfigFileParser::writeConfigFileHeader");
    writeLine("%s%s", HeaderSection, "\nConfigFileVersion=2.0;\n");
}

void Fg_ConfigFileParser::writeConfigFileByPort(int portNumber) {
    logEntry("Fg_ConfigFileParser::writeConfigFileByPort");
    writeLine("\n%s\n", getPortString(portNumber).c_str());
}

void Fg_ConfigFileParser::writeConfigFilePortA() {
    logEntry("Fg_ConfigFileParser::writeConfigFilePortA");
    writeConfigFileByPort(0);
}

void Fg_ConfigFileParser::writeConfigFilePortB() {
    logEntry("Fg_ConfigFileParser::writeConfigFilePortB");
    writeConfigFileByPort(1);
}

int Fg_ConfigFileParser::getIntValue(const char* text, int* value) const {
    logEntry("Fg_ConfigFileParser::getIntValue");
    // Narrowing to the low 32 bits is meant: unsigned values above 2^31 - 1 stand in files with either sign.
    *value = static_cast<int>(std::strtol(text, nullptr, 10));
    return Success;
}

int Fg_ConfigFileParser::getUInt64Value(const char* text, unsigned long* value) const {
    logEntry("Fg_ConfigFileParser::getIntValue");
    // sscanf and not strtoul, here and below: it leaves the value alone where there is no number.
    std::sscanf(text, "%lu", value);
    return Success;
}

int Fg_ConfigFileParser::getInt64Value(const char* text, long* value) const {
    logEntry("Fg_ConfigFileParser::getIntValue");
    std::sscanf(text, "%li", value);
    return Success;
}

int Fg_ConfigFileParser::getDoubleValue(const char* text, double* value) const {
    logEntry("Fg_ConfigFileParser::getDoubleValue");
    *value = std::strtod(text, nullptr);
    return Success;
}

int Fg_ConfigFileParser::notFound(char* value) const {
    std::strcpy(value, MissingText);
    return KeyNotFound;
}

int Fg_ConfigFileParser::parseKeyFromLine(const char* key, char* value) {
    logEntry("Fg_ConfigFileParser::parseKeyFromLine");
    TextLine line = {};
    if (!file_ || key == nullptr) {
        return notFound(value);
    }
    lines_.restart(file_.get());
    if (!findLineHolding(lines_, key, line)) {
        return notFound(value);
    }
    skipLine(lines_);
    LineSplitter splitter(line);
    splitter.next("='");
    const char* token = splitter.next(ValueDelimiters);
    std::strcpy(value, token == nullptr ? "" : token);
    return Success;
}

int Fg_ConfigFileParser::parseKey(const char* section, const char* key, char* value) {
    logEntry("Fg_ConfigFileParser::parseKey");
    TextLine line = {};
    if (!file_ || section == nullptr || key == nullptr) {
        return notFound(value);
    }
    lines_.restart(file_.get());
    if (!findLineHolding(lines_, section, line) || !findLineOfKey(lines_, key, line)) {
        return notFound(value);
    }
    skipLine(lines_);
    LineSplitter splitter(line);
    splitter.next("=;");
    const char* token = splitter.next(ValueDelimiters);
    std::strcpy(value, token == nullptr || isEndOfLine(token) ? "" : token);
    return Success;
}

template <typename Number>
int Fg_ConfigFileParser::parseNumber(const char* section, const char* key, Conversion<Number> convert, Number* value) {
    TextLine text = {};
    parseKey(section, key, text.data());
    if (std::strstr(text.data(), MissingText) != nullptr) {
        return NumberNotFound;
    }
    return (this->*convert)(text.data(), value);
}

int Fg_ConfigFileParser::parseIntKey(const char* section, const char* key, int* value) {
    logEntry("Fg_ConfigFileParser::parseIntKey");
    return parseNumber(section, key, &Fg_ConfigFileParser::getIntValue, value);
}

int Fg_ConfigFileParser::parseUInt64Key(const char* section, const char* key, unsigned long* value) {
    logEntry("Fg_ConfigFileParser::parseIntKey");
    return parseNumber(section, key, &Fg_ConfigFileParser::getUInt64Value, value);
}

int Fg_ConfigFileParser::parseInt64Key(const char* section, const char* key, long* value) {
    logEntry("Fg_ConfigFileParser::parseIntKey");
    return parseNumber(section, key, &Fg_ConfigFileParser::getInt64Value, value);
}

int Fg_ConfigFileParser::parseDoubleKey(const char* section, const char* key, double* value) {
    logEntry("Fg_ConfigFileParser::parseDoubleKey");
    return parseNumber(section, key, &Fg_ConfigFileParser::getDoubleValue, value);
}

int Fg_ConfigFileParser::parseIntKeyFromHeader(const char* key, int* value) {
    logEntry("Fg_ConfigFileParser::parseIntKeyFromHeader");
    return parseIntKey(HeaderSection, key, value);
}

template <typename Value>
int Fg_ConfigFileParser::parseInPort(int portNumber, const char* key, Lookup<Value> lookup, Value value) {
    if (key == nullptr) {
        return NumberNotFound;
    }
    return (this->*lookup)(getPortString(portNumber).c_str(), key, value);
}

int Fg_ConfigFileParser::parseKeySection(int portNumber, const char* key, char* value) {
    logEntry("Fg_ConfigFileParser::parseKeySection");
    return parseInPort(portNumber, key, &Fg_ConfigFileParser::parseKey, value);
}

int Fg_ConfigFileParser::parseIntKeySection(int portNumber, const char* key, int* value) {
    logEntry("Fg_ConfigFileParser::parseIntKeySection");
    return parseInPort(portNumber, key, &Fg_ConfigFileParser::parseIntKey, value);
}

int Fg_ConfigFileParser::parseUInt64KeySection(int portNumber, const char* key, unsigned long* value) {
    logEntry("Fg_ConfigFileParser::parseUInt64KeySection");
    return parseInPort(portNumber, key, &Fg_ConfigFileParser::parseUInt64Key, value);
}

int Fg_ConfigFileParser::parseInt64KeySection(int portNumber, const char* key, long* value) {
    logEntry("Fg_ConfigFileParser::parseInt64KeySection");
    return parseInPort(portNumber, key, &Fg_ConfigFileParser::parseInt64Key, value);
}

int Fg_ConfigFileParser::parseDoubleKeySection(int portNumber, const char* key, double* value) {
    logEntry("Fg_ConfigFileParser::parseDoubleKeySection");
    return parseInPort(portNumber, key, &Fg_ConfigFileParser::parseDoubleKey, value);
}

void Fg_ConfigFileParser::logEntry(const char* operation) const {
    if (log_ != nullptr) {
        log_->Func(operation);
    }
}

void Fg_ConfigFileParser::logInfo(const char* message) const {
    if (log_ != nullptr) {
        log_->Info(message);
    }
}

void Fg_ConfigFileParser::logError(const char* message) const {
    if (log_ != nullptr) {
        log_->Error(message);
    }
}

}  // namespace quillon
