#include "ui/cell_text.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(CellText, ComesIntoTheListsBuffer) {
    std::array<MCHAR, 4> buffer{};
    buffer.fill(_M('x'));
    ui::PutCellText(_M("abc"), buffer.data(), 4);
    EXPECT_EQ(MSTR(buffer.data()), MSTR(_M("abc")));
    ui::PutCellText(_M("a"), buffer.data(), 4);
    EXPECT_EQ(MSTR(buffer.data()), MSTR(_M("a")));
    EXPECT_EQ(buffer[2], _M('c')) << "no more is written than the text";
}

TEST(CellText, ThatDoesntFitLeavesTheBufferEmpty) {
    std::array<MCHAR, 4> buffer{};
    buffer.fill(_M('x'));
    ui::PutCellText(_M("abcd"), buffer.data(), 4);
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(buffer[1], _M('x'));
    buffer.fill(_M('x'));
    ui::PutCellText(_M("a"), buffer.data(), 1);
    EXPECT_EQ(buffer[0], 0);
}

TEST(CellText, WantsNoBuffer) {
    std::array<MCHAR, 1> buffer{_M('x')};
    ui::PutCellText(_M("a"), buffer.data(), 0);
    EXPECT_EQ(buffer[0], _M('x'));
    ui::PutCellText(_M("a"), nullptr, 4);
}

}  // namespace
