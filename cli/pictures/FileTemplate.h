#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace quillon::cli {

/// A name for files of which there are several: "out_%03d.png" gives out_001.png, out_002.png ...
class FileTemplate {
public:
    /// One "%d" stands for the number, "%5d" pads it with blanks to five places, "%05d" with zeros; "%%" is a percent
    /// sign. Throws UsageError for any other "%", and for a second number.
    explicit FileTemplate(const std::string& text);

    /// Whether there is a number in it.
    bool isNumbered() const { return numbered_; }
    std::filesystem::path name(std::uint64_t number) const;

private:
    std::string front_;
    std::string back_;
    std::size_t width_ = 0;
    char padding_ = ' ';
    bool numbered_ = false;
};

}  // namespace quillon::cli
