#include "plugin/config_file.h"

#include <array>

#include "tests/effect/effect_fixture.h"

namespace {

class ConfigFile : public EffectTest {
  protected:
    static constexpr std::uint32_t untouched = 4711;

    void Write(const std::string& text) { WriteFile(File("config") / "veltrane.cfg", text); }
    std::string Written() { return FileBytes(File("config") / "veltrane.cfg"); }
    static plugin::ConfigFile Section(const MCHAR* name = _M("S")) {
        plugin::ConfigFile config;
        config.SetSection(name);
        return config;
    }
    // The value of section "S", key "K".
    static std::uint32_t Read() {
        std::uint32_t value = untouched;
        const bool there = Section().ReadInt(_M("K"), value);
        EXPECT_EQ(there, value != untouched);
        return value;
    }
    static std::ptrdiff_t FileCount(const std::filesystem::path& path) {
        const std::filesystem::directory_iterator files(path);
        return std::distance(begin(files), end(files));
    }
    // Makes a folder whose path has that many units, with a separator at its end, the host's.
    std::filesystem::path UseFolderOfLength(std::size_t units) {
        const std::size_t before = static_cast<std::size_t>(Text(folder.path).Length());
        const std::filesystem::path path = folder.path / std::string(units - before - 2, 'x') / "";
        std::filesystem::create_directories(path);
        Host().paths.SetDir(APP_PLUGCFG_DIR, Text(path));
        EXPECT_EQ(MSTR(GetCOREInterface()->GetDir(APP_PLUGCFG_DIR)).Length(),
                  static_cast<int>(units));
        return path;
    }
};

TEST_F(ConfigFile, ReadsAnIntegerFromTheLowestByteOn) {
    Write(
        "[S]\nK=78563412"
        "14\n");
    EXPECT_EQ(Read(), 0x12345678U);
    Write(
        "[S]\nK=FFFFFFFF"
        "FC\n");
    EXPECT_EQ(Read(), 0xFFFFFFFFU);
    Write(
        "[S]\nK=00000000"
        "00\n");
    EXPECT_EQ(Read(), 0U);
}

TEST_F(ConfigFile, LeavesTheValueThatIsAbsent) {
    EXPECT_EQ(Read(), untouched) << "no file";
    Write("");
    EXPECT_EQ(Read(), untouched) << "no section";
    Write("[S]\n");
    EXPECT_EQ(Read(), untouched) << "no key";
    Write("[S]\nK=7856341215\n");
    EXPECT_EQ(Read(), untouched) << "a wrong checksum";
    Write("[S]\nK=78563412\n");
    EXPECT_EQ(Read(), untouched) << "no checksum";
}

TEST_F(ConfigFile, IsReadAnewEachTime) {
    plugin::ConfigFile config;
    config.SetSection(_M("S"));
    std::uint32_t value = untouched;
    EXPECT_FALSE(config.ReadInt(_M("K"), value));
    Write("[S]\nK=0100000001\n");
    EXPECT_TRUE(config.ReadInt(_M("K"), value));
    EXPECT_EQ(value, 1U);
    Write("[S]\nK=0200000002\n");
    EXPECT_TRUE(config.ReadInt(_M("K"), value));
    EXPECT_EQ(value, 2U);
}

TEST_F(ConfigFile, ReadsTheSectionThatWasSetLast) {
    Write("[A]\nK=0100000001\n[B]\nK=0200000002\n");
    plugin::ConfigFile config;
    std::uint32_t value = 0;
    config.SetSection(_M("A"));
    EXPECT_TRUE(config.ReadInt(_M("K"), value));
    EXPECT_EQ(value, 1U);
    config.SetSection(_M("B"));
    EXPECT_TRUE(config.ReadInt(_M("K"), value));
    EXPECT_EQ(value, 2U);
    config.SetSection(_M("C"));
    EXPECT_FALSE(config.ReadInt(_M("K"), value));
}

TEST_F(ConfigFile, WritesIntegersAndRealsFromTheLowestByteOn) {
    Section().WriteInt(_M("K"), 0x12345678);
    EXPECT_EQ(Written(),
              "[S]\r\nK=78563412"
              "14\r\n");
    EXPECT_EQ(Read(), 0x12345678U);
    Section().WriteInt(_M("K"), 0xFFFFFFFF);
    EXPECT_EQ(Written(),
              "[S]\r\nK=FFFFFFFF"
              "FC\r\n");
    // -1.5 is 0xBFC00000.
    Section().WriteFloat(_M("K"), -1.5F);
    EXPECT_EQ(Written(),
              "[S]\r\nK=0000C0BF"
              "7F\r\n");
}

TEST_F(ConfigFile, KeepsRecordsOfAnySize) {
    const std::array<std::uint8_t, 5> record{0x01, 0x02, 0xAB, 0xCD, 0xEF};
    Section().WriteRecord(_M("K"), record);
    EXPECT_EQ(Written(), "[S]\r\nK=0102ABCDEF6A\r\n");
    std::array<std::uint8_t, 5> found{};
    EXPECT_TRUE(Section().ReadRecord(_M("K"), found));
    EXPECT_EQ(found, record);
    std::array<std::uint8_t, 4> shorter{1, 1, 1, 1};
    EXPECT_FALSE(Section().ReadRecord(_M("K"), shorter));
    EXPECT_EQ(shorter, (std::array<std::uint8_t, 4>{1, 1, 1, 1}));
    EXPECT_EQ(Read(), untouched) << "five bytes are no integer";
}

TEST_F(ConfigFile, GivesText) {
    Write("[S]\nK = \"two words\"\n");
    std::array<MCHAR, 16> text{};
    EXPECT_EQ(Section().ReadString(_M("K"), text), 9U);
    EXPECT_EQ(MSTR(text.data()), MSTR(_M("two words")));
    EXPECT_EQ(Section().ReadString(_M("L"), text), 0U);
    EXPECT_EQ(text[0], 0) << "an absent value is empty";
}

TEST_F(ConfigFile, ChangesNothingElse) {
    Write("; mine\n[S]\nA=1\n\n[T]\nK=2\n");
    Section().WriteInt(_M("K"), 1);
    Section(_M("T")).WriteInt(_M("L"), 2);
    Section(_M("U")).WriteInt(_M("K"), 3);
#ifndef _WIN32
    EXPECT_EQ(Written(),
              "; mine\n[S]\nA=1\nK=0100000001\n\n[T]\nK=2\nL=0200000002\n[U]\nK=0300000003\n");
#else
    EXPECT_EQ(Read(), 1U);
#endif
    EXPECT_EQ(FileCount(File("config")), 1) << "nothing is left beside it";
}

TEST_F(ConfigFile, IsFoundInAFolderThatEndsInASeparator) {
    Write("[S]\nK=0100000001\n");
    Host().paths.SetDir(APP_PLUGCFG_DIR, host::FromUtf8(File("config").string() + "/"));
    EXPECT_EQ(Read(), 1U);
}

TEST_F(ConfigFile, IsFoundInAFolderOfAnyLanguage) {
    const std::filesystem::path other = folder.path / u8"\u00E4 \u65E5";
    std::filesystem::create_directories(other);
    Host().paths.SetDir(APP_PLUGCFG_DIR, Text(other));
    Section().WriteInt(_M("K"), 1);
    EXPECT_EQ(FileBytes(other / "veltrane.cfg"), "[S]\r\nK=0100000001\r\n");
    EXPECT_EQ(Read(), 1U);
}

// With "veltrane.cfg" the path is of 259 units. A second separator would be one too many.
TEST_F(ConfigFile, HasAPathOfUpTo259Units) {
    const std::filesystem::path longest = UseFolderOfLength(259 - 12);
    Section().WriteInt(_M("K"), 1);
    EXPECT_EQ(Read(), 1U);
    EXPECT_TRUE(std::filesystem::exists(longest / "veltrane.cfg"));
}

#ifndef _WIN32
TEST_F(ConfigFile, BeyondThatIsNone) {
    const std::filesystem::path tooLong = UseFolderOfLength(260 - 12);
    WriteFile(tooLong / "veltrane.cfg", "[S]\nK=0100000001\n");
    EXPECT_EQ(Read(), untouched);
    Section().WriteInt(_M("K"), 2);
    EXPECT_EQ(FileBytes(tooLong / "veltrane.cfg"), "[S]\nK=0100000001\n");
    EXPECT_EQ(FileCount(tooLong), 1);
}

TEST_F(ConfigFile, IsInAFolderWhoseNameEndsInABackslash) {
    const std::filesystem::path other = folder.path / "odd\\";
    std::filesystem::create_directories(other);
    Host().paths.SetDir(APP_PLUGCFG_DIR, Text(other));
    Section().WriteInt(_M("K"), 1);
    EXPECT_TRUE(std::filesystem::exists(other / "veltrane.cfg"));
}
#endif

TEST_F(ConfigFile, HasSectionsOfUpTo259Units) {
    const std::basic_string<MCHAR> longest(259, _M('s'));
    Section(longest.c_str()).WriteInt(_M("K"), 1);
    std::uint32_t value = 0;
    EXPECT_TRUE(Section(longest.c_str()).ReadInt(_M("K"), value));
    const std::string before = Written();
    EXPECT_EQ(before, "[" + std::string(259, 's') + "]\r\nK=0100000001\r\n");
    const std::basic_string<MCHAR> tooLong(260, _M('s'));
    plugin::ConfigFile config = Section();
    config.SetSection(tooLong.c_str());
    EXPECT_FALSE(config.ReadInt(_M("K"), value));
    config.WriteInt(_M("K"), 2);
    EXPECT_EQ(Written(), before) << "neither cut nor the section before";
}

TEST_F(ConfigFile, WithoutASectionOrKeyHasNoValues) {
    Write("[S]\nK=0100000001\n");
    std::uint32_t value = untouched;
    plugin::ConfigFile config;
    EXPECT_FALSE(config.ReadInt(_M("K"), value)) << "none was set yet";
    config.WriteInt(_M("K"), 2);
    config.SetSection(_M("S"));
    config.SetSection(nullptr);
    EXPECT_FALSE(config.ReadInt(_M("K"), value));
    config.WriteInt(_M("K"), 2);
    EXPECT_FALSE(Section().ReadInt(nullptr, value));
    Section().WriteInt(nullptr, 2);
    EXPECT_EQ(value, untouched);
    EXPECT_EQ(Written(), "[S]\nK=0100000001\n");
}

// For its lifetime the process is in another folder.
class InFolder {
  public:
    explicit InFolder(const std::filesystem::path& folder) {
        std::filesystem::current_path(folder);
    }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;
    ~InFolder() { std::filesystem::current_path(before); }

  private:
    std::filesystem::path before = std::filesystem::current_path();
};

TEST_F(ConfigFile, WithoutAFolderOfTheHostsIsNotTheOneOfTheCurrentFolder) {
    Write("[S]\nK=0100000001\n");
    const InFolder there(File("config"));
    Host().paths.SetDir(APP_PLUGCFG_DIR, MSTR());
    EXPECT_EQ(Read(), untouched);
    Section().WriteInt(_M("K"), 2);
    Host().paths.Clear();
    EXPECT_EQ(Read(), untouched) << "a host without any paths";
    Section().WriteInt(_M("K"), 2);
    EXPECT_EQ(Written(), "[S]\nK=0100000001\n");
    EXPECT_FALSE(std::filesystem::exists("/veltrane.cfg"));
}

TEST_F(ConfigFile, WhoseFolderIsMissingIsNotMade) {
    std::filesystem::remove(File("config"));
    Section().WriteInt(_M("K"), 1);
    EXPECT_EQ(Read(), untouched);
    EXPECT_FALSE(Exists("config"));
}

TEST_F(ConfigFile, ThatIsAFolderReadsAsAbsent) {
    std::filesystem::create_directory(File("config") / "veltrane.cfg");
    EXPECT_EQ(Read(), untouched);
    Section().WriteInt(_M("K"), 1);
    EXPECT_EQ(Read(), untouched);
}

}  // namespace
