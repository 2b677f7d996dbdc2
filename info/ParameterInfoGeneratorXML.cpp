#include "info/ParameterInfoGeneratorXML.h"

#include <array>
#include <charconv>

#include "info/XmlFilter.h"
#include "quillon/LiveField.h"

namespace quillon {

namespace {

using namespace std::string_view_literals;

constexpr int IntegerLength = 4;
constexpr int LongIntegerLength = 8;
constexpr int FloatLength = 8;
constexpr int StringLength = 4096;
constexpr int FloatDigits = 12;

void append(std::string& out, std::string_view text) {
    out.append(text);
}

template <typename Integer>
requires std::is_integral_v<Integer>
void append(std::string& out, Integer number) {
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

void append(std::string& out, double number) {
    std::array<char, 32> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, FloatDigits)
            .ptr;
    out.append(digits.data(), end);
}

template <typename... Pieces>
void write(std::string& out, const Pieces&... pieces) {
    (append(out, pieces), ...);
}

/// A text whose special characters are replaced on its way into the document.
struct Escaped {
    std::string_view text;
};

void append(std::string& out, Escaped escaped) {
    appendXmlString(out, escaped.text);
}

std::string filteredSymbol(const RegisterInfo& info) {
    return info.symbol == nullptr ? std::string() : xmlStringFilter(info.symbol);
}

/// The transfer length is the one integer that is read and written with 64 bits.
int integerLength(const RegisterInfo& info) {
    return info.symbol != nullptr && info.symbol == "FG_TRANSFER_LEN"sv ? LongIntegerLength : IntegerLength;
}

std::string_view accessMode(const RegisterInfo& info) {
    constexpr std::array<std::string_view, 4> modes{"", "RO", "WO", "RW"};
    const auto flags = static_cast<std::uint32_t>(loadLive(info.accessFlags));
    return modes[flags & (RegisterAccessReadable | RegisterAccessWritable)];
}

}  // namespace

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info, int length) {
    if (info.parameterId != 0) {
        write(out_, "<Address>"sv, info.parameterId, "</Address>\n"sv);
    }
    write(out_, "<Length>"sv, length, "</Length>\n"sv);
    write(out_, "<AccessMode>"sv, accessMode(info), "</AccessMode>\n"sv);
    write(out_, "<pPort>DevicePort</pPort>\n"sv);
}

void ParameterInfoGeneratorXML::integerRegister(const RegisterInfo& info, const std::string& name, int length,
                                                std::string_view sign) {
    write(out_, "<IntReg Name=\""sv, name, "_Reg\">\n"sv);
    infoGenerate(info, length);
    write(out_, "<Sign>"sv, sign, "</Sign>\n<Endianess>LittleEndian</Endianess>\n</IntReg>"sv);
}

void ParameterInfoGeneratorXML::description(const RegisterInfo& info) {
    if (info.label != nullptr && *info.label != '\0') {
        write(out_, "<Description>"sv, Escaped{info.label}, "</Description>\n"sv);
    }
}

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info, std::uint64_t, std::uint64_t min,
                                             std::uint64_t max, std::uint64_t inc) {
    const std::string name = filteredSymbol(info);
    integerRegister(info, name, integerLength(info), "Signed");
    write(out_, "\n<Integer Name='"sv, name, "'>\n"sv);
    description(info);
    write(out_, "<pValue>"sv, name, "_Reg</pValue>\n"sv);
    write(out_, "<Min>"sv, min, "</Min>\n<Max>"sv, max, "</Max>\n"sv);
    if (inc != 0) {
        write(out_, "<Inc>"sv, inc, "</Inc>\n"sv);
    }
    write(out_, "</Integer>"sv);
}

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info, double, double min, double max, double) {
    const std::string name = filteredSymbol(info);
    write(out_, "<FloatReg Name=\""sv, name, "_Reg\">\n"sv);
    infoGenerate(info, FloatLength);
    write(out_, "<Endianess>LittleEndian</Endianess>\n</FloatReg>\n"sv);
    write(out_, "<Float Name=\""sv, name, "\">\n"sv);
    description(info);
    write(out_, "<pValue>"sv, name, "_Reg</pValue>\n"sv);
    write(out_, "<Min>"sv, min, "</Min>\n<Max>"sv, max, "</Max>\n</Float>"sv);
}

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info) {
    write(out_, "<StringReg Name=\""sv, filteredSymbol(info), "\">\n"sv);
    description(info);
    infoGenerate(info, StringLength);
    write(out_, "</StringReg>"sv);
}

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info, int, const NamesByValue& entries) {
    const std::string name = filteredSymbol(info);
    write(out_, "<Enumeration Name='"sv, name, "'>\n"sv);
    description(info);
    for (const auto& [value, text] : entries) {
        write(out_, "<EnumEntry Name=\""sv, Escaped{text}, "\">\n<Value>"sv, value, "</Value>\n</EnumEntry>\n"sv);
    }
    write(out_, "<pValue>"sv, name, "_Reg</pValue>\n</Enumeration>\n\n"sv);
    integerRegister(info, name, IntegerLength, "Unsigned");
}

void ParameterInfoGeneratorXML::selector(const std::string& name, std::size_t elements) {
    write(out_, "<Integer Name='"sv, name, "_Selector'>\n<Value>0</Value>\n<Min>0</Min>\n"sv);
    // No elements at all give the largest number: the subtraction wraps.
    write(out_, "<Max>"sv, elements - 1, "</Max>\n<Inc>1</Inc>\n"sv);
    write(out_, "<pSelect>"sv, name, "_Reg</pSelect>\n</Integer>"sv);
}

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info, const std::vector<std::uint64_t>& values,
                                             std::uint64_t min, std::uint64_t max, std::uint64_t inc) {
    const std::string name = filteredSymbol(info);
    selector(name, values.size());
    integerRegister(info, name, integerLength(info), "Signed");
    write(out_, "\n<Integer Name='"sv, name, "'>\n"sv);
    description(info);
    write(out_, "<pValue>"sv, name, "_Reg</pValue>\n"sv);
    write(out_, "<Min>"sv, min, "</Min>\n<Max>"sv, max, "</Max>\n<Inc>"sv, inc, "</Inc>\n</Integer>"sv);
}

void ParameterInfoGeneratorXML::infoGenerate(const RegisterInfo& info, const std::vector<double>& values, double min,
                                             double max, double inc) {
    selector(filteredSymbol(info), values.size());
    infoGenerate(info, 0.0, min, max, inc);
}

}  // namespace quillon
