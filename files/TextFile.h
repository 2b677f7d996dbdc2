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
/// for the modes that read, if it is a pipe, which would have to wait for a writer and can't be read from its start
/// again. A device opens without waiting; a directory opens for reading and holds no lines.
TextFile openTextFile(const char* fileName, const char* mode);

/// Room for one line as it is read: 255 characters and the terminator. Also room for any part of a line.
using TextLine = std::array<char, 256>;

/// Splits a line into tokens as `strtok` does: runs of delimiters count as one, and leading ones are skipped. The line
/// must outlive the splitter, which writes terminators into it. Each token may name delimiters of its own.
class LineSplitter {
public:
    explicit LineSplitter(TextLine& line) : start_(line.data()) {}

    /// The next token, or null if nothing but delimiters is left.
    const char* next(const char* delimiters);

private:
    char* start_;
    char* rest_ = nullptr;
};

}  // namespace quillon
