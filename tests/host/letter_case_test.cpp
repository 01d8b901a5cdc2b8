#include "host/letter_case.h"

#include <gtest/gtest.h>

namespace {

TEST(LetterCase, CapitalsHaveSmallLetters) {
    constexpr struct {
        MCHAR capital;
        MCHAR small;
    } LETTERS[] = {
        {_M('A'), _M('a')},           {_M('Z'), _M('z')},           {_M('\u00c0'), _M('\u00e0')},
        {_M('\u00de'), _M('\u00fe')}, {_M('\u0100'), _M('\u0101')}, {_M('\u017d'), _M('\u017e')},
        {_M('\u0391'), _M('\u03b1')}, {_M('\u03a9'), _M('\u03c9')}, {_M('\u0401'), _M('\u0451')},
        {_M('\u042f'), _M('\u044f')}, {_M('\u0556'), _M('\u0586')}, {_M('\uff21'), _M('\uff41')},
    };
    for (const auto& letter : LETTERS) {
        EXPECT_EQ(host::LowerCase(letter.capital), letter.small);
        EXPECT_EQ(host::LowerCase(letter.small), letter.small);
    }
}

TEST(LetterCase, WhatIsNoCapitalStays) {
    for (const MCHAR unit : {_M('@'), _M('['), _M('0'), _M('\u00d7'), _M('\u00df'), _M('\u0138'),
                             _M('\u03a2'), _M('\u4e00'), MCHAR{0xd83d}, MCHAR{0}}) {
        EXPECT_EQ(host::LowerCase(unit), unit);
    }
}

}  // namespace
