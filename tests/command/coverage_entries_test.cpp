#include "command/coverage_entries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/beauty.h"
#include "command/passes.h"
#include "tests/command/pass_samples.h"

namespace command {
namespace {

using pass_samples::cubeID;
using pass_samples::floorID;
using pass_samples::Sample;
using pass_samples::sphereID;
using testing::ElementsAre;

std::vector<ManifestEntry> EntriesOf(const Sample& sample) {
    const std::string bytes = sample.Bytes();
    const auto file = OpenRenderFile("a.exr", bytes.data(), bytes.size());
    const PassPlan plan = PlanPasses(file->GetDescription(), ChooseBeauty(file->GetDescription()));
    return EntriesByCoverage(*file, 0, plan.cryptomattes.at(plan.objectMatte.value()));
}

TEST(CoverageEntries, AreThoseOfMostCoverageFirstUnderTheManifestsNames) {
    const Sample sample = Sample(4, 2).Picture().Matte(
        "CryptoObject", {{"Cube", cubeID}, {"Floor", floorID}, {"Nowhere", 0x12345678}},
        [](int x, int) {
            return std::pair(pass_samples::MatteRank{x < 3 ? floorID : cubeID, 0.75},
                             pass_samples::MatteRank{sphereID, 0.25});
        });
    // 4.5, 2 and 1.5 pixels.
    EXPECT_THAT(EntriesOf(sample),
                ElementsAre(ManifestEntry{"Floor", floorID}, ManifestEntry{"3f12345f", sphereID},
                            ManifestEntry{"Cube", cubeID}));
}

}  // namespace
}  // namespace command
