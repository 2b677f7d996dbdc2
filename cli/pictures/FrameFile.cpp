#include "cli/pictures/FrameFile.h"

#include <algorithm>
#include <array>

#include "cli/ExitStatus.h"
#include "cli/PartFile.h"
#include "cli/pictures/Formats.h"

namespace quillon::cli {

namespace {

using Paths = std::vector<std::filesystem::path>;
using Parts = std::vector<PartFile>;

Paths oneFile(const std::filesystem::path& file) {
    return {file};
}

/// `file` with `words` in front of its suffix.
std::filesystem::path with(const std::filesystem::path& file, const char* words) {
    std::filesystem::path name = file.stem();
    name += words;
    name += file.extension();
    return file.parent_path() / name;
}

Paths threeGreyFiles(const std::filesystem::path& file) {
    return {with(file, "_r"), with(file, "_g"), with(file, "_b")};
}

Paths withDescription(const std::filesystem::path& file) {
    return {file, std::filesystem::path(file).replace_extension(".json")};
}

void asPng(const client::Frame& frame, Parts& parts) {
    writePng(frame, parts[0]);
}

void asTiff(const client::Frame& frame, Parts& parts) {
    writeTiff(frame, parts[0]);
}

void asPpm(const client::Frame& frame, Parts& parts) {
    writePpm(frame, parts[0]);
}

void asThreePgms(const client::Frame& frame, Parts& parts) {
    constexpr std::array components{client::Component::Red, client::Component::Green, client::Component::Blue};
    for (std::size_t i = 0; i < components.size(); ++i) {
        writePgm(frame, components[i], parts[i]);
    }
}

void asRaw(const client::Frame& frame, Parts& parts) {
    parts[0].write(frame.bytes());
    writeDescription(frame, parts[1]);
}

struct Format {
    std::string_view suffix;
    Paths (*files)(const std::filesystem::path& file);
    void (*write)(const client::Frame& frame, Parts& parts);
};

constexpr std::array formats{
    Format{".png", oneFile, asPng},  Format{".ppm", oneFile, asPpm},   Format{".pgm", threeGreyFiles, asThreePgms},
    Format{".tif", oneFile, asTiff}, Format{".tiff", oneFile, asTiff}, Format{".raw", withDescription, asRaw}};

const Format& formatOf(const std::filesystem::path& file) {
    const std::string suffix = file.extension().string();
    const auto format = std::ranges::find(formats, suffix, &Format::suffix);
    if (format == formats.end()) {
        throw UsageError("\"" + file.string() + "\" does not tell what kind of picture it is: its name ends in " +
                         frameFileSuffixes());
    }
    return *format;
}

}  // namespace

std::string frameFileSuffixes() {
    std::string list;
    for (const Format& format : formats) {
        const bool last = &format == &formats.back();
        list += (list.empty() ? "" : last ? " or " : ", ") + std::string(format.suffix);
    }
    return list;
}

Paths frameFiles(const std::filesystem::path& file) {
    return formatOf(file).files(file);
}

void writeFrame(const client::Frame& frame, const std::filesystem::path& file) {
    const Format& format = formatOf(file);
    if ((frame.lines() == 0 || frame.width() == 0) && format.write != asRaw) {
        throw RefusedError(file.string() + " cannot be written: frame " + std::to_string(frame.description().number) +
                           " has no complete line");
    }
    Parts parts;
    for (const std::filesystem::path& name : format.files(file)) {
        parts.emplace_back(name);
    }
    format.write(frame, parts);
    std::ranges::for_each(parts, &PartFile::finish);
    std::ranges::for_each(parts, &PartFile::takePlace);
}

}  // namespace quillon::cli
