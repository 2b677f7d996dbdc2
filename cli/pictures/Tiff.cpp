#include <tiffio.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <vector>

#include "cli/ExitStatus.h"
#include "cli/pictures/Formats.h"

namespace quillon::cli {

namespace {

/// The library's view of a file that is written. It goes through C, so the first failure is kept until it has returned.
struct Target {
    PartFile& file;
    std::exception_ptr failure;
    toff_t place = 0;
};

tmsize_t readNothing(thandle_t, void*, tmsize_t) {
    return 0;
}

tmsize_t append(thandle_t handle, void* data, tmsize_t size) {
    auto& target = *static_cast<Target*>(handle);
    try {
        target.file.write(std::span(static_cast<const std::byte*>(data), static_cast<std::size_t>(size)));
        target.place += static_cast<toff_t>(size);
        return size;
    } catch (...) {
        target.failure = std::current_exception();
        return -1;
    }
}

toff_t seek(thandle_t handle, toff_t offset, int whence) {
    auto& target = *static_cast<Target*>(handle);
    try {
        const toff_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? target.place : target.file.size();
        target.file.seek(base + offset);
        return target.place = base + offset;
    } catch (...) {
        target.failure = std::current_exception();
        return static_cast<toff_t>(-1);
    }
}

int leaveOpen(thandle_t) {
    return 0;
}

toff_t sizeOf(thandle_t handle) {
    auto& target = *static_cast<Target*>(handle);
    try {
        return target.file.size();
    } catch (...) {
        target.failure = std::current_exception();
        return 0;
    }
}

/// The library tells its failures on standard error; they are told here.
struct Quietly {
    TIFFErrorHandler errors = TIFFSetErrorHandler(nullptr);
    TIFFErrorHandler warnings = TIFFSetWarningHandler(nullptr);
    Quietly() = default;
    Quietly(const Quietly&) = delete;
    Quietly& operator=(const Quietly&) = delete;
    ~Quietly() {
        TIFFSetErrorHandler(errors);
        TIFFSetWarningHandler(warnings);
    }
};

[[noreturn]] void refuse(const Target& target) {
    if (target.failure) {
        std::rethrow_exception(target.failure);
    }
    throw RefusedError(target.file.file().string() + " cannot be written as TIFF");
}

void expect(const Target& target, bool written) {
    if (!written || target.failure) {
        refuse(target);
    }
}

}  // namespace

void writeTiff(const client::Frame& frame, PartFile& file) {
    const bool wide = frame.bits() > 8;
    const std::uint64_t lineSize = std::uint64_t{3} * frame.width() * (wide ? 2 : 1);
    constexpr std::uint64_t mostOfPlainTiff = 0xF0000000;  // its offsets have 32 bits, and the directory lies behind
    constexpr std::uint64_t stripSize = 1U << 18;
    const Quietly quietly;
    Target target{file, nullptr};
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(
        TIFFClientOpen(file.file().c_str(), lineSize * frame.lines() > mostOfPlainTiff ? "w8" : "w", &target,
                       readNothing, append, seek, leaveOpen, sizeOf, nullptr, nullptr),
        TIFFClose);
    expect(target, tiff != nullptr);
    const auto rowsOfStrip = static_cast<std::uint32_t>(
        std::clamp<std::uint64_t>(stripSize / std::max<std::uint64_t>(lineSize, 1), 1, std::max(frame.lines(), 1U)));
    bool written = TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, frame.width()) != 0;
    written = TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, frame.lines()) != 0 && written;
    written = TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, wide ? 16 : 8) != 0 && written;
    written = TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 3) != 0 && written;
    written = TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB) != 0 && written;
    written = TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) != 0 && written;
    written = TIFFSetField(tiff.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) != 0 && written;
    written = TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, rowsOfStrip) != 0 && written;
    expect(target, written);
    std::vector<std::uint16_t> line(std::size_t{3} * frame.width());
    std::vector<std::uint8_t> narrow(wide ? 0 : line.size());
    for (std::uint32_t y = 0; y < frame.lines(); ++y) {
        frame.readLine(y, line);
        if (wide) {
            std::ranges::transform(line, line.begin(),
                                   [&](std::uint16_t value) { return spread(value, frame.bits()); });
        } else {
            std::ranges::transform(line, narrow.begin(), [](auto value) { return static_cast<std::uint8_t>(value); });
        }
        void* const row = wide ? static_cast<void*>(line.data()) : narrow.data();
        expect(target, TIFFWriteScanline(tiff.get(), row, y, 0) == 1);
    }
    expect(target, TIFFWriteDirectory(tiff.get()) == 1 && TIFFFlush(tiff.get()) == 1);
}

}  // namespace quillon::cli
