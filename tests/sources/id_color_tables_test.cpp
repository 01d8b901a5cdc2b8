#include "sources/id_color_tables.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using sources::idColorTable;
using sources::IDColorTable;
using sources::renderIDColorTable;

void ExpectBeginning(const IDColorTable& table, const std::array<std::array<int, 4>, 3>& entries) {
    for (std::size_t component = 0; component < 3; ++component) {
        for (std::size_t byte = 0; byte < 4; ++byte)
            EXPECT_EQ(table[component][byte], entries[component][byte]) << component << " " << byte;
    }
}

TEST(IDColorTables, BeginWithTheColoursThatDocumentsHaveAlwaysShown) {
    ExpectBeginning(
        idColorTable,
        {{{0x00, 0xAC, 0x1A, 0x47}, {0x00, 0x04, 0xD8, 0x37}, {0x00, 0x26, 0xB1, 0x2A}}});
    ExpectBeginning(
        renderIDColorTable,
        {{{0x0B, 0xAC, 0x1A, 0x47}, {0xE1, 0x04, 0xD8, 0x37}, {0x7D, 0x26, 0xB1, 0x2A}}});
}

TEST(IDColorTables, HaveEveryByteOnce) {
    for (const IDColorTable& table : {idColorTable, renderIDColorTable}) {
        for (std::array<std::uint8_t, 256> entries : table) {
            std::ranges::sort(entries);
            for (std::size_t i = 0; i < 256; ++i)
                EXPECT_EQ(entries[i], i);
        }
    }
}

TEST(IDColorTables, OfRenderIDsEndInBlack) {
    for (std::size_t component = 0; component < 3; ++component)
        EXPECT_EQ(renderIDColorTable[component][255], 0);
}

TEST(IDColorTables, OfTheTwoSetsDifferInThreeEntries) {
    for (std::size_t component = 0; component < 3; ++component) {
        int differences = 0;
        for (std::size_t i = 0; i < 256; ++i)
            differences += idColorTable[component][i] != renderIDColorTable[component][i];
        EXPECT_EQ(differences, 3) << component;
    }
}

// So that neighbours in number don't look alike.
TEST(IDColorTables, AreInNoOrder) {
    for (std::size_t component = 0; component < 3; ++component) {
        int ascents = 0;
        int fixed = 0;
        for (std::size_t i = 1; i < 256; ++i) {
            ascents += idColorTable[component][i] > idColorTable[component][i - 1];
            fixed += idColorTable[component][i] == i;
        }
        EXPECT_NEAR(ascents, 127, 30) << component;
        EXPECT_LT(fixed, 8) << component;
    }
}

}  // namespace
