/// @file
/// Looks keys of every kind up in a configuration file of any bytes: what comes back keeps to its bounds, and a look-up
/// that found nothing says so.
#include <cstring>

#include "files/ConfigFileParser.h"
#include "fuzz/InputFile.h"

namespace {

using quillon::Fg_ConfigFileParser;
using quillon::fuzz::expect;

constexpr int Untouched = 0x5a5a5a5a;

/// A value holds no delimiter, and fits a line of 255 characters.
void expectText(int result, const char* text, std::size_t room) {
    const std::size_t length = ::strnlen(text, room);
    expect(length < 256);
    expect(std::strpbrk(text, "=;'") == nullptr);
    expect(result == 0 || (result == -8000 && std::strcmp(text, "Error") == 0));
}

void lookUp(Fg_ConfigFileParser& parser, const char* key) {
    char text[256];
    std::memset(text, 'x', sizeof(text));
    expectText(parser.parseKeyFromLine(key, text), text, sizeof(text));
    std::memset(text, 'x', sizeof(text));
    const int found = parser.parseKeySection(0, key, text);
    expectText(found, text, sizeof(text));
    const bool isNumber = found == 0 && std::strstr(text, "Error") == nullptr;

    int integer = Untouched;
    const int result = parser.parseIntKeySection(0, key, &integer);
    expect(result == (isNumber ? 0 : -1));
    expect(isNumber || integer == Untouched);

    double number = 0.0;
    long signedNumber = 0;
    unsigned long unsignedNumber = 0;
    expect(parser.parseDoubleKeySection(0, key, &number) == result);
    expect(parser.parseInt64KeySection(0, key, &signedNumber) == result);
    expect(parser.parseUInt64KeySection(0, key, &unsignedNumber) == result);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const quillon::fuzz::InputFile file(".mcf", bytes, size);
    Fg_ConfigFileParser parser(nullptr, file.name(), true);
    for (const char* key : {"Typ", "FG_WIDTH", "FG_LINE_DOWNSCALE", "FG_LINEPERIODE", "FG_LUT_CUSTOM_FILE"}) {
        lookUp(parser, key);
    }
    int port = Untouched;
    const int result = parser.parseIntKeyFromHeader("AktivePort", &port);
    expect(result == 0 || (result == -1 && port == Untouched));
    return 0;
}
