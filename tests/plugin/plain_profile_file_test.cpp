#include "plugin/plain_profile_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <strclass.h>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

#include "tests/plugin/profile_cases.h"
#include "tests/plugin/profile_folder.h"

namespace {

namespace fs = std::filesystem;

class PlainProfileFile : public testing::Test, protected ProfileFolder {
  protected:
    using Record = profile_cases::Record;
    static constexpr Record stored = profile_cases::stored;
    static constexpr Record untouched = profile_cases::untouched;
    const std::string plain = "[S]\r\nK=01ABFFAB\r\n";

    Record Read(const plugin::ProfilePlace& place) {
        Record record = untouched;
        const bool found = plugin::ReadPlainRecord(place, record);
        EXPECT_EQ(found, record != untouched) << "a failed read leaves the record as it was";
        return record;
    }
    Record Read() { return Read(Place()); }
    bool Save() { return plugin::WritePlainRecord(Place(), stored); }
    std::vector<std::string> Files() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path))
            names.push_back(entry.path().filename().string());
        return names;
    }
};

TEST_F(PlainProfileFile, IsReadFromDisk) {
    EXPECT_EQ(Read(), untouched) << "there is none yet";
    Write(plain);
    EXPECT_EQ(Read(), stored);
    Write("");
    EXPECT_EQ(Read(), untouched);
}

TEST_F(PlainProfileFile, IsMadeAndChanged) {
    EXPECT_TRUE(Save());
    EXPECT_EQ(Bytes(), plain);
    Write("; mine\n[S]\nA=1\n");
    EXPECT_TRUE(Save());
    EXPECT_EQ(Bytes(), "; mine\n[S]\nA=1\nK=01ABFFAB\n");
    EXPECT_THAT(Files(), testing::SizeIs(1)) << "nothing is left beside it";
}

TEST_F(PlainProfileFile, IsReadAndChangedUpToAMebibyte) {
    const std::size_t largest = std::size_t{1} << 20;
    Write("[S]\r\nK=00ABFFAA\r\n" + std::string(largest - plain.size(), '\n'));
    EXPECT_EQ(Read(), (Record{0x00, 0xAB, 0xFF}));
    EXPECT_TRUE(Save());
    EXPECT_EQ(Read(), stored);
    EXPECT_EQ(fs::file_size(file), largest);
}

TEST_F(PlainProfileFile, ThatIsSomethingElseIsLeftAlone) {
    for (const auto& [title, bytes] : profile_cases::RefusedCases()) {
        Write(bytes);
        EXPECT_FALSE(plugin::LoadProfile(Place().path)) << title;
        EXPECT_EQ(Read(), untouched) << title;
        EXPECT_FALSE(Save()) << title;
        EXPECT_TRUE(Bytes() == bytes) << title;
    }
    EXPECT_THAT(Files(), testing::SizeIs(1));
}

TEST_F(PlainProfileFile, ThatIsAFolderIsLeftAlone) {
    fs::create_directory(file);
    EXPECT_EQ(Read(), untouched);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(fs::is_directory(file));
    EXPECT_THAT(Files(), testing::SizeIs(1));
}

TEST_F(PlainProfileFile, InAFolderThatIsMissingIsNotMade) {
    name = (folder.path / "missing" / "a.cfg").string<MCHAR>();
    EXPECT_EQ(Read(), untouched);
    EXPECT_FALSE(Save());
    EXPECT_THAT(Files(), testing::IsEmpty());
}

TEST_F(PlainProfileFile, ThatIsReadOnlyIsReadAndNotWritten) {
    Write("[S]\r\nK=00ABFFAA\r\n");
    const fs::perms before = fs::status(file).permissions();
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_FALSE(plugin::IsWritable(Place().path));
    EXPECT_FALSE(Save());
    EXPECT_EQ(Read(), (Record{0x00, 0xAB, 0xFF}));
    EXPECT_THAT(Files(), testing::SizeIs(1));
    fs::permissions(file, before);
    EXPECT_TRUE(plugin::IsWritable(Place().path));
    EXPECT_TRUE(Save());
    EXPECT_EQ(Bytes(), plain);
}

TEST_F(PlainProfileFile, IsLeftAloneByTheSameValue) {
    Write(plain);
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    const auto before = fs::last_write_time(file) - std::chrono::hours(1);
    fs::last_write_time(file, before);
    EXPECT_TRUE(Save());
    EXPECT_EQ(fs::last_write_time(file), before);
}

TEST_F(PlainProfileFile, WithoutAPathOrNameIsNone) {
    Write(plain);
    const MCHAR* const path = name.c_str();
    for (const plugin::ProfilePlace& place : {plugin::ProfilePlace{nullptr, _M("S"), _M("K")},
                                              {_M(""), _M("S"), _M("K")},
                                              {path, nullptr, _M("K")},
                                              {path, _M(""), _M("K")},
                                              {path, _M("S"), nullptr},
                                              {path, _M("S"), _M("")},
                                              {path, _M("S"), _M("\u212A")},
                                              {path, _M("S"), _M("\u014B")}}) {
        EXPECT_EQ(Read(place), untouched);
        EXPECT_FALSE(plugin::WritePlainRecord(place, stored));
        std::array<MCHAR, 4> text{_M('x'), _M('y')};
        EXPECT_EQ(plugin::ReadPlainString(place, text), 0U);
        EXPECT_EQ(text[0], 0);
    }
    EXPECT_EQ(Bytes(), plain);
}

TEST_F(PlainProfileFile, GivesTextCutToItsRoom) {
    Write("[S]\r\nK=\"abcdefgh\"\r\n");
    std::array<MCHAR, 9> text{};
    EXPECT_EQ(plugin::ReadPlainString(Place(), text), 8U);
    EXPECT_EQ(MSTR(text.data()), MSTR(_M("abcdefgh")));
    EXPECT_EQ(plugin::ReadPlainString(Place(), std::span(text).first(5)), 4U);
    EXPECT_EQ(MSTR(text.data()), MSTR(_M("abcd")));
    EXPECT_EQ(text[5], _M('f')) << "nothing is written behind the room";
    EXPECT_EQ(plugin::ReadPlainString(Place(), std::span(text).first(1)), 0U);
    EXPECT_EQ(text[0], 0);
    text[0] = _M('x');
    EXPECT_EQ(plugin::ReadPlainString(Place(), {}), 0U);
    EXPECT_EQ(text[0], _M('x'));
}

#ifndef _WIN32
TEST_F(PlainProfileFile, KeepsWhoMayReadIt) {
    Write("");
    constexpr fs::perms narrow = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(file, narrow);
    EXPECT_TRUE(Save());
    EXPECT_EQ(fs::status(file).permissions(), narrow);
}

TEST_F(PlainProfileFile, BehindALinkIsChangedAndTheLinkStays) {
    const fs::path other = folder.path / "other.cfg";
    std::ofstream(other) << "[S]\n";
    fs::create_symlink("other.cfg", file);
    EXPECT_TRUE(Save());
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(Bytes(), "[S]\nK=01ABFFAB\n");
    EXPECT_FALSE(fs::is_symlink(other));
    EXPECT_THAT(Files(), testing::SizeIs(2));
}

TEST_F(PlainProfileFile, BehindLinksThatGoRoundIsNone) {
    fs::create_symlink(file.filename(), file);
    EXPECT_EQ(Read(), untouched);
    EXPECT_FALSE(Save());
    EXPECT_THAT(Files(), testing::SizeIs(1));
}

// Whoever opens a pipe that nobody writes to waits for ever.
TEST_F(PlainProfileFile, ThatIsAPipeIsNone) {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(Read(), untouched);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(fs::is_fifo(file));
}

// A disk that is full, for a process that may write no more than so many bytes.
TEST_F(PlainProfileFile, ThatCantBeWrittenWholeStaysWhatItWas) {
    const std::string before = "[T]\r\nA=" + std::string(5000, 'x') + "\r\n";
    Write(before);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit narrow = limit;
    narrow.rlim_cur = 2000;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &narrow), 0);
    const bool saved = Save();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(saved);
    EXPECT_EQ(Bytes(), before);
    EXPECT_THAT(Files(), testing::SizeIs(1));
}

TEST_F(PlainProfileFile, OfAPathThatIsNoTextIsNone) {
    name = {u'/', 0xD800, u'x'};
    EXPECT_EQ(Read(), untouched);
    EXPECT_FALSE(Save());
    EXPECT_FALSE(plugin::IsWritable(Place().path));
}
#endif

}  // namespace
