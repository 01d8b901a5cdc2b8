#include "effect/output_file.h"

#include <cstring>
#include <filesystem>
#include <random>
#include <sstream>

#include "tests/effect/effect_fixture.h"

namespace {

// The file's bytes in memory, and a failure wherever a test wants one.
struct Disk {
    std::string bytes;
    int opens = 0;
    int writes = 0;
    int closes = 0;
    // Numbers of the calls, from 1; 0 for none.
    int failingWrite = 0;
    // Writes fail for good from here on.
    int diskFullFrom = 0;
    bool failsToOpen = false;
    bool failsToClose = false;
};

class FakeAccess : public effect::FileAccess {
  public:
    explicit FakeAccess(Disk& written) : disk(written) {}

    bool Open(const MCHAR*) override {
        ++disk.opens;
        if (disk.failsToOpen) return false;
        disk.bytes.clear();
        return true;
    }
    bool WriteAt(std::int64_t position, const char* bytes, std::size_t size) override {
        ++disk.writes;
        if (disk.writes == disk.failingWrite) return false;
        if (disk.diskFullFrom != 0 && disk.writes >= disk.diskFullFrom) return false;
        const auto at = static_cast<std::size_t>(position);
        if (disk.bytes.size() < at + size) disk.bytes.resize(at + size);
        std::memcpy(disk.bytes.data() + at, bytes, size);
        return true;
    }
    bool Close() override {
        ++disk.closes;
        return !disk.failsToClose;
    }

  private:
    Disk& disk;
};

constexpr std::size_t mebibyte = std::size_t{1} << 20;

// Bytes that don't repeat soon.
std::string Noise(std::size_t size, unsigned seed = 1) {
    std::minstd_rand random(seed);
    std::string noise(size, '\0');
    for (char& byte : noise)
        byte = static_cast<char>(random() >> 8);
    return noise;
}

class OutputFile : public testing::Test {
  protected:
    // What a document does: rows, a table, and lengths that are patched in.
    void WriteLikeADocument(std::ostream& stream) {
        const std::string row = Noise(700 * 1000);
        stream.write("8BPS", 4);
        const std::streampos lengthPosition = stream.tellp();
        stream.write("\0\0\0\0", 4);
        for (int i = 0; i < 5; ++i) {
            stream.write(row.data(), static_cast<std::streamsize>(row.size()));
        }
        const std::streampos end = stream.tellp();
        stream.seekp(lengthPosition);
        stream.write("SIZE", 4);
        stream.seekp(end);
        stream.write("end", 3);
    }

    Disk disk;
    effect::OutputFile file{std::make_unique<FakeAccess>(disk)};
};

TEST_F(OutputFile, HoldsWhatWasWrittenOnceItIsClosed) {
    ASSERT_TRUE(file.Open(_M("a")));
    file << "hello" << 12 << '!';
    EXPECT_EQ(disk.writes, 0) << "a few bytes wait for more";
    file.Close();
    EXPECT_TRUE(file.good());
    EXPECT_EQ(disk.bytes, "hello12!");
    EXPECT_EQ(disk.writes, 1);
    EXPECT_EQ(disk.closes, 1);
}

TEST_F(OutputFile, TakesNothingFromNowhere) {
    ASSERT_TRUE(file.Open(_M("a")));
    file << "ab";
    file.write(nullptr, 0);
    file << "cd";
    file.Close();
    EXPECT_TRUE(file.good());
    EXPECT_EQ(disk.bytes, "abcd");
}

TEST_F(OutputFile, IsWrittenOutOnFlush) {
    ASSERT_TRUE(file.Open(_M("a")));
    file << "ab" << std::flush;
    EXPECT_EQ(disk.bytes, "ab");
    file << "cd";
    file.seekp(1);
    file << "x";
    file.Close();
    EXPECT_EQ(disk.bytes, "axcd");
}

TEST_F(OutputFile, GoesToTheSystemInFewLargeWrites) {
    ASSERT_TRUE(file.Open(_M("a")));
    const std::string row(100, 'r');
    for (int i = 0; i < 100 * 1000; ++i)
        file.write(row.data(), 100);
    file.Close();
    EXPECT_EQ(disk.bytes.size(), 10'000'000U);
    EXPECT_LE(disk.writes, 12);
}

TEST_F(OutputFile, PatchesALengthFarBack) {
    ASSERT_TRUE(file.Open(_M("a")));
    WriteLikeADocument(file);
    EXPECT_EQ(file.tellp(), std::streampos(8 + 5 * 700 * 1000 + 3));
    file.Close();
    std::stringstream expected;
    WriteLikeADocument(expected);
    EXPECT_TRUE(file.good());
    EXPECT_TRUE(disk.bytes == expected.str());
}

TEST_F(OutputFile, TellsItsPositionFromEveryOrigin) {
    ASSERT_TRUE(file.Open(_M("a")));
    file << "0123456789";
    EXPECT_EQ(file.tellp(), std::streampos(10));
    file.seekp(-3, std::ios_base::end);
    EXPECT_EQ(file.tellp(), std::streampos(7));
    file.seekp(-2, std::ios_base::cur);
    EXPECT_EQ(file.tellp(), std::streampos(5));
    file.seekp(1, std::ios_base::beg);
    file << "x";
    file.seekp(0, std::ios_base::end);
    EXPECT_EQ(file.tellp(), std::streampos(10));
    file.Close();
    EXPECT_EQ(disk.bytes, "0x23456789");
}

TEST_F(OutputFile, FailsToSeekBeforeItsStart) {
    ASSERT_TRUE(file.Open(_M("a")));
    file << "abc";
    file.seekp(-4, std::ios_base::cur);
    EXPECT_TRUE(file.fail());
    EXPECT_FALSE(file.bad());
    file.clear();
    EXPECT_EQ(file.tellp(), std::streampos(3)) << "the position stays";
}

TEST_F(OutputFile, GivesTheBytesOfAnyOtherStreamWhateverIsWrittenWhere) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t limit) {
            return static_cast<std::size_t>(random()) % limit;
        };
        const std::string noise = Noise(3 * mebibyte, seed);
        // Steps around the border of the buffer, which a plain choice of sizes would miss.
        const std::size_t sizes[] = {1, 2, 100, 4096, mebibyte - 1, mebibyte, mebibyte + 1};
        std::stringstream expected;
        ASSERT_TRUE(file.Open(_M("a")));
        std::size_t length = 0;
        for (int step = 0; step < 2000; ++step) {
            const std::size_t kind = below(10);
            if (kind < 6) {
                const std::size_t size =
                    below(50) == 0 ? sizes[below(std::size(sizes))] : below(20'000);
                const std::size_t from = below(noise.size() - size);
                file.write(noise.data() + from, static_cast<std::streamsize>(size));
                expected.write(noise.data() + from, static_cast<std::streamsize>(size));
            } else if (kind == 6) {
                file.put('p');
                expected.put('p');
            } else if (length > 0) {
                const bool nearby = kind < 9;
                const auto here = static_cast<std::size_t>(std::streamoff(expected.tellp()));
                const std::size_t back = std::min(here, below(3 * 4096));
                const std::size_t to = nearby ? here - back : below(length + 1);
                file.seekp(static_cast<std::streamoff>(to));
                expected.seekp(static_cast<std::streamoff>(to));
            }
            ASSERT_EQ(file.tellp(), expected.tellp()) << "seed " << seed << ", step " << step;
            length = std::max(length, static_cast<std::size_t>(std::streamoff(expected.tellp())));
            if (length > 20 * mebibyte) break;
        }
        file.seekp(0, std::ios_base::end);
        ASSERT_EQ(file.tellp(), std::streampos(static_cast<std::streamoff>(length)));
        file.Close();
        ASSERT_TRUE(file.good());
        ASSERT_TRUE(disk.bytes == expected.str()) << "seed " << seed;
    }
}

TEST_F(OutputFile, AnyWriteThatFailsMakesItBad) {
    ASSERT_TRUE(file.Open(_M("a")));
    WriteLikeADocument(file);
    file.Close();
    ASSERT_TRUE(file.good());
    const int writes = disk.writes;
    ASSERT_GT(writes, 4);
    for (int failing = 1; failing <= writes; ++failing) {
        disk = Disk{};
        disk.failingWrite = failing;
        ASSERT_TRUE(file.Open(_M("a")));
        WriteLikeADocument(file);
        file.Close();
        EXPECT_TRUE(file.bad()) << "write " << failing << " of " << writes;
        EXPECT_EQ(disk.closes, 1);
    }
}

TEST_F(OutputFile, AFullDiskMakesItBadWhereverItIsFull) {
    for (int failing = 1; failing <= 5; ++failing) {
        disk = Disk{};
        disk.diskFullFrom = failing;
        ASSERT_TRUE(file.Open(_M("a")));
        WriteLikeADocument(file);
        file.Close();
        EXPECT_TRUE(file.bad()) << failing;
        EXPECT_EQ(disk.closes, 1);
    }
}

TEST_F(OutputFile, AFailureOfCloseMakesItBad) {
    disk.failsToClose = true;
    ASSERT_TRUE(file.Open(_M("a")));
    file << "abc";
    EXPECT_TRUE(file.good());
    file.Close();
    EXPECT_TRUE(file.bad());
}

TEST_F(OutputFile, ThatCantBeOpenedFailsAndTakesNothing) {
    disk.failsToOpen = true;
    EXPECT_FALSE(file.Open(_M("a")));
    EXPECT_TRUE(file.fail());
    EXPECT_FALSE(file.bad());
    file.clear();
    file << "abc";
    EXPECT_TRUE(file.bad());
    EXPECT_EQ(file.tellp(), std::streampos(-1));
    file.clear();
    file.seekp(0);
    EXPECT_TRUE(file.fail());
    file.Close();
    EXPECT_EQ(disk.writes, 0);
    EXPECT_EQ(disk.closes, 0);
}

TEST_F(OutputFile, OpenedAgainStartsAfresh) {
    disk.failingWrite = 1;
    ASSERT_TRUE(file.Open(_M("a")));
    file << "first" << std::flush;
    EXPECT_TRUE(file.bad());
    ASSERT_TRUE(file.Open(_M("a")));
    EXPECT_TRUE(file.good());
    EXPECT_EQ(disk.closes, 1) << "the one before is closed";
    EXPECT_EQ(file.tellp(), std::streampos(0));
    file << "second";
    file.Close();
    EXPECT_TRUE(file.good());
    EXPECT_EQ(disk.bytes, "second");
}

TEST_F(OutputFile, KeepsItsWordsWhenItIsOpenedAgain) {
    const int word = std::ios_base::xalloc();
    file.iword(word) = 7;
    ASSERT_TRUE(file.Open(_M("a")));
    file.Close();
    ASSERT_TRUE(file.Open(_M("a")));
    EXPECT_EQ(file.iword(word), 7);
}

TEST_F(OutputFile, IsClosedWhenItGoes) {
    {
        effect::OutputFile passing(std::make_unique<FakeAccess>(disk));
        ASSERT_TRUE(passing.Open(_M("a")));
        passing << "abc";
    }
    EXPECT_EQ(disk.bytes, "abc");
    EXPECT_EQ(disk.closes, 1);
}

TEST_F(OutputFile, CanBeClosedTwice) {
    ASSERT_TRUE(file.Open(_M("a")));
    file << "abc";
    file.Close();
    file.Close();
    EXPECT_TRUE(file.good());
    EXPECT_EQ(disk.closes, 1);
}

// The system's own files

class SystemFile : public testing::Test {
  protected:
    TemporaryFolder folder;
};

TEST_F(SystemFile, IsCreatedOrEmptiedAndHoldsTheBytes) {
    const std::filesystem::path path = folder.path / "a b 漢.psd";
    for (const std::string text : {"a longer text", "short"}) {
        effect::OutputFile file;
        ASSERT_TRUE(file.Open(Text(path)));
        file << text;
        file.Close();
        EXPECT_TRUE(file.good());
        EXPECT_EQ(FileBytes(path), text);
    }
}

TEST_F(SystemFile, CanBeReadByOthersWhileItIsWritten) {
    const std::filesystem::path path = folder.path / "a.psd";
    effect::OutputFile file;
    ASSERT_TRUE(file.Open(Text(path)));
    file << "abc" << std::flush;
    EXPECT_EQ(FileBytes(path), "abc");
    file.Close();
}

TEST_F(SystemFile, CantBeOpenedInAMissingFolderOrAsOne) {
    effect::OutputFile file;
    EXPECT_FALSE(file.Open(Text(folder.path / "missing" / "a.psd")));
    EXPECT_TRUE(file.fail());
    EXPECT_FALSE(file.Open(Text(folder.path)));
    EXPECT_FALSE(file.Open(_M("")));
}

#ifndef _WIN32
TEST_F(SystemFile, CantBeOpenedByANameThatIsNoText) {
    const MCHAR lone[] = {u'/', 0xD800, u'x', 0};
    effect::OutputFile file;
    EXPECT_FALSE(file.Open(lone));
    EXPECT_TRUE(file.fail());
}
#endif

}  // namespace
