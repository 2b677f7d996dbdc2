/// @file
/// The lookup tables of an applet, for the tests that compare them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/image/ImagePath.h"

namespace quillon::image_test {

inline constexpr std::uint32_t TableSize = 16384;

using Table = std::vector<std::uint32_t>;

struct LookupTables : ImagePath {
    /// The applet's table, by the id of its parameter.
    Table table(int id) {
        Table entries(TableSize);
        EXPECT_EQ(applet.getField(id, entries), 0);
        return entries;
    }
    std::uint32_t entry(int id, std::uint32_t index) {
        std::uint32_t value = 0;
        EXPECT_EQ(applet.getElement(id, index, value), 0);
        return value;
    }
    /// An entry of a table in the design; `colour` is R, G or B.
    std::int64_t designEntry(const std::string& colour, std::size_t index) const {
        return board.element("Device1_Process0_LookupTable_" + colour + "_LUTcontent", index);
    }
};

}  // namespace quillon::image_test
