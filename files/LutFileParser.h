/// @file
/// The syntax of lookup table files (.lut): a title, and per colour a section of keys and of one line per entry.
#pragma once

#include <cstddef>
#include <cstdint>

#include "files/LineReader.h"
#include "files/TextFile.h"

namespace quillon {

/// One colour's lookup table.
struct LookupTable_s {
    std::uint32_t* data = nullptr;   ///< the entries; a reader replaces them with an array made by `new[]`
    std::uint32_t id = 0;            ///< the channel: 0 red, 1 green, 2 blue
    std::uint32_t nrOfElements = 0;  ///< the number of entries in `data`
    std::uint32_t format = 0;
    std::uint8_t number = 0;  ///< written as 8 bits; a reader stores 32, over `numberExtension` too
    std::uint8_t numberExtension[3] = {};
};
static_assert(sizeof(LookupTable_s) == offsetof(LookupTable_s, number) + sizeof(std::uint32_t));

/// One colour's curve as knee points.
struct KneeLookupTable_s {
    double* data = nullptr;          ///< the points; a reader replaces them with an array made by `new[]`
    std::uint32_t nrOfElements = 0;  ///< set by the caller, for a read too: it does not stand in the file
};

/// Reads and writes lookup table files of any name. Results are 0 or -1; nothing throws.
///
/// Of the records that a read is given, `data` is released first (`delete[]`), and is null where the read fails before
/// it has made a new array. The caller owns what it finds there afterwards, after a failed read too.
///
/// A read is content with what it finds: missing keys are 0 and missing entries of a full table are 0. The section's
/// name matters for the entries alone; the keys come from their first line in the file. The end of a section ends
/// nothing: entries missing there are taken from the sections that follow.
class Fg_LutFileParser {
public:
    /// The entries of the hardware's tables. A read makes no larger table, whatever the file's count says.
    static constexpr std::uint32_t MaxElements = 16384;

    /// One channel, in the section "[gray]". -1 if the file can't be opened for writing, as for all that write.
    int saveLutToFile(const char* fileName, const LookupTable_s* gray);
    /// Three channels, in the sections "[red]", "[green]" and "[blue]".
    int saveLutToFile(const char* fileName, const LookupTable_s* red, const LookupTable_s* green,
                      const LookupTable_s* blue);
    int saveLutToFile(const char* fileName, const KneeLookupTable_s* table, const char* section);
    int saveLutToFile(const char* fileName, const KneeLookupTable_s* red, const KneeLookupTable_s* green,
                      const KneeLookupTable_s* blue);
    /// The caller's header text, the count and the values.
    int saveMatrixToFile(const char* fileName, const char* header, const int* values, int count);

    /// Always -1: a matrix is written for other readers.
    int getMatrixFromFile(const char* fileName, int* values, int count);
    /// The table of `section`. -1 if the file can't be opened; a count above MaxElements reads as MaxElements.
    int getLutFromFile(const char* fileName, LookupTable_s* table, const char* section);
    /// The sections "[red]", "[green]" and "[blue]", one after the other up to the first failure.
    int getLutFromFile(const char* fileName, LookupTable_s* red, LookupTable_s* green, LookupTable_s* blue);
    /// As many points as the record's count says.
    int getLutFromFile(const char* fileName, KneeLookupTable_s* table, const char* section);
    int getLutFromFile(const char* fileName, KneeLookupTable_s* red, KneeLookupTable_s* green, KneeLookupTable_s* blue);

    /// True: a lookup table file may have any name.
    bool checkFileType(const char* fileName) const;
    /// Whether the file can be opened for reading. A directory can, and reads as an empty file.
    bool checkFileExist(const char* fileName) const;
    /// Creates or truncates the file that the writes go to, and closes the one open before.
    bool setSaveFile(const char* fileName);
    /// Opens an existing file, and closes the one open before.
    bool setOpenFile(const char* fileName, bool readOnly);

    // The steps of a read. While no file is open they find nothing.

    /// The second token of the first line that holds `key` anywhere, empty if there is none; the text "Error" if no
    /// line does. `value` needs room for 256 characters. Returns 0.
    int parseKeyFromLine(const char* key, char* value, const char* delimiters);
    /// 0, or -1 and the value 0 if no line holds the key.
    int parseIntKey(const char* key, int* value, const char* delimiters);
    int parseDoubleKey(const char* key, double* value, const char* delimiters);
    /// Stores the entries 0 to `count` - 1 that are found, in this order, from the line that holds `section` on.
    /// Returns 0.
    int parseIntInt(std::uint32_t* values, std::uint32_t count, const char* separator, const char* section);
    int parseIntDouble(double* values, std::uint32_t count, const char* separator, const char* section);
    /// A text that is no number gives 0; of a number that needs more than 32 bits the low 32 are kept. Returns 0.
    int getIntValue(const char* text, int* value) const;
    int getDoubleValue(const char* text, double* value) const;

    // The steps of a write. While no file is open they do nothing.

    /// A title or section text, as it is.
    void writeLutFileHeader(const char* text);
    /// Key, separator, value, ";" and a line feed: the one form of all lines that carry a value.
    void writeLutFileValue(const char* key, const char* separator, const char* value);
    void writeIntKey(const char* key, int value);
    /// Twelve significant digits, without trailing zeros.
    void writeDoubleKey(const char* key, double value);
    void writeIntInt(int index, int value);
    /// Twelve digits behind the point.
    void writeIntDouble(int index, double value);

private:
    void writeSection(const char* section, const LookupTable_s& table);
    void writeSection(const char* section, const KneeLookupTable_s& table);
    template <typename Table>
    void writeColours(const Table& red, const Table& green, const Table& blue);
    int finishWriting();
    bool open(const char* fileName, const char* mode);
    bool openExisting(const char* fileName);
    template <typename Table>
    int readColours(const char* fileName, Table* red, Table* green, Table* blue);
    template <typename Store>
    void forEachElement(std::uint32_t count, const char* separator, const char* section, Store store);

    TextFile file_;
    LineReader lines_;
};

}  // namespace quillon
