#include "files/LutFileParser.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <utility>

namespace quillon {

namespace {

constexpr int Done = 0;
constexpr int Failed = -1;

constexpr const char* LutTitle = "# Lut data file v1.1\n\n";
// The two knee forms differ in their version alone.
constexpr const char* KneeTitleOneChannel = "# KneeLut data file v1.0\n\n";
constexpr const char* KneeTitleThreeChannels = "# KneeLut data file v1.1\n\n";

constexpr const char* MissingText = "Error";
constexpr const char* KeySeparator = "=";
constexpr const char* KeyDelimiters = "='";
constexpr const char* ElementSeparator = ",";

/// Room for any 32-bit integer, and for any double with twelve digits behind the point.
using NumberText = std::array<char, 352>;

template <typename Number>
NumberText formatted(const char* format, Number number) {
    NumberText text = {};
    std::snprintf(text.data(), text.size(), format, number);
    return text;
}

template <typename Element>
void release(Element*& data) {
    delete[] std::exchange(data, nullptr);
}

/// Zeroed entries, or null if there is no memory for them.
template <typename Element>
Element* allocate(std::uint32_t count) {
    return new (std::nothrow) Element[count]();
}

/// The number of a file is an int, the record's fields are not.
std::uint32_t asUnsigned(int value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace

int Fg_LutFileParser::saveLutToFile(const char* fileName, const LookupTable_s* gray) {
    if (!setSaveFile(fileName)) {
        return Failed;
    }
    writeLutFileHeader(LutTitle);
    writeSection("\n\n[gray]\n\n", *gray);
    return finishWriting();
}

int Fg_LutFileParser::saveLutToFile(const char* fileName, const LookupTable_s* red, const LookupTable_s* green,
                                    const LookupTable_s* blue) {
    if (!setSaveFile(fileName)) {
        return Failed;
    }
    writeLutFileHeader(LutTitle);
    writeColours(*red, *green, *blue);
    return finishWriting();
}

int Fg_LutFileParser::saveLutToFile(const char* fileName, const KneeLookupTable_s* table, const char* section) {
    if (!setSaveFile(fileName)) {
        return Failed;
    }
    writeLutFileHeader(KneeTitleOneChannel);
    writeLutFileHeader(section);
    writeSection("\n\n", *table);
    return finishWriting();
}

int Fg_LutFileParser::saveLutToFile(const char* fileName, const KneeLookupTable_s* red, const KneeLookupTable_s* green,
                                    const KneeLookupTable_s* blue) {
    if (!setSaveFile(fileName)) {
        return Failed;
    }
    writeLutFileHeader(KneeTitleThreeChannels);
    writeColours(*red, *green, *blue);
    return finishWriting();
}

int Fg_LutFileParser::saveMatrixToFile(const char* fileName, const char* header, const int* values, int count) {
    if (!open(fileName, "w")) {
        return Failed;
    }
    writeLutFileHeader(header);
    writeIntKey("nrOfElements", count);
    for (int index = 0; index < count; ++index) {
        writeIntInt(index, values[index]);
    }
    return finishWriting();
}

template <typename Table>
void Fg_LutFileParser::writeColours(const Table& red, const Table& green, const Table& blue) {
    writeSection("[red]\n\n", red);
    writeSection("\n\n[green]\n\n", green);
    writeSection("\n\n[blue]\n\n", blue);
}

void Fg_LutFileParser::writeSection(const char* section, const LookupTable_s& table) {
    writeLutFileHeader(section);
    // All of these stand as signed numbers in the file, whatever the record holds them as.
    writeIntKey("id", static_cast<int>(table.id));
    writeIntKey("nrOfElements", static_cast<int>(table.nrOfElements));
    writeIntKey("format", static_cast<int>(table.format));
    writeIntKey("number", table.number);
    for (std::uint32_t index = 0; index < table.nrOfElements; ++index) {
        writeIntInt(static_cast<int>(index), static_cast<int>(table.data[index]));
    }
}

void Fg_LutFileParser::writeSection(const char* section, const KneeLookupTable_s& table) {
    writeLutFileHeader(section);
    for (std::uint32_t index = 0; index < table.nrOfElements; ++index) {
        writeIntDouble(static_cast<int>(index), table.data[index]);
    }
}

/// The file stays open until the next one or the end of the parser, but what was written can be read from now on.
int Fg_LutFileParser::finishWriting() {
    std::fflush(file_.get());
    return Done;
}

int Fg_LutFileParser::getMatrixFromFile(const char*, int*, int) {
    return Failed;
}

/// The file open before is closed first: closing it writes what is still in its buffer, which must not land in a file
/// of the same name that has been truncated since.
bool Fg_LutFileParser::open(const char* fileName, const char* mode) {
    file_.reset();
    file_ = openTextFile(fileName, mode);
    lines_.forget();
    return file_ != nullptr;
}

bool Fg_LutFileParser::openExisting(const char* fileName) {
    // The file may vanish behind the open, and is then as good as never found.
    return setOpenFile(fileName, true) && checkFileType(fileName) && checkFileExist(fileName);
}

int Fg_LutFileParser::getLutFromFile(const char* fileName, LookupTable_s* table, const char* section) {
    release(table->data);
    if (!openExisting(fileName)) {
        return Failed;
    }
    int id = 0;
    int count = 0;
    int format = 0;
    int number = 0;
    parseIntKey("id", &id, KeyDelimiters);
    parseIntKey("nrOfElements", &count, KeyDelimiters);
    parseIntKey("format", &format, KeyDelimiters);
    parseIntKey("number", &number, KeyDelimiters);

    table->id = asUnsigned(id);
    table->nrOfElements = std::min(asUnsigned(count), MaxElements);
    table->format = asUnsigned(format);
    std::memcpy(reinterpret_cast<std::byte*>(table) + offsetof(LookupTable_s, number), &number, sizeof(number));
    table->data = allocate<std::uint32_t>(table->nrOfElements);
    return table->data == nullptr ? Failed : parseIntInt(table->data, table->nrOfElements, ElementSeparator, section);
}

int Fg_LutFileParser::getLutFromFile(const char* fileName, LookupTable_s* red, LookupTable_s* green,
                                     LookupTable_s* blue) {
    return readColours(fileName, red, green, blue);
}

int Fg_LutFileParser::getLutFromFile(const char* fileName, KneeLookupTable_s* table, const char* section) {
    release(table->data);
    if (!openExisting(fileName)) {
        return Failed;
    }
    table->data = allocate<double>(table->nrOfElements);
    return table->data == nullptr ? Failed
                                  : parseIntDouble(table->data, table->nrOfElements, ElementSeparator, section);
}

int Fg_LutFileParser::getLutFromFile(const char* fileName, KneeLookupTable_s* red, KneeLookupTable_s* green,
                                     KneeLookupTable_s* blue) {
    return readColours(fileName, red, green, blue);
}

template <typename Table>
int Fg_LutFileParser::readColours(const char* fileName, Table* red, Table* green, Table* blue) {
    for (const auto& [table, section] :
         {std::pair(red, "[red]"), std::pair(green, "[green]"), std::pair(blue, "[blue]")}) {
        if (const int result = getLutFromFile(fileName, table, section); result != Done) {
            return result;
        }
    }
    return Done;
}

bool Fg_LutFileParser::checkFileType(const char*) const {
    return true;
}

bool Fg_LutFileParser::checkFileExist(const char* fileName) const {
    return openTextFile(fileName, "r") != nullptr;
}

bool Fg_LutFileParser::setSaveFile(const char* fileName) {
    if (!checkFileType(fileName)) {
        return false;
    }
    return open(fileName, "w");
}

bool Fg_LutFileParser::setOpenFile(const char* fileName, bool readOnly) {
    if (!checkFileType(fileName) || !checkFileExist(fileName)) {
        return false;
    }
    return open(fileName, readOnly ? "r" : "r+");
}

int Fg_LutFileParser::parseKeyFromLine(const char* key, char* value, const char* delimiters) {
    std::strcpy(value, MissingText);
    if (!file_) {
        return Done;
    }
    lines_.restart(file_.get());
    for (TextLine line = {}; lines_.next(line);) {
        if (std::strstr(line.data(), key) != nullptr) {
            LineSplitter splitter(line);
            splitter.next(delimiters);
            const char* token = splitter.next(delimiters);
            std::strcpy(value, token == nullptr ? "" : token);
            lines_.next(line);
            break;
        }
    }
    return Done;
}

int Fg_LutFileParser::parseIntKey(const char* key, int* value, const char* delimiters) {
    TextLine text = {};
    parseKeyFromLine(key, text.data(), delimiters);
    getIntValue(text.data(), value);
    return std::strcmp(text.data(), MissingText) == 0 ? Failed : Done;
}

int Fg_LutFileParser::parseDoubleKey(const char* key, double* value, const char* delimiters) {
    TextLine text = {};
    parseKeyFromLine(key, text.data(), delimiters);
    getDoubleValue(text.data(), value);
    return std::strcmp(text.data(), MissingText) == 0 ? Failed : Done;
}

/// Calls `store(index, text)` for each entry found. The tag of an entry may stand anywhere in its line, so that "1," is
/// found in "11," too: entries are only told apart by their order.
template <typename Store>
void Fg_LutFileParser::forEachElement(std::uint32_t count, const char* separator, const char* section, Store store) {
    if (!file_) {
        return;
    }
    lines_.restart(file_.get());
    std::uint32_t index = 0;
    std::string tag = std::string("0") + separator;
    bool isInSection = false;
    for (TextLine line = {}; index < count && lines_.next(line);) {
        isInSection = isInSection || std::strstr(line.data(), section) != nullptr;
        if (!isInSection || std::strstr(line.data(), tag.c_str()) == nullptr) {
            continue;
        }
        LineSplitter splitter(line);
        splitter.next(separator);
        const char* token = splitter.next(separator);
        store(index, token == nullptr ? "" : token);
        ++index;
        tag = std::to_string(static_cast<std::int32_t>(index)) + separator;
    }
}

int Fg_LutFileParser::parseIntInt(std::uint32_t* values, std::uint32_t count, const char* separator,
                                  const char* section) {
    forEachElement(count, separator, section, [&](std::uint32_t index, const char* text) {
        int value = 0;
        getIntValue(text, &value);
        values[index] = asUnsigned(value);
    });
    return Done;
}

int Fg_LutFileParser::parseIntDouble(double* values, std::uint32_t count, const char* separator, const char* section) {
    forEachElement(count, separator, section,
                   [&](std::uint32_t index, const char* text) { getDoubleValue(text, &values[index]); });
    return Done;
}

int Fg_LutFileParser::getIntValue(const char* text, int* value) const {
    // Narrowing to the low 32 bits is meant: the fields are unsigned, and stand in files with either sign.
    *value = static_cast<int>(std::strtol(text, nullptr, 10));
    return Done;
}

int Fg_LutFileParser::getDoubleValue(const char* text, double* value) const {
    *value = std::strtod(text, nullptr);
    return Done;
}

void Fg_LutFileParser::writeLutFileHeader(const char* text) {
    if (file_) {
        lines_.handOver(file_.get());
        std::fputs(text, file_.get());
    }
}

void Fg_LutFileParser::writeLutFileValue(const char* key, const char* separator, const char* value) {
    if (file_) {
        lines_.handOver(file_.get());
        std::fprintf(file_.get(), "%s%s%s;\n", key, separator, value);
    }
}

void Fg_LutFileParser::writeIntKey(const char* key, int value) {
    writeLutFileValue(key, KeySeparator, formatted("%d", value).data());
}

void Fg_LutFileParser::writeDoubleKey(const char* key, double value) {
    writeLutFileValue(key, KeySeparator, formatted("%.12g", value).data());
}

void Fg_LutFileParser::writeIntInt(int index, int value) {
    writeLutFileValue(formatted("%d", index).data(), ElementSeparator, formatted("%d", value).data());
}

void Fg_LutFileParser::writeIntDouble(int index, double value) {
    writeLutFileValue(formatted("%d", index).data(), ElementSeparator, formatted("%0.12lf", value).data());
}

}  // namespace quillon
