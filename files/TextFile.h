/// @file
/// What the two text formats share: an open file that closes itself, a line of at most 255 characters, and the
/// splitting of a line in place.
#pragma once

#include <array>
#include <cstdio>
#include <memory>

namespace quillon {

/// Flushes and closes a stream; the deleter of TextFile.
struct TextFileCloser {
    void operator()(std::FILE* stream) const;
};

/// An open stream, or null.
using TextFile = std::unique_ptr<std::FILE, TextFileCloser>;

/// Opens `fileName` with an fopen `mode` ("r", "r+" or "w"). Null if the name is null or the file can't be opened, and,
/// for the modes that read, if it is a device, a pipe or a socket: these have no end, or can't be read from their start
/// again. A directory opens for reading and holds no lines.
TextFile openTextFile(const char* fileName, const char* mode);

/// Room for one line as it is read: 255 characters and the terminator. Also room for any part of a line.
using TextLine = std::array<char, 256>;

/// Reads up to and with the next line feed, or 255 characters of a longer line, whose rest the next call reads.
/// False at the end of the file, on a failed read and for a null `stream`; `line` has no meaning then.
bool readLine(std::FILE* stream, TextLine& line);

/// Splits a line into tokens as `strtok` does: runs of delimiters count as one, and leading ones are skipped. The line
/// must outlive the splitter, which writes terminators into it. Each token may name delimiters of its own.
class LineSplitter {
public:
    explicit LineSplitter(TextLine& line) : start(line.data()) {}

    /// The next token, or null if nothing but delimiters is left.
    const char* next(const char* delimiters);

private:
    char* start;
    char* rest = nullptr;
};

}  // namespace quillon
