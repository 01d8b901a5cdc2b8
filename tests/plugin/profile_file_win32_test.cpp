// Windows' own profile functions and ours, over the same files.
#include <gtest/gtest.h>

#include "plugin/plain_profile_file.h"
#include "tests/plugin/profile_cases.h"
#include "tests/plugin/profile_folder.h"

namespace {

struct ProfileFunctions {
    const char* whose;
    bool (*read)(const plugin::ProfilePlace&, std::span<std::uint8_t>);
    bool (*write)(const plugin::ProfilePlace&, std::span<const std::uint8_t>);
    std::size_t (*readString)(const plugin::ProfilePlace&, std::span<MCHAR>);
};
constexpr ProfileFunctions systemProfile{"the system's", plugin::ReadProfileRecord,
                                         plugin::WriteProfileRecord, plugin::ReadProfileString};
constexpr ProfileFunctions ownProfile{"ours", plugin::ReadPlainRecord, plugin::WritePlainRecord,
                                      plugin::ReadPlainString};

class ProfileFiles : public testing::TestWithParam<ProfileFunctions>, protected ProfileFolder {
  protected:
    using Record = profile_cases::Record;
    using Text = std::wstring;
    static constexpr Record stored = profile_cases::stored;
    static constexpr Record untouched = profile_cases::untouched;

    Record Read() {
        Record record = untouched;
        const bool found = GetParam().read(Place(), record);
        EXPECT_EQ(found, record != untouched) << "a failed read leaves the record as it was";
        return record;
    }
    Text ReadText() {
        std::array<MCHAR, 260> text{};
        const std::size_t length = GetParam().readString(Place(), text);
        EXPECT_EQ(text[length], 0);
        return {text.data(), length};
    }
    bool Save() { return GetParam().write(Place(), stored); }
    void Start(const std::optional<std::string>& bytes) {
        if (bytes) {
            Write(*bytes);
        } else {
            Remove();
        }
    }
};

// Without blank lines, blanks around names and values, text behind a section's name and NULs, and
// with CR LF at each line's end.
std::string ProfileLines(const std::string& bytes) {
    const auto trimmed = [](std::string text) {
        const std::string blanks = " \t\x1A";
        text.erase(0, text.find_first_not_of(blanks));
        text.erase(text.find_last_not_of(blanks) + 1);
        return text;
    };
    std::string lines;
    std::string line;
    for (const char letter : bytes + "\n") {
        if (letter == '\0') continue;
        if (letter != '\r' && letter != '\n') {
            line += letter;
            continue;
        }
        line = trimmed(line);
        if (line.starts_with('[')) {
            line = "[" + trimmed(line.substr(1, line.rfind(']') - 1)) + "]";
        } else if (const std::size_t equals = line.find('='); equals != std::string::npos) {
            line = trimmed(line.substr(0, equals)) + "=" + trimmed(line.substr(equals + 1));
        }
        if (!line.empty()) lines += line + "\r\n";
        line.clear();
    }
    return lines;
}

TEST_P(ProfileFiles, AreReadAlike) {
    for (const auto& [title, bytes, isStored, text] : profile_cases::ReadCases()) {
        Write(bytes);
        EXPECT_EQ(Read(), isStored ? stored : untouched) << title;
        EXPECT_EQ(ReadText(), text) << title;
    }
}

TEST_P(ProfileFiles, AreWrittenAlike) {
    for (const auto& [title, before, after, same] : profile_cases::WriteCases()) {
        Start(before);
        EXPECT_TRUE(Save()) << title;
        if (same == profile_cases::Same::Bytes) {
            EXPECT_EQ(Bytes(), after) << title;
        } else {
            EXPECT_EQ(ProfileLines(Bytes()), ProfileLines(after)) << title;
        }
        for (const ProfileFunctions& functions : {systemProfile, ownProfile}) {
            Record record = untouched;
            EXPECT_TRUE(functions.read(Place(), record)) << title << " by " << functions.whose;
            EXPECT_EQ(record, stored) << title << " by " << functions.whose;
        }
    }
}

TEST_P(ProfileFiles, ThatAreSomethingElseAreLeftAlone) {
    for (const auto& [title, bytes] : profile_cases::RefusedCases()) {
        Write(bytes);
        EXPECT_EQ(Read(), untouched) << title;
        EXPECT_EQ(ReadText(), Text()) << title;
        EXPECT_FALSE(Save()) << title;
        EXPECT_TRUE(Bytes() == bytes) << title;
    }
}

TEST_P(ProfileFiles, ThatAreReadOnlyAreReadAndNotWritten) {
    const std::string bytes = "[S]\r\nK=00ABFFAA\r\n";
    Write(bytes);
    SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Save());
    EXPECT_EQ(Read(), (Record{0x00, 0xAB, 0xFF}));
    EXPECT_EQ(Bytes(), bytes);
    SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(Save());
    EXPECT_EQ(Read(), stored);
}

TEST_P(ProfileFiles, AreNotMadeWithoutTheirFolder) {
    name = (folder.path / "missing" / "a.cfg").wstring();
    EXPECT_FALSE(Save());
    EXPECT_EQ(Read(), untouched);
    name = folder.path.wstring();
    EXPECT_FALSE(Save()) << "a folder itself";
    EXPECT_EQ(Read(), untouched);
    name.clear();
    EXPECT_FALSE(Save()) << "no path";
    EXPECT_EQ(Read(), untouched);
}

TEST_P(ProfileFiles, TakeOnlyNamesThatReadBack) {
    const std::string bytes = "[S]\r\nK=01ABFFAB\r\n";
    Write(bytes);
    for (const wchar_t* wrong : {static_cast<const wchar_t*>(nullptr), L"", L" S", L"A=B", L"A]",
                                 L";K", L"\u212A", L"\n"}) {
        for (const auto& [section, key] : {std::pair{wrong, L"K"}, std::pair{L"S", wrong}}) {
            const plugin::ProfilePlace place{name.c_str(), section, key};
            Record record = untouched;
            EXPECT_FALSE(GetParam().read(place, record));
            EXPECT_EQ(record, untouched);
            EXPECT_FALSE(GetParam().write(place, stored));
            std::array<MCHAR, 8> text{L'x'};
            EXPECT_EQ(GetParam().readString(place, text), 0U);
            EXPECT_EQ(text[0], 0);
        }
    }
    EXPECT_EQ(Bytes(), bytes);
}

TEST_P(ProfileFiles, HoldRecordsOfEverySize) {
    for (const std::size_t size : {0U, 1U, 4U, 40U, 1000U}) {
        std::vector<std::uint8_t> record(size);
        for (std::size_t i = 0; i < size; ++i)
            record[i] = static_cast<std::uint8_t>(7 * i + 200);
        Remove();
        ASSERT_TRUE(GetParam().write(Place(), record)) << size;
        for (const ProfileFunctions& functions : {systemProfile, ownProfile}) {
            std::vector<std::uint8_t> found(size);
            EXPECT_TRUE(functions.read(Place(), found)) << size << " by " << functions.whose;
            EXPECT_EQ(found, record) << size << " by " << functions.whose;
            std::vector<std::uint8_t> longer(size + 1, 0x11);
            EXPECT_FALSE(functions.read(Place(), longer)) << size << " by " << functions.whose;
            EXPECT_EQ(longer, std::vector<std::uint8_t>(size + 1, 0x11));
        }
    }
}

TEST_P(ProfileFiles, GiveTextCutToItsRoom) {
    Write("[S]\r\nK=abcdefgh\r\n");
    std::array<MCHAR, 9> text{};
    EXPECT_EQ(GetParam().readString(Place(), text), 8U);
    EXPECT_EQ(Text(text.data()), L"abcdefgh");
    EXPECT_EQ(GetParam().readString(Place(), std::span(text).first(5)), 4U);
    EXPECT_EQ(Text(text.data()), L"abcd");
    EXPECT_EQ(GetParam().readString(Place(), std::span(text).first(1)), 0U);
    EXPECT_EQ(text[0], 0);
    EXPECT_EQ(GetParam().readString(Place(), {}), 0U);
}

INSTANTIATE_TEST_SUITE_P(Of, ProfileFiles, testing::Values(systemProfile, ownProfile),
                         [](const testing::TestParamInfo<ProfileFunctions>& functions) {
                             return functions.index == 0 ? "TheSystem" : "Ours";
                         });

}  // namespace
