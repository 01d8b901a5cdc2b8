#include "ui/advanced_options.h"

#include <gamma.h>

#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;

class AdvancedOptions : public EffectTest {
  protected:
    int Value(ParamID id) { return effect->pblock->GetInt(id); }
    std::string GammaTip() { return host::ToUtf8(ui::GammaToolTip(*effect->pblock)); }
    ui::AdvancedControls Show() {
        return ui::ShowAdvancedOptions(ui::ReadAdvancedOptions(*effect));
    }
    void UseVRay(int frameBufferOn) {
        UseRenderer(VRAY_CLASS_ID)
            .GetParamBlock(host::VRAY_BLOCK)
            ->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, frameBufferOn);
    }
};

TEST_F(AdvancedOptions, TheRecordIsTheBlock) {
    Set("gammaCorrectRender"_param, FALSE);
    Set("gammaCorrectConfig"_param, 2);
    Set("vrayColorCorrections"_param, FALSE);
    Set("colorCorrectConfig"_param, 1);
    Set("matteLayersVisible"_param, FALSE);
    Set("saveDenoiserExtraChannels"_param, TRUE);
    Set("compatibility"_param, 0);
    const ui::AdvancedOptions options = ui::ReadAdvancedOptions(*effect);
    EXPECT_EQ(options.effect, effect);
    EXPECT_EQ(options.gammaCorrect, 0);
    EXPECT_EQ(options.gammaConfig, 2);
    EXPECT_EQ(options.colorCorrect, 0);
    EXPECT_EQ(options.colorConfig, 1);
    EXPECT_EQ(options.hideMatteLayers, 1);
    EXPECT_EQ(options.denoiserChannels, 1);
    EXPECT_EQ(options.compatibility, 0);
}

TEST_F(AdvancedOptions, OkWritesTheRecordInOrder) {
    std::vector<ParamID> written;
    Host().invalidateUI = [&written](ParamBlockDesc2&, ParamID id, int) { written.push_back(id); };
    ui::WriteAdvancedOptions({.effect = effect,
                              .gammaCorrect = 0,
                              .gammaConfig = 1,
                              .colorCorrect = 0,
                              .colorConfig = 2,
                              .hideMatteLayers = 1,
                              .denoiserChannels = 1,
                              .compatibility = 2});
    Host().invalidateUI = nullptr;
    EXPECT_THAT(written, ElementsAre(54, 129, 56, 126, 127, 128, 57));
    EXPECT_EQ(Value("gammaCorrectRender"_param), 0);
    EXPECT_EQ(Value("gammaCorrectConfig"_param), 1);
    EXPECT_EQ(Value("vrayColorCorrections"_param), 0);
    EXPECT_EQ(Value("colorCorrectConfig"_param), 2);
    EXPECT_EQ(Value("matteLayersVisible"_param), 0);
    EXPECT_EQ(Value("saveDenoiserExtraChannels"_param), 1);
    EXPECT_EQ(Value("compatibility"_param), 2);
}

TEST_F(AdvancedOptions, LayersThatAreNotHiddenAreVisible) {
    ui::AdvancedOptions options = ui::ReadAdvancedOptions(*effect);
    EXPECT_EQ(options.hideMatteLayers, 0);
    Set("matteLayersVisible"_param, FALSE);
    options.hideMatteLayers = 0;
    ui::WriteAdvancedOptions(options);
    EXPECT_EQ(Value("matteLayersVisible"_param), 1);
}

TEST_F(AdvancedOptions, AnEffectThatIsGoneIsNotWritten) {
    const ui::AdvancedOptions options = ui::ReadAdvancedOptions(*effect);
    effect->DeleteReference(0);
    ui::WriteAdvancedOptions(options);
    Host().effects.clear();
    ui::WriteAdvancedOptions(options);
    ui::WriteAdvancedOptions({});
}

TEST_F(AdvancedOptions, TheCombosHaveTheirItemsFromTopToBottom) {
    const auto texts = [](const std::vector<ui::OptionItem>& items) {
        std::vector<std::pair<int, std::string>> rows;
        for (const ui::OptionItem& item : items)
            rows.emplace_back(item.value, host::ToUtf8(item.text));
        return rows;
    };
    using Row = std::pair<int, std::string>;
    EXPECT_THAT(texts(ui::CorrectionItems()),
                ElementsAre(Row{3, "Create Adjustment Layer"},
                            Row{1, "Apply to Render and specific Render Elements"},
                            Row{0, "Apply to Render only"},
                            Row{2, "Apply to Render and all Render Elements"}));
    EXPECT_THAT(texts(ui::CompatibilityItems()),
                ElementsAre(Row{2, "Maximize Compatibility (Produces larger files)"},
                            Row{1, "Good Compatibility (Default)"},
                            Row{0, "Minimize Filesize (Reduced compatibility)"}));
}

TEST_F(AdvancedOptions, AnItemIsFoundByItsValue) {
    const std::vector<ui::OptionItem> items = ui::CorrectionItems();
    EXPECT_EQ(ui::ItemOf(items, 3), 0);
    EXPECT_EQ(ui::ItemOf(items, 0), 2);
    EXPECT_EQ(ui::ItemOf(items, 4), -1);
}

TEST_F(AdvancedOptions, TheGammaTipTellsTheHostsGamma) {
    gammaMgr.enable = TRUE;
    gammaMgr.fileOutGamma = 2.2F;
    constexpr const char* below32 =
        "Control if and how how 3ds max Gamma correction is applied.\n"
        "veltrane respects 3ds max Gamma options (see 3sd max Preferences).\n"
        "Current 3ds Max File Output Gamma: 2.20";
    EXPECT_EQ(GammaTip(), below32);
    Set("bitDepth"_param, 8);
    EXPECT_EQ(GammaTip(), below32);
}

TEST_F(AdvancedOptions, TheGammaTipTellsThat32BitsAreLinear) {
    gammaMgr.enable = TRUE;
    gammaMgr.fileOutGamma = 1.0F;
    Set("bitDepth"_param, 32);
    EXPECT_EQ(GammaTip(),
              "Control if and how how 3ds max Gamma correction is applied.\n"
              "Note: 32-bit PSD/PSB files are always saved linear.\n"
              " 3ds Max and veltrane Gamma options will have no effect.\n"
              "Current 3ds Max File Output Gamma: 1.00");
}

TEST_F(AdvancedOptions, TheGammaTipTellsThatTheHostHasNone) {
    gammaMgr.enable = FALSE;
    constexpr const char* off =
        "Control if and how how 3ds max Gamma correction is applied.\n"
        "Note: 3ds Max gamma correction is currently disabled.\n"
        "veltrane gamma options will have no effect.\n";
    EXPECT_EQ(GammaTip(), off);
    Set("bitDepth"_param, 32);
    EXPECT_EQ(GammaTip(), off);
}

TEST_F(AdvancedOptions, TheGammaHasTwoDigits) {
    const auto ending = [this](float gamma) {
        gammaMgr.fileOutGamma = gamma;
        const std::string tip = GammaTip();
        return tip.substr(tip.rfind(' ') + 1);
    };
    gammaMgr.enable = TRUE;
    EXPECT_EQ(ending(1.8F), "1.80");
    EXPECT_EQ(ending(0.4545F), "0.45");
    EXPECT_EQ(ending(2.199F), "2.20");
    EXPECT_EQ(ending(12.0F), "12.00");
}

TEST_F(AdvancedOptions, TheColourTipIsOfVRay) {
    EXPECT_EQ(host::ToUtf8(ui::colorToolTip),
              "Control if and how V-Ray color corrections made in the V-ray framebuffer are "
              "applied.");
}

TEST_F(AdvancedOptions, TheGammaComboIsEnabledByItsCheckBox) {
    EXPECT_TRUE(Show().gammaConfigEnabled);
    Set("gammaCorrectRender"_param, FALSE);
    EXPECT_FALSE(Show().gammaConfigEnabled);
}

TEST_F(AdvancedOptions, TheColoursAreEnabledByVRaysFrameBuffer) {
    EXPECT_FALSE(Show().colorCorrectEnabled);
    UseVRay(0);
    EXPECT_FALSE(Show().colorCorrectEnabled);
    EXPECT_FALSE(Show().colorConfigEnabled);
    UseVRay(1);
    EXPECT_TRUE(Show().colorCorrectEnabled);
    EXPECT_TRUE(Show().colorConfigEnabled);
    Set("vrayColorCorrections"_param, FALSE);
    EXPECT_TRUE(Show().colorCorrectEnabled);
    EXPECT_FALSE(Show().colorConfigEnabled);
}

TEST_F(AdvancedOptions, TheDenoiserIsVRays) {
    EXPECT_FALSE(Show().denoiserChannelsEnabled);
    UseVRay(0);
    EXPECT_TRUE(Show().denoiserChannelsEnabled);
    UseRenderer(CORONA_CLASS_ID);
    EXPECT_FALSE(Show().denoiserChannelsEnabled);
}

TEST_F(AdvancedOptions, TheAdjustmentLayerOfTheColoursTakesTheGammaAlong) {
    for (int gamma = 0; gamma <= 3; ++gamma) {
        for (int color = 0; color <= 3; ++color) {
            const ui::CorrectionChoice after = ui::AfterColorChoice({gamma, color});
            EXPECT_EQ(after, (ui::CorrectionChoice{color == 3 ? 3 : gamma, color}))
                << gamma << ' ' << color;
        }
    }
}

TEST_F(AdvancedOptions, WhenTheGammaLeavesTheAdjustmentLayerSoDoTheColours) {
    for (int gamma = 0; gamma <= 3; ++gamma) {
        for (int color = 0; color <= 3; ++color) {
            const ui::CorrectionChoice after = ui::AfterGammaChoice({gamma, color});
            EXPECT_EQ(after, (ui::CorrectionChoice{gamma, color == 3 && gamma != 3 ? 1 : color}))
                << gamma << ' ' << color;
        }
    }
}

TEST_F(AdvancedOptions, TheCombosAreCoupledBothWays) {
    ui::CorrectionChoice choice{0, 0};
    choice.color = 3;
    choice = ui::AfterColorChoice(choice);
    EXPECT_EQ(choice.gamma, 3);
    choice.gamma = 2;
    choice = ui::AfterGammaChoice(choice);
    EXPECT_EQ(choice, (ui::CorrectionChoice{2, 1}));
}

}  // namespace
