#include "effect/correction_layers.h"

#include <boost/pointer_cast.hpp>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

#include "host/temporary_folder.h"
#include "psdfile/color_lookup_adjustment_layer.h"
#include "psdfile/curves_adjustment_layer.h"
#include "tests/effect/document_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

using Lookup = psdfile::PSDColorLookupAdjustmentLayer;

std::string BytesOf(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

// An ICC parametric curve of one exponent, in s15Fixed16.
std::string OutputCurve(const std::string& exponent) {
    return BytesOf(
        "70617261000000000000"
        "0000" +
        exponent);
}

class AdjustmentLayers : public DocumentFrameTest {
  protected:
    const psdbuilder::PSDBuilderAdjustmentLayer& Adjustment(std::size_t index) {
        return dynamic_cast<const psdbuilder::PSDBuilderAdjustmentLayer&>(
            *Document().children.at(index));
    }
    // The block of the only layer; null, with a failure, when there is another number of layers.
    template <class Block>
    boost::shared_ptr<Block> OnlyBlock() {
        EXPECT_EQ(Document().children.size(), 1U);
        if (Document().children.size() != 1) return nullptr;
        return boost::dynamic_pointer_cast<Block>(Adjustment(0).adjustment);
    }
    // Shown, over everything below, and without a mask.
    void ExpectPlain(const psdbuilder::PSDBuilderAdjustmentLayer& layer) {
        EXPECT_EQ(layer.blendKey, psdfile::FourCharCode("norm"));
        EXPECT_EQ(layer.flags, 0);
        EXPECT_FALSE(layer.mask);
        EXPECT_TRUE(layer.maskEnabled);
        EXPECT_FALSE(layer.clipping);
    }
    static void ExpectLink(const Lookup& lookup) {
        EXPECT_EQ(lookup.lookupKind, 2U);
        EXPECT_FALSE(lookup.profile.sRGBCurve);
        EXPECT_EQ(const_cast<Lookup&>(lookup).lut.data.GetSize(), 0U);
    }
    static std::string Profile(Lookup& lookup) {
        std::ostringstream stream;
        lookup.WriteProfile(stream);
        // Behind the length of the part.
        return stream.str().substr(4);
    }
    // The tag that holds the curves and the table.
    static std::string Tag(Lookup& lookup) { return Profile(lookup).substr(460); }
};

// Gamma

class GammaCorrectionLayer : public AdjustmentLayers {
  protected:
    GammaCorrectionLayer() { gammaMgr.enable = TRUE; }
    std::string NameAt(float gamma) {
        gammaMgr.fileOutGamma = gamma;
        Document().children.clear();
        effect::AddGammaCorrectionLayer(builder);
        return Adjustment(0).name;
    }
};

TEST_F(GammaCorrectionLayer, CarriesTheHostsFileGammaAsAnExponentWithoutATable) {
    gammaMgr.SetFileOutGamma(2.2F);
    effect::AddGammaCorrectionLayer(builder);
    const auto lookup = OnlyBlock<Lookup>();
    ASSERT_TRUE(lookup);
    ExpectPlain(Adjustment(0));
    ExpectLink(*lookup);
    EXPECT_EQ(lookup->profile.gamma, 1.0 / static_cast<double>(2.2F));
    EXPECT_EQ(lookup->profile.gridSize, 0);
    // 1 / 2.2 is 29789.09 of 65536ths.
    const std::string curve = OutputCurve("0000745D");
    EXPECT_EQ(Tag(*lookup), BytesOf("6D41422000000000"
                                    "03030000"
                                    "00000020"
                                    "00000000"
                                    "00000000"
                                    "00000000"
                                    "00000000") +
                                curve + curve + curve);
}

TEST_F(GammaCorrectionLayer, IsNamedAfterTheGammaInOneKindOfName) {
    EXPECT_EQ(NameAt(2.2F), "Gamma Correction (2.2)");
    EXPECT_EQ(Adjustment(0).unicodeName, u"");
    EXPECT_EQ(NameAt(1.8F), "Gamma Correction (1.8)");
    EXPECT_EQ(NameAt(2.0F), "Gamma Correction (2)");
    EXPECT_EQ(NameAt(1.2345678F), "Gamma Correction (1.23457)");
    EXPECT_EQ(NameAt(0.00001F), "Gamma Correction (1e-05)");
}

TEST_F(GammaCorrectionLayer, HasADecimalPointInEveryLanguage) {
    struct DecimalComma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    const std::string name = NameAt(2.2F);
    std::locale::global(before);
    EXPECT_EQ(name, "Gamma Correction (2.2)");
}

TEST_F(GammaCorrectionLayer, OfAGammaOf0CanBeWritten) {
    EXPECT_EQ(NameAt(0.0F), "Gamma Correction (0)");
    const auto lookup = OnlyBlock<Lookup>();
    ASSERT_TRUE(lookup);
    EXPECT_EQ(lookup->profile.gamma, std::numeric_limits<double>::infinity());
    const std::string curve = OutputCurve("00000000");
    EXPECT_EQ(Tag(*lookup).substr(32), curve + curve + curve);
}

TEST_F(GammaCorrectionLayer, StandsBelowWhatWasThere) {
    NameAt(2.2F);
    effect::AddGammaCorrectionLayer(builder);
    EXPECT_EQ(Document().children.size(), 2U);
}

// Colour corrections

// Two points an axis; no two samples of a row, and no two rows, are alike.
const char* const cubeTable =
    "TITLE \"look\"\n"
    "LUT_3D_SIZE 2\n"
    "0 0.5 1\n"
    "1 0.5 0.25\n"
    "0.25 1 0.5\n"
    "1 0.25 0.5\n"
    "0.5 0 1\n"
    "1 0 0.5\n"
    "0.5 0.25 1\n"
    "1.5 1 -0.5\n";

class ColorCorrectionLayer : public AdjustmentLayers {
  protected:
    ColorCorrectionLayer() {
        temporaryFolder = folder.path / "temporary";
        std::filesystem::create_directories(temporaryFolder);
        host::UseTemporaryFolder(Text(temporaryFolder));
        UseVRayFrameBuffer(UseRenderer(VRAY_CLASS_ID), frameBuffer);
        SetTable(cubeTable);
    }

    // What the frame buffer writes, and what it says of it.
    void SetTable(const std::string& text, bool succeeds = true) {
        frameBuffer->SetLook({[](BMM_Color_fl*, int) {},
                              [this, text, succeeds](std::ostream& out) {
                                  ++written;
                                  out << text;
                                  return succeeds;
                              }});
    }
    // What the script language knows instead.
    void SetCommand(const host::ScriptProperties::Getter& getter) {
        Host().scripts.Set(
            "vfbControl #saveglobalccpreset \"" + host::ToUtf8(Text(TableFile())) + '"', getter);
    }
    std::filesystem::path TableFile() const { return temporaryFolder / "psd_tmp.cube"; }
    int Add() { return effect::AddColorCorrectionLayer(builder); }
    void ExpectNone(const std::string& why) {
        EXPECT_EQ(Add(), 0) << why;
        EXPECT_THAT(Document().children, testing::IsEmpty()) << why;
        EXPECT_FALSE(std::filesystem::exists(TableFile())) << why;
        EXPECT_EQ(frameBuffer->GetValue(host::VRAY_LOOK_ON), 1.0F)
            << why << ": the pixels must have it";
        EXPECT_THAT(TakeLog(), testing::IsEmpty()) << why;
    }

    std::filesystem::path temporaryFolder;
    std::shared_ptr<host::VRayFrameBuffer> frameBuffer = VRayFrame(width, height);
    // How often the frame buffer was asked for its table.
    int written = 0;
};

TEST_F(ColorCorrectionLayer, CarriesTheTableThatTheFrameBufferWrites) {
    EXPECT_EQ(Add(), 1);
    EXPECT_EQ(written, 1);
    const auto lookup = OnlyBlock<Lookup>();
    ASSERT_TRUE(lookup);
    ExpectPlain(Adjustment(0));
    EXPECT_EQ(Adjustment(0).name, "Color Corrections");
    EXPECT_EQ(Adjustment(0).unicodeName, u"");
    ExpectLink(*lookup);
    EXPECT_EQ(lookup->profile.gamma, 1.0);
    const std::string curve = OutputCurve("00010000");
    const std::string identity = BytesOf("637572760000000000000000");
    EXPECT_EQ(Tag(*lookup), BytesOf("6D41422000000000"
                                    "03030000"
                                    "00000020"
                                    "00000000"
                                    "00000000"
                                    "00000050"
                                    "00000094") +
                                curve + curve + curve +
                                BytesOf("020202"
                                        "00000000000000000000000000"
                                        "02000000") +
                                // Blue fastest here, red fastest in the file.
                                BytesOf("00008000FFFF"
                                        "80000000FFFF"
                                        "4000FFFF8000"
                                        "80004000FFFF"
                                        "FFFF80004000"
                                        "FFFF00008000"
                                        "FFFF40008000"
                                        "FFFFFFFF0000") +
                                identity + identity + identity);
}

TEST_F(ColorCorrectionLayer, LeavesNoFileBehind) {
    EXPECT_EQ(Add(), 1);
    EXPECT_TRUE(std::filesystem::is_empty(temporaryFolder));
}

TEST_F(ColorCorrectionLayer, TakesTheTableOfNowAndNoneFromBefore) {
    WriteFile(TableFile(), "something that a program left when it was stopped");
    EXPECT_EQ(Add(), 1);
    EXPECT_FALSE(std::filesystem::exists(TableFile()));
}

TEST_F(ColorCorrectionLayer, IsNoneWithoutATemporaryFolder) {
    host::UseTemporaryFolder(Text(folder.path / "missing"));
    ExpectNone("no folder");
    EXPECT_FALSE(std::filesystem::exists(folder.path / "missing"));
}

#ifndef _WIN32
// Windows itself gives no folder that is longer.
TEST_F(ColorCorrectionLayer, FindsAFolderOf259UnitsAndNoneThatIsLonger) {
    const auto folderOf = [this](std::size_t units) {
        // With a separator at its end, and before each name.
        const std::size_t missing =
            units - static_cast<std::size_t>(Text(folder.path).Length()) - 1;
        return folder.path / std::string(100, 'a') / std::string(missing - 102, 'b');
    };
    temporaryFolder = folderOf(259);
    std::filesystem::create_directories(temporaryFolder);
    host::UseTemporaryFolder(Text(temporaryFolder));
    EXPECT_EQ(Add(), 1);
    Document().children.clear();
    written = 0;
    for (const std::size_t units : {260U, 261U, 300U}) {
        temporaryFolder = folderOf(units);
        std::filesystem::create_directories(temporaryFolder);
        host::UseTemporaryFolder(Text(temporaryFolder));
        ExpectNone(std::to_string(units));
        EXPECT_EQ(written, 0) << "nobody may write to a name that was cut";
    }
}
#endif

TEST_F(ColorCorrectionLayer, IsNoneOfARendererWithoutTheCommand) {
    UseRenderer(CORONA_CLASS_ID);
    ExpectNone("another renderer");
    Host().renderer.reset();
    ExpectNone("no renderer");
}

TEST_F(ColorCorrectionLayer, IsNoneWhereTheFrameBufferSaysThatItFailed) {
    SetTable(cubeTable, false);
    ExpectNone("failed with a whole table");
    SetTable("LUT_3D_SIZE 2\n0 0", false);
    ExpectNone("failed half way");
    SetTable("", false);
    ExpectNone("failed at once");
    EXPECT_EQ(written, 3);
}

TEST_F(ColorCorrectionLayer, NeedsAPlainYes) {
    const auto answerWith = [this](const FPValue& value) {
        SetCommand([this, value] {
            WriteFile(TableFile(), cubeTable);
            return value;
        });
    };
    answerWith(host::ScriptBool(false));
    ExpectNone("no");
    answerWith(host::ScriptInt(1));
    ExpectNone("a number");
    answerWith(FPValue());
    ExpectNone("nothing");
    EXPECT_EQ(written, 0);
    answerWith(host::ScriptBool(true));
    EXPECT_EQ(Add(), 1);
}

TEST_F(ColorCorrectionLayer, IsNoneWhereTheFileCantBeOpened) {
    SetCommand([] { return host::ScriptBool(true); });
    ExpectNone("there is none");
}

TEST_F(ColorCorrectionLayer, IsNoneWhereAFolderHasTheNameOfTheFile) {
    std::filesystem::create_directories(TableFile());
    SetCommand([] { return host::ScriptBool(true); });
    EXPECT_EQ(Add(), 0);
    EXPECT_THAT(Document().children, testing::IsEmpty());
    EXPECT_TRUE(std::filesystem::is_directory(TableFile())) << "folders are nobody's leftovers";
}

TEST_F(ColorCorrectionLayer, IsNoneOfATableThatCantBeRead) {
    const std::string good = cubeTable;
    const auto broken = [&good](std::string_view part, std::string_view replacement) {
        std::string text = good;
        text.replace(text.find(part), part.size(), replacement);
        return text;
    };
    const struct {
        const char* why;
        std::string text;
    } rows[] = {
        {"empty", ""},
        {"no last row", good.substr(0, good.size() - 11)},
        {"a line without an end", std::string(300, '#')},
        {"an unknown keyword", broken("TITLE", "TITEL")},
        {"a keyword twice", "TITLE \"\"\n" + good},
        {"a title without quotes", broken("\"look\"", "look")},
        {"reversed bounds", "DOMAIN_MAX 0 0 0\n" + good},
        {"no size", broken("LUT_3D_SIZE 2\n", "")},
        {"too small a size", broken("SIZE 2", "SIZE 1")},
        {"too large a size", broken("SIZE 2", "SIZE 257")},
        {"a word among the numbers", broken("1 0.25 0.5", "1 x 0.5")},
    };
    for (const auto& row : rows) {
        SetTable(row.text);
        ExpectNone(row.why);
    }
    EXPECT_EQ(written, 11);
    SetTable(good);
    EXPECT_EQ(Add(), 1);
}

TEST_F(ColorCorrectionLayer, IsNoneOfATableThatALayerCantCarry) {
    SetTable("LUT_1D_SIZE 2\n0 0 0\n1 1 1\n");
    ExpectNone("one axis");
    SetTable("DOMAIN_MAX 2 2 2\n" + std::string(cubeTable));
    ExpectNone("colours up to 2");
    EXPECT_EQ(written, 2);
}

// Curves

class CurvesLayer : public AdjustmentLayers {};

TEST_F(CurvesLayer, IsTheBlockOfItsKindUnderItsNameByDefault) {
    effect::AddCurvesLayer(builder, FrameOf(image.get()));
    EXPECT_TRUE(OnlyBlock<psdfile::PSDCurvesAdjustmentLayer>());
    ExpectPlain(Adjustment(0));
    EXPECT_EQ(Adjustment(0).name, "Curves");
    EXPECT_EQ(Adjustment(0).unicodeName, u"Curves");
}

TEST_F(CurvesLayer, HasTheUsersNameInBothKinds) {
    SetText("curvesAdjustmentLayerName"_param, _M("Kurve é 漢"));
    effect::AddCurvesLayer(builder, FrameOf(image.get()));
    EXPECT_EQ(Adjustment(0).name, "Kurve \xE9 ?");
    EXPECT_EQ(Adjustment(0).unicodeName, u"Kurve é 漢");
}

TEST_F(CurvesLayer, GoesToTheCurrentSet) {
    builder.BeginLayerSet("Elements", u"Elements", psdfile::blendKeyPassThrough, 0, false, nullptr,
                          true);
    effect::AddCurvesLayer(builder, FrameOf(image.get()));
    builder.EndLayerSet();
    const auto* set =
        dynamic_cast<const psdbuilder::PSDBuilderLayerSet*>(Document().children.at(0).get());
    ASSERT_TRUE(set);
    ASSERT_EQ(set->children.size(), 1U);
    EXPECT_EQ(set->children[0]->name, "Curves");
}

}  // namespace
