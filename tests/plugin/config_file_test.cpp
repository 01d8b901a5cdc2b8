#include "plugin/config_file.h"

#include "tests/effect/effect_fixture.h"

namespace {

constexpr std::uint32_t untouched = 4711;

class ConfigFile : public EffectTest {
  protected:
    void Write(const std::string& text) { WriteFile(File("config") / "veltrane.cfg", text); }
    // The value of section "S", key "K".
    static std::uint32_t Read() {
        plugin::ConfigFile config;
        config.SetSection(_M("S"));
        std::uint32_t value = untouched;
        const bool there = config.ReadInt(_M("K"), value);
        EXPECT_EQ(there, value != untouched);
        return value;
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

TEST_F(ConfigFile, IsFoundInAFolderThatEndsInASeparator) {
    Write("[S]\nK=0100000001\n");
    Host().paths.SetDir(APP_PLUGCFG_DIR, host::FromUtf8(File("config").string() + "/"));
    EXPECT_EQ(Read(), 1U);
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
    Host().paths.Clear();
    EXPECT_EQ(Read(), untouched) << "a host without any paths";
}

TEST_F(ConfigFile, ThatIsAFolderReadsAsAbsent) {
    std::filesystem::create_directory(File("config") / "veltrane.cfg");
    EXPECT_EQ(Read(), untouched);
}

}  // namespace
