#include "plugin/profile_text.h"

#include <gtest/gtest.h>

#include "tests/plugin/profile_cases.h"

namespace {

class ProfileText : public testing::Test {
  protected:
    using Record = profile_cases::Record;
    static constexpr Record stored = profile_cases::stored;
    static constexpr Record untouched = profile_cases::untouched;

    static Record Found(std::string_view bytes, std::string_view section = "S",
                        std::string_view key = "K") {
        Record record = untouched;
        const bool found = plugin::FindProfileRecord(bytes, section, key, record);
        EXPECT_EQ(found, record != untouched) << "a failed read leaves the record as it was";
        return record;
    }
    static std::basic_string<MCHAR> FoundText(std::string_view bytes) {
        return plugin::FindProfileString(bytes, "S", "K").value_or(MSTR()).data();
    }
    static std::string Changed(std::string bytes, std::string_view section = "S",
                               std::string_view key = "K") {
        EXPECT_TRUE(plugin::SetProfileRecord(bytes, section, key, stored));
        return bytes;
    }
};

TEST_F(ProfileText, IsRead) {
    for (const auto& [name, bytes, isStored, text] : profile_cases::ReadCases()) {
        EXPECT_EQ(Found(bytes), isStored ? stored : untouched) << name;
        EXPECT_EQ(FoundText(bytes), text) << name;
    }
}

TEST_F(ProfileText, IsChangedAndNothingElseOfIt) {
    for (const auto& [name, before, after, same] : profile_cases::WriteCases()) {
        const std::string changed = Changed(before.value_or(""));
        EXPECT_EQ(changed, after) << name;
        EXPECT_EQ(Found(changed), stored) << name;
        EXPECT_EQ(Changed(changed), changed) << name << ": the same again";
    }
}

TEST_F(ProfileText, ThatIsSomethingElseIsLeftAlone) {
    for (const auto& [name, bytes] : profile_cases::RefusedCases()) {
        EXPECT_FALSE(plugin::IsProfile(bytes)) << name;
        EXPECT_EQ(Found(bytes), untouched) << name;
        EXPECT_FALSE(plugin::FindProfileString(bytes, "S", "K")) << name;
        std::string changed = bytes;
        EXPECT_FALSE(plugin::SetProfileRecord(changed, "S", "K", stored)) << name;
        EXPECT_EQ(changed, bytes) << name;
    }
}

TEST_F(ProfileText, DoesNotGrowBeyondAMebibyte) {
    const std::size_t largest = std::size_t{1} << 20;
    const std::string line = "[S]\r\nK=01ABFFAB\r\n";
    std::string bytes(largest - line.size(), '\n');
    EXPECT_TRUE(plugin::IsProfile(std::string(largest, '\n')));
    // A line that stands in LF takes two bytes fewer.
    EXPECT_EQ(Found(Changed(bytes)), stored);
    const std::string full(largest, '\n');
    bytes = full;
    EXPECT_FALSE(plugin::SetProfileRecord(bytes, "S", "K", stored));
    EXPECT_TRUE(bytes == full);
}

TEST_F(ProfileText, IsTheSameInUnfinishedLines) {
    const std::string good = "[S]\r\nK=01ABFFAB\r\n";
    for (std::size_t length = 0; length < good.size() - 2; ++length)
        EXPECT_EQ(Found(good.substr(0, length)), untouched) << length;
    for (const char* broken :
         {"[", "]", "[]", "=", "[\n=", ";", "\r", "[S", "\n", "[]\n=", "\xFF"}) {
        EXPECT_EQ(Found(broken), untouched) << broken;
    }
}

TEST_F(ProfileText, OfARecordMayBeEmpty) {
    const std::span<std::uint8_t> none;
    EXPECT_TRUE(plugin::FindProfileRecord("[S]\r\nK=00\r\n", "S", "K", none));
    EXPECT_FALSE(plugin::FindProfileRecord("[S]\r\nK=01\r\n", "S", "K", none));
    EXPECT_FALSE(plugin::FindProfileRecord("[S]\r\nK=\r\n", "S", "K", none));
    std::string bytes;
    EXPECT_TRUE(plugin::SetProfileRecord(bytes, "S", "K", none));
    EXPECT_EQ(bytes, "[S]\r\nK=00\r\n");
}

TEST_F(ProfileText, OfAPresetHas40Bytes) {
    std::array<std::uint8_t, 40> record{};
    for (std::size_t i = 0; i < record.size(); i += 4)
        record[i] = static_cast<std::uint8_t>(i);
    std::string bytes;
    ASSERT_TRUE(plugin::SetProfileRecord(bytes, "LayerPresets", "0000000100000002", record));
    // The sum of 0, 4, ... 36 is 180.
    EXPECT_EQ(bytes,
              "[LayerPresets]\r\n0000000100000002="
              "0000000004000000080000000C0000001000000014000000180000001C0000002000000024000000"
              "B4\r\n");
    std::array<std::uint8_t, 40> found{};
    EXPECT_TRUE(plugin::FindProfileRecord(bytes, "layerpresets", "0000000100000002", found));
    EXPECT_EQ(found, record);
}

TEST_F(ProfileText, TakesNamesThatReadBack) {
    for (const char* name : {"S", "Two words", "a;b", "\"a\"", "~", "0000000100000002"}) {
        EXPECT_TRUE(plugin::IsProfileName(name)) << name;
        EXPECT_EQ(Found(Changed("[T]\r\nA=1\r\n", name, name), name, name), stored) << name;
    }
    for (const char* name :
         {"", " S", "S ", ";S", "[S", "S]", "S=T", "S\nT", "S\tT", "\x7F", "\xE4"}) {
        EXPECT_FALSE(plugin::IsProfileName(name)) << name;
        std::string bytes = "[S]\r\nK=01ABFFAB\r\n";
        EXPECT_FALSE(plugin::SetProfileRecord(bytes, name, "K", stored)) << name;
        EXPECT_FALSE(plugin::SetProfileRecord(bytes, "S", name, stored)) << name;
        EXPECT_EQ(bytes, "[S]\r\nK=01ABFFAB\r\n") << name;
    }
    EXPECT_EQ(Found("[AZ@`az{]\r\nK=01ABFFAB\r\n", "az@`AZ{"), stored);
    EXPECT_EQ(Found("[@]\r\nK=01ABFFAB\r\n", "`"), untouched);
    EXPECT_EQ(Found("[]\r\n=01ABFFAB\r\n", "", ""), untouched);
    EXPECT_EQ(Found("[S]\r\n;K=01ABFFAB\r\n", "S", ";K"), untouched);
}

}  // namespace
