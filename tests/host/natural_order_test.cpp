// Names compared as people count.
#include <gtest/gtest.h>
#include <maxapi.h>

#include <utility>

namespace {

void ExpectBefore(const MCHAR* left, const MCHAR* right) {
    EXPECT_LT(MaxAlphaNumCompI(left, right), 0);
    EXPECT_GT(MaxAlphaNumCompI(right, left), 0);
}

void ExpectEqual(const MCHAR* left, const MCHAR* right) {
    EXPECT_EQ(MaxAlphaNumCompI(left, right), 0);
    EXPECT_EQ(MaxAlphaNumCompI(right, left), 0);
}

TEST(NaturalOrder, NumbersCountByTheirValue) {
    ExpectBefore(_M("Box2"), _M("Box10"));
    ExpectBefore(_M("Box2b"), _M("Box2c"));
    ExpectBefore(_M("a9z"), _M("a10"));
    ExpectBefore(_M("a99999999999999999998"), _M("a99999999999999999999"));
}

TEST(NaturalOrder, ZerosInFrontOfANumberDoNotCount) {
    ExpectEqual(_M("Box002"), _M("Box2"));
    ExpectEqual(_M("0"), _M("000"));
    ExpectBefore(_M("Box002"), _M("Box3"));
    ExpectBefore(_M("Box 02 a"), _M("Box 2 b"));
}

TEST(NaturalOrder, CaseDoesNotCount) {
    ExpectEqual(_M("box"), _M("BOX"));
    ExpectBefore(_M("box2"), _M("BOX10"));
    ExpectEqual(_M("\u00e9t\u00e9"), _M("\u00c9T\u00c9"));
    ExpectEqual(_M("\u0434\u043e\u043c"), _M("\u0414\u041e\u041c"));
    ExpectEqual(_M("\u03b1\u03c9"), _M("\u0391\u03a9"));
    ExpectEqual(_M("\u0151\u017e"), _M("\u0150\u017d"));
    ExpectBefore(_M("\u0150"), _M("\u0152"));
    ExpectBefore(_M("A"), _M("b"));
}

TEST(NaturalOrder, WhatEndsFirstComesFirst) {
    ExpectEqual(_M(""), _M(""));
    ExpectBefore(_M(""), _M("a"));
    ExpectBefore(_M("Box"), _M("Box1"));
    ExpectBefore(_M("Box1"), _M("Box1a"));
}

}  // namespace
