#include "plugin/warning_switches.h"

#include "plugin/library_services.h"
#include "tests/effect/effect_fixture.h"

namespace {

// Both switches, as one is to read them from the file.
class WarningSwitches : public EffectTest {
  protected:
    using Both = std::pair<bool, bool>;

    const std::string frameBuffer = "DisableVrayFrameBufferWarnings";
    const std::string sampler = "DisableVrayProgressiveSamplerWarning";

    Both Read() {
        const effect::WarningSwitches switches = plugin::ReadWarningSwitches();
        return {switches.disableVrayFrameBufferWarnings,
                switches.disableVrayProgressiveSamplerWarning};
    }
    Both Read(const std::string& text) {
        WriteFile(File("config") / "veltrane.cfg", text);
        return Read();
    }
};

TEST_F(WarningSwitches, AreOffUnlessTheFileSaysOtherwise) {
    EXPECT_EQ(Read(), Both(false, false)) << "no file";
    EXPECT_EQ(Read(""), Both(false, false));
    EXPECT_EQ(Read("[Warnings]\r\n"), Both(false, false));
}

TEST_F(WarningSwitches, HaveAKeyEach) {
    EXPECT_EQ(Read("[Warnings]\n" + frameBuffer + "=0100000001\n"), Both(true, false));
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=0100000001\n"), Both(false, true));
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=0100000001\n" + frameBuffer + "=0100000001\n"),
              Both(true, true));
}

TEST_F(WarningSwitches, AreOnWithAnyValueButZero) {
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=0000000000\n"), Both(false, false));
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=0000008080\n"), Both(false, true));
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=FFFFFFFFFC\n"), Both(false, true));
}

TEST_F(WarningSwitches, StayOffWithAnEditedValueWhoseChecksumNoLongerFits) {
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=0100000000\n"), Both(false, false));
    EXPECT_EQ(Read("[Warnings]\n" + sampler + "=1\n"), Both(false, false));
}

TEST_F(WarningSwitches, StandInTheirSectionOnly) {
    EXPECT_EQ(Read("[UserInterface]\n" + sampler + "=0100000001\n"), Both(false, false));
    EXPECT_EQ(Read(sampler + "=0100000001\n"), Both(false, false));
}

TEST_F(WarningSwitches, AreReadAnewAndNeverWritten) {
    const std::string text = "[Warnings]\n" + sampler + "=0100000001\n";
    const effect::ReadWarningSwitches read = plugin::Services().readWarningSwitches;
    EXPECT_FALSE(read().disableVrayProgressiveSamplerWarning);
    EXPECT_FALSE(std::filesystem::exists(File("config") / "veltrane.cfg"));
    EXPECT_EQ(Read(text), Both(false, true));
    EXPECT_TRUE(read().disableVrayProgressiveSamplerWarning);
    EXPECT_EQ(FileBytes(File("config") / "veltrane.cfg"), text);
}

}  // namespace
