#include "plugin/profile_record.h"

#include <array>

#include "tests/effect/effect_fixture.h"

namespace {

using Record = std::array<std::uint8_t, 3>;

constexpr Record untouched{0x11, 0x22, 0x33};
constexpr Record stored{0x01, 0xAB, 0xFF};
// 0x01 + 0xAB + 0xFF is 0x1AB.
constexpr std::string_view good = "[Section]\nKey=01ABFFAB\n";

// What a profile's text gives for "Section", "Key".
Record Found(std::string_view profile) {
    Record record = untouched;
    const bool found = plugin::FindProfileRecord(profile, "Section", "Key", record);
    EXPECT_EQ(found, record != untouched) << "a failed read leaves the record as it was";
    return record;
}

TEST(ProfileRecord, IsReadFromItsDigits) {
    EXPECT_EQ(Found(good), stored);
}

TEST(ProfileRecord, OfOtherLineEndsBlanksAndCaseIsTheSame) {
    for (const std::string_view text : {
             std::string_view("[Section]\r\nKey=01ABFFAB\r\n"),
             std::string_view("[Section]\nKey=01ABFFAB"),
             std::string_view("\n\n[Section]\n\nKey=01ABFFAB\n"),
             std::string_view("  [Section]  \n\t Key \t=\t 01ABFFAB \t\n"),
             std::string_view("[ Section ]\nKey=01ABFFAB\n"),
             std::string_view("[sECTION]\nkEY=01ABFFAB\n"),
             std::string_view("[Section]\nKey=01abffab\n"),
             std::string_view("[Section]\nOther=00\nKey=01ABFFAB\n"),
             std::string_view("[Other]\nKey=00\n[Section]\nKey=01ABFFAB\n[Last]\nKey=00\n"),
         }) {
        EXPECT_EQ(Found(text), stored) << text;
    }
}

TEST(ProfileRecord, IsAbsentWithoutItsSectionOrKey) {
    for (const std::string_view text : {
             std::string_view(""),
             std::string_view("Key=01ABFFAB\n"),
             std::string_view("[Section]\n"),
             std::string_view("[Other]\nKey=01ABFFAB\n"),
             std::string_view("[Section2]\nKey=01ABFFAB\n"),
             std::string_view("[Sectio]\nKey=01ABFFAB\n"),
             std::string_view("[Section]\nKey2=01ABFFAB\n"),
             std::string_view("[Section]\nKe=01ABFFAB\n"),
             std::string_view("[Section]\nKey 01ABFFAB\n"),
             std::string_view("[Section]\n[Other]\nKey=01ABFFAB\n"),
             std::string_view("Section\nKey=01ABFFAB\n"),
         }) {
        EXPECT_EQ(Found(text), untouched) << text;
    }
}

TEST(ProfileRecord, InACommentIsAbsent) {
    EXPECT_EQ(Found("[Section]\n;Key=01ABFFAB\n"), untouched);
    EXPECT_EQ(Found("[Section]\n  ; Key=01ABFFAB\n"), untouched);
    EXPECT_EQ(Found(";[Section]\nKey=01ABFFAB\n"), untouched);
    EXPECT_EQ(Found("[Section]\n;Key=00000000\nKey=01ABFFAB\n"), stored);
}

TEST(ProfileRecord, OfAWrongChecksumIsAbsent) {
    EXPECT_EQ(Found("[Section]\nKey=01ABFFAA\n"), untouched);
    EXPECT_EQ(Found("[Section]\nKey=01ABFFAC\n"), untouched);
    EXPECT_EQ(Found("[Section]\nKey=02ABFFAB\n"), untouched) << "an edited value";
}

TEST(ProfileRecord, OfAnotherLengthIsAbsent) {
    EXPECT_EQ(Found("[Section]\nKey=\n"), untouched);
    EXPECT_EQ(Found("[Section]\nKey=01ABFF\n"), untouched) << "the checksum is missing";
    EXPECT_EQ(Found("[Section]\nKey=01ABAC\n"), untouched) << "two bytes";
    EXPECT_EQ(Found("[Section]\nKey=01ABFF00AB\n"), untouched) << "four bytes";
    EXPECT_EQ(Found("[Section]\nKey=01ABFFA\n"), untouched) << "half a byte is missing";
}

TEST(ProfileRecord, OfSomethingElseThanDigitsIsAbsent) {
    for (const std::string_view digits :
         {"01ABFFAG", "0 ABFFAB", "01AB-1AB", "+1ABFFAB", "0xABFFAB", "01,BFFAB", "\"1ABFFA\""}) {
        EXPECT_EQ(Found("[Section]\nKey=" + std::string(digits) + "\n"), untouched) << digits;
    }
}

TEST(ProfileRecord, ThatIsThereTwiceIsTheFirst) {
    EXPECT_EQ(Found("[Section]\nKey=01ABFFAB\nKey=02ABFFAC\n"), stored);
    EXPECT_EQ(Found("[Section]\nKey=broken\nKey=01ABFFAB\n"), untouched);
}

TEST(ProfileRecord, MayBeEmpty) {
    std::span<std::uint8_t> none;
    EXPECT_TRUE(plugin::FindProfileRecord("[S]\nK=00\n", "S", "K", none));
    EXPECT_FALSE(plugin::FindProfileRecord("[S]\nK=01\n", "S", "K", none));
}

TEST(ProfileRecord, OfAPresetHas40Bytes) {
    std::string digits;
    std::array<std::uint8_t, 40> expected{};
    for (std::size_t i = 0; i < 40; i += 4) {
        expected[i] = static_cast<std::uint8_t>(i);
        constexpr std::string_view hex = "0123456789ABCDEF";
        digits += hex[i >> 4];
        digits += hex[i & 15];
        digits += "000000";
    }
    // The sum of 0, 4, ... 36 is 180.
    std::array<std::uint8_t, 40> record{};
    ASSERT_TRUE(plugin::FindProfileRecord("[LayerPresets]\n0000000100000002=" + digits + "B4\n",
                                          "LayerPresets", "0000000100000002", record));
    EXPECT_EQ(record, expected);
}

TEST(ProfileRecord, InUnfinishedLinesDoesNoHarm) {
    const std::string text(good);
    for (std::size_t length = 0; length < text.size() - 1; ++length) {
        EXPECT_EQ(Found(std::string_view(text).substr(0, length)), untouched) << length;
    }
    for (const std::string_view broken :
         {"[", "]", "[]", "=", "[\n=", ";", "\r", "[Section", "\n"}) {
        EXPECT_EQ(Found(broken), untouched) << broken;
    }
    EXPECT_EQ(Found(std::string_view("[Section]\n\0Key=01ABFFAB\n", 24)), untouched);
}

// The file itself

class ProfileFile : public EffectTest {
  protected:
    Record Read() {
        Record record = untouched;
        plugin::ReadProfileRecord(Text(File("a.cfg")), MSTR(_M("Section")), MSTR(_M("Key")),
                                  record);
        return record;
    }
};

TEST_F(ProfileFile, IsReadAsItsText) {
    EXPECT_EQ(Read(), untouched) << "there is none yet";
    WriteFile(File("a.cfg"), std::string(good));
    EXPECT_EQ(Read(), stored);
}

TEST_F(ProfileFile, IsReadUpToAMebibyte) {
    const std::size_t largest = std::size_t{1} << 20;
    WriteFile(File("a.cfg"), std::string(good) + std::string(largest - good.size(), '\n'));
    EXPECT_EQ(Read(), stored);
    WriteFile(File("a.cfg"), std::string(good) + std::string(largest + 1 - good.size(), '\n'));
    EXPECT_EQ(Read(), untouched);
}

TEST_F(ProfileFile, IsReadAcrossTheBlocksInWhichItComes) {
    for (std::size_t before = 4070; before <= 4100; ++before) {
        WriteFile(File("a.cfg"), std::string(before, ' ').append("\n").append(good));
        EXPECT_EQ(Read(), stored) << before;
    }
}

TEST_F(ProfileFile, ThatCantBeReadIsAbsent) {
    std::filesystem::create_directory(File("a.cfg"));
    EXPECT_EQ(Read(), untouched);
#ifndef _WIN32
    const MCHAR noText[] = {u'/', 0xD800, u'x', 0};
    Record record = untouched;
    EXPECT_FALSE(
        plugin::ReadProfileRecord(MSTR(noText), MSTR(_M("Section")), MSTR(_M("Key")), record));
#endif
}

}  // namespace
