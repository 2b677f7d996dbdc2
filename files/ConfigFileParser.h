/// @file
/// The syntax of the configuration file (.mcf): sections, and one line per key. Which keys a file holds and what a load
/// does with them is not known here.
#pragma once

#include <string>

#include "files/LineReader.h"
#include "files/TextFile.h"

namespace quillon {

class Fg_Log;

/// Writes a configuration file from its top to its end, or looks keys up in one, in any order.
///
/// For a save, build it with a null file name and call setSaveFile; for a load, build it with the file name and
/// `readOnly`. Nothing throws. While no file is open, writes do nothing and look-ups find nothing.
///
/// Numbers are written and read under the locale of the calling process, so that a decimal comma there is a decimal
/// comma in the file.
///
/// A look-up scans the file from its start in pieces of at most 255 characters; the pieces of a longer line count as
/// lines of their own.
class Fg_ConfigFileParser {
public:
    /// Opens `fileName` for reading, or for reading and writing unless `readOnly`, if its type and existence pass their
    /// checks. `log` may be null; otherwise it must outlive the parser.
    Fg_ConfigFileParser(Fg_Log* log, const char* fileName, bool readOnly);

    /// Flushes and closes the file.
    ~Fg_ConfigFileParser();

    Fg_ConfigFileParser(const Fg_ConfigFileParser&) = delete;
    Fg_ConfigFileParser& operator=(const Fg_ConfigFileParser&) = delete;

    /// Whether ".mcf" stands anywhere in the name. False for null.
    bool checkFileType(const char* fileName) const;
    /// Whether the file can be opened for reading. False for null.
    bool checkFileExist(const char* fileName) const;
    /// Creates or truncates the file that the writes go to. False if the name is of another type or can't be opened.
    bool setSaveFile(const char* fileName);

    /// The section name of a camera port: "[Port A]" for 0, "[Port B]" for 1.
    std::string getPortString(int portNumber) const;

    // Writing. Each line is flushed to the file at once, and goes where the write or look-up before it has ended: after
    // a look-up that found something, behind the line that follows what it found; after one that found nothing, at the
    // end of the file.

    /// KEY='VALUE'; without escaping: a value that holds a ' or ; can't be read back.
    void writeConfigFile(const char* key, const std::string& value);
    /// KEY=VALUE;
    void writeConfigFileValue(const char* key, const std::string& value);
    void writeConfigFileIntKey(const char* key, int value);
    void writeConfigFileUInt64Key(const char* key, unsigned long value);
    void writeConfigFileInt64Key(const char* key, long value);
    /// Twelve significant digits, without trailing zeros.
    void writeConfigFileDoubleKey(const char* key, double value);
    /// The header's section name and the version of the format.
    void writeConfigFileHeader();
    /// An empty line and the section name of the port.
    void writeConfigFileByPort(int portNumber);
    void writeConfigFilePortA();
    void writeConfigFilePortB();

    // Conversion of a value's text. All return 0.

    /// A text that is no number gives 0; of a number that needs more than 32 bits the low 32 are kept.
    int getIntValue(const char* text, int* value) const;
    /// A text that is no number leaves the value as it was.
    int getUInt64Value(const char* text, unsigned long* value) const;
    /// As getUInt64Value. A leading 0x or 0 makes the number hexadecimal or octal.
    int getInt64Value(const char* text, long* value) const;
    /// A text that is no number gives 0.
    int getDoubleValue(const char* text, double* value) const;

    // Look-up of a text. `value` needs room for 256 characters. 0, or -8000 with the text "Error" if nothing is found.

    /// The value in the first line of the file that holds `key` anywhere.
    int parseKeyFromLine(const char* key, char* value);
    /// The value of the first line behind the section's name that begins with `key` and a '='. The next section does
    /// not end the search.
    int parseKey(const char* section, const char* key, char* value);
    /// parseKey in the section of a port; -1 for a null key.
    int parseKeySection(int portNumber, const char* key, char* value);

    // Look-up of a number. 0, or -1 with the value as it was if the key isn't there or its text holds "Error".

    int parseIntKey(const char* section, const char* key, int* value);
    int parseUInt64Key(const char* section, const char* key, unsigned long* value);
    int parseInt64Key(const char* section, const char* key, long* value);
    int parseDoubleKey(const char* section, const char* key, double* value);
    /// parseIntKey in the header's section, whose line must end in a bare line feed.
    int parseIntKeyFromHeader(const char* key, int* value);
    // The same in the section of a port; -1 for a null key too.
    int parseIntKeySection(int portNumber, const char* key, int* value);
    int parseUInt64KeySection(int portNumber, const char* key, unsigned long* value);
    int parseInt64KeySection(int portNumber, const char* key, long* value);
    int parseDoubleKeySection(int portNumber, const char* key, double* value);

private:
    template <typename Number>
    using Conversion = int (Fg_ConfigFileParser::*)(const char* text, Number* value) const;
    template <typename Value>
    using Lookup = int (Fg_ConfigFileParser::*)(const char* section, const char* key, Value value);

    template <typename Number>
    int parseNumber(const char* section, const char* key, Conversion<Number> convert, Number* value);
    template <typename Value>
    int parseInPort(int portNumber, const char* key, Lookup<Value> lookup, Value value);
    template <typename... Arguments>
    void writeLine(const char* format, Arguments... arguments);
    template <typename... Arguments>
    void writeNumber(const char* key, const char* format, Arguments... arguments);
    int notFound(char* value) const;

    void logEntry(const char* operation) const;
    void logInfo(const char* message) const;
    void logError(const char* message) const;

    Fg_Log* log_;
    TextFile file_;
    LineReader lines_;
};

}  // namespace quillon
