/// @file
/// What a line is drawn with, read parameter by parameter out of the design that a board holds.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "softboard/pixels/Settings.h"

struct IXdevice;

namespace quillon::frames_test {

class DesignSettings {
public:
    explicit DesignSettings(IXdevice* board) : board_(board) {}

    /// The design's settings of this moment, under a version of their own.
    std::shared_ptr<const softboard::pixels::Settings> read();
    /// To be called when a lookup table may have been written: they take long to read, and are kept otherwise.
    void tablesMayHaveChanged() { tablesKnown_ = false; }
    /// Finds what was read by its version.
    std::shared_ptr<const softboard::pixels::Settings> of(std::uint32_t version) const { return all_.at(version); }
    void forget() { all_.clear(); }

    /// By what follows "Device1_Process0_" in the name.
    std::int64_t integer(const std::string& name) const;

private:
    std::uint32_t whole(const std::string& name) const { return static_cast<std::uint32_t>(integer(name)); }

    IXdevice* board_;
    std::uint32_t version_ = 0;
    std::map<std::uint32_t, std::shared_ptr<const softboard::pixels::Settings>> all_;
    bool tablesKnown_ = false;
    std::array<std::shared_ptr<const softboard::pixels::Table>, softboard::pixels::Colours> tables_;
};

}  // namespace quillon::frames_test
