#include "command/half_ids.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>

#include "command/beauty.h"
#include "command/cryptomatte_id.h"
#include "command/failure.h"
#include "tests/command/exr_samples.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A picture with a Cryptomatte of objects whose pixel (x, y) has the id `idAt(x, y)`.
std::string FileOf(const std::function<std::uint32_t(int x, int y)>& idAt) {
    exr_samples::Part part;
    for (const char* suffix : {"R", "G", "B", "A"})
        part.channels.push_back({std::string("CryptoObject00.") + suffix, Imf::FLOAT});
    part.values = [idAt](const std::string& channel, int x, int y) {
        if (channel == "CryptoObject00.R") return double{std::bit_cast<float>(idAt(x, y))};
        return channel == "CryptoObject00.G" ? 1.0 : 0.0;
    };
    part.attributes = {{"cryptomatte/1234567/name", "CryptoObject"},
                       {"cryptomatte/1234567/hash", "MurmurHash3_32"},
                       {"cryptomatte/1234567/conversion", "uint32_to_float32"},
                       {"cryptomatte/1234567/manifest", R"({"a": "12345678"})"}};
    return exr_samples::Write(part);
}

PassPlan PlanAfterTheTest(const std::string& bytes) {
    const auto file = OpenRenderFile("a.exr", bytes.data(), bytes.size());
    PassPlan plan = PlanPasses(file->GetDescription(), ChooseBeauty(file->GetDescription()));
    EXPECT_TRUE(plan.objectMatte);
    EXPECT_THAT(plan.warnings, IsEmpty());
    DropHalfIDs(*file, plan);
    return plan;
}

// 2.0 and infinity, as a half has them.
constexpr std::uint32_t roundedID = 0x40000000;
constexpr std::uint32_t infiniteID = 0x7f800000;

TEST(HalfIDs, AreLeftAloneWhenOneOfThemNeedsAllItsBits) {
    const PassPlan plan = PlanAfterTheTest(
        FileOf([](int x, int y) { return x == 3 && y == 2 ? 0x12345678U : roundedID; }));
    EXPECT_TRUE(plan.objectMatte);
    EXPECT_THAT(plan.warnings, IsEmpty());
}

TEST(HalfIDs, ThatHalfsCouldHoldAllMakeNoMatteAndOneWarning) {
    const PassPlan plan =
        PlanAfterTheTest(FileOf([](int x, int) { return x == 0 ? roundedID : infiniteID; }));
    EXPECT_FALSE(plan.objectMatte);
    EXPECT_THAT(plan.cryptomattes[0].ranks, IsEmpty());
    EXPECT_THAT(
        plan.warnings,
        ElementsAre("the ids of Cryptomatte \"CryptoObject\" went through half floats, which "
                    "destroys them: no matte can be made; render it with 32-bit floats"));
}

TEST(HalfIDs, OfAnEmptyFrameSayNothing) {
    const PassPlan plan = PlanAfterTheTest(FileOf([](int, int) { return 0U; }));
    EXPECT_TRUE(plan.objectMatte);
    EXPECT_THAT(plan.warnings, IsEmpty());
}

TEST(HalfIDs, ThatCannotBeReadAreAnError) {
    std::string bytes = FileOf([](int, int) { return roundedID; });
    const auto whole = OpenRenderFile("a.exr", bytes.data(), bytes.size());
    PassPlan plan = PlanPasses(whole->GetDescription(), ChooseBeauty(whole->GetDescription()));
    // The last bytes are pixels.
    bytes.replace(bytes.size() - 20, 20, std::string(20, '\xff'));
    const auto damaged = OpenRenderFile("a.exr", bytes.data(), bytes.size());
    EXPECT_THROW(DropHalfIDs(*damaged, plan), InputError);
}

}  // namespace
}  // namespace command
