/// @file
/// Reads a lookup table file of any bytes in all its forms: an existing file never fails, no table is larger than the
/// hardware's, and what was read and written reads the same again.
#include <algorithm>

#include "files/LutFileParser.h"
#include "fuzz/InputFile.h"

namespace {

using quillon::Fg_LutFileParser;
using quillon::KneeLookupTable_s;
using quillon::LookupTable_s;
using quillon::fuzz::expect;
using quillon::fuzz::InputFile;

/// Three channels that release their entries.
template <typename Table>
struct Channels {
    Table red, green, blue;

    Channels() = default;
    Channels(const Channels&) = delete;
    Channels& operator=(const Channels&) = delete;
    ~Channels() {
        for (Table* table : {&red, &green, &blue}) {
            delete[] table->data;
        }
    }

    int read(const char* name) {
        Fg_LutFileParser parser;
        return parser.getLutFromFile(name, &red, &green, &blue);
    }
};

void expectSame(const LookupTable_s& read, const LookupTable_s& readAgain) {
    expect(read.nrOfElements == readAgain.nrOfElements);
    expect(std::equal(read.data, read.data + read.nrOfElements, readAgain.data));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const InputFile file(".lut", bytes, size);

    Channels<LookupTable_s> tables;
    expect(tables.read(file.name()) == 0);
    for (const LookupTable_s* table : {&tables.red, &tables.green, &tables.blue}) {
        expect(table->data != nullptr && table->nrOfElements <= Fg_LutFileParser::MaxElements);
    }

    Channels<KneeLookupTable_s> knees;
    knees.red.nrOfElements = knees.green.nrOfElements = knees.blue.nrOfElements = 64;
    expect(knees.read(file.name()) == 0);

    const InputFile copy(".copy.lut", bytes, 0);
    Fg_LutFileParser writer;
    expect(writer.saveLutToFile(copy.name(), &tables.red, &tables.green, &tables.blue) == 0);
    Channels<LookupTable_s> again;
    expect(again.read(copy.name()) == 0);
    expectSame(tables.red, again.red);
    expectSame(tables.green, again.green);
    expectSame(tables.blue, again.blue);
    return 0;
}
