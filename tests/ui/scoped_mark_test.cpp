#include "ui/scoped_mark.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(ScopedMark, IsAsItWasAfterEachScope) {
    bool mark = false;
    {
        const ui::ScopedMark outer(mark);
        EXPECT_TRUE(mark);
        {
            const ui::ScopedMark inner(mark);
            EXPECT_TRUE(mark);
        }
        EXPECT_TRUE(mark) << "the outer scope goes on";
    }
    EXPECT_FALSE(mark);
}

TEST(ScopedMark, EndsWithAScopeThatIsLeftByAnException) {
    bool mark = false;
    const auto fail = [&mark] {
        const ui::ScopedMark scoped(mark);
        throw std::runtime_error("no memory");
    };
    EXPECT_THROW(fail(), std::runtime_error);
    EXPECT_FALSE(mark);
}

}  // namespace
