#include "command/save_plan.h"

#include <gmock/gmock.h>

#include "command/failure.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

using testing::ElementsAre;

class SavePlanTest : public FolderTest {
  protected:
    SavePlan Plan(const std::string& input, const std::string& output = {},
                  const std::string& frames = {}) const {
        SaveArguments arguments;
        arguments.input = input;
        arguments.output = output;
        arguments.frames = frames;
        return MakePlan(arguments);
    }
    std::string SavePlanComplaint(const std::string& input, const std::string& output = {},
                                  const std::string& frames = {}) const {
        return FaultText<UsageError>([&] { Plan(input, output, frames); });
    }
};

TEST_F(SavePlanTest, OneFileBecomesTheDocumentBesideIt) {
    const SavePlan plan = Plan("shots/a.b.exr");
    EXPECT_THAT(plan.frames, ElementsAre(0));
    EXPECT_FALSE(plan.isSequence);
    EXPECT_EQ(plan.inputOf(0), "shots/a.b.exr");
    EXPECT_EQ(plan.output, "shots/a.b.psd");
    EXPECT_EQ(Plan("a.exr", "out/b.PSB").output, "out/b.PSB");
    EXPECT_EQ(Plan("\xe6\xb0\xb4.exr").output, "\xe6\xb0\xb4.psd");
}

TEST_F(SavePlanTest, ASequenceTakesItsFramesFromTheNames) {
    const SavePlan plan = Plan("a.####.exr", {}, "8-10");
    EXPECT_THAT(plan.frames, ElementsAre(8, 9, 10));
    EXPECT_TRUE(plan.isSequence);
    EXPECT_EQ(plan.inputOf(9), "a.0009.exr");
    EXPECT_EQ(plan.output, "a..psd") << "the host puts the number before the suffix";
}

TEST_F(SavePlanTest, ADocumentsNumberMayBeWrittenOrNot) {
    EXPECT_EQ(Plan("a.####.exr", "b.psd", "1").output, "b.psd");
    EXPECT_EQ(Plan("a.####.exr", "b_####.psd", "1").output, "b_.psd");
    EXPECT_EQ(SavePlanComplaint("a.####.exr", "####.b.psd", "1"),
              "-o ####.b.psd: the frame number of a document stands right before its suffix; move "
              "#### there or leave it out");
}

TEST_F(SavePlanTest, AFileThatIsCalledLikeAPatternIsAFile) {
    const std::string path = Write("take#2.exr", "x");
    EXPECT_EQ(Plan(path).inputOf(0), path);
    EXPECT_TRUE(Plan(path, {}, "2").isSequence) << "with frames it is a pattern";
}

TEST_F(SavePlanTest, APatternAndFramesGoTogether) {
    EXPECT_EQ(SavePlanComplaint("a.####.exr"),
              "a.####.exr: there is no such file; to read #### as a frame number give the frames, "
              "such as --frames 1-10");
    EXPECT_EQ(SavePlanComplaint("a.exr", {}, "1-2"),
              "a.exr: with --frames the name holds the frame number, such as shot.####.exr; put "
              "it there or leave --frames out");
}

class ShadowPlanTest : public SavePlanTest {
  protected:
    SavePlan PlanWith(const std::string& shadow) const {
        SaveArguments arguments;
        arguments.input = "a.####.exr";
        arguments.frames = "1-2";
        arguments.shadow = shadow;
        return MakePlan(arguments);
    }
    std::string ComplaintOf(const std::string& shadow) const {
        return FaultText<UsageError>([&] { PlanWith(shadow); });
    }
};

TEST_F(ShadowPlanTest, OneFrameHasOneShadowWhateverItsName) {
    EXPECT_EQ(Plan("a.exr").shadow, "");
    SaveArguments arguments;
    arguments.input = "a.exr";
    arguments.shadow = "s.####.exr";
    EXPECT_EQ(MakePlan(arguments).shadow, "s.####.exr");
}

TEST_F(ShadowPlanTest, InASequenceTheHostNumbersIt) {
    EXPECT_EQ(PlanWith("").shadow, "");
    EXPECT_EQ(PlanWith("x/s.####.exr").shadow, "x/s..exr");
    EXPECT_EQ(PlanWith("s%04d.png").shadow, "s.png");
    EXPECT_EQ(PlanWith("s$F4.tif").shadow, "s.tif");
}

TEST_F(ShadowPlanTest, ANumberThatTheHostCantWriteIsToldSo) {
    EXPECT_EQ(ComplaintOf("s.exr"),
              "--shadow s.exr: with --frames the name holds the frame number, such as "
              "shadow.####.exr; put it there");
    const std::string rest =
        ": the frame number of a shadow pass has four digits and stands right before the suffix, "
        "as in shadow.####.exr; rename the files so";
    EXPECT_EQ(ComplaintOf("s.###.exr"), "--shadow s.###.exr" + rest);
    EXPECT_EQ(ComplaintOf("s.$F.exr"), "--shadow s.$F.exr" + rest);
    EXPECT_EQ(ComplaintOf("s.####.b.exr"), "--shadow s.####.b.exr" + rest);
}

TEST_F(SavePlanTest, ADocumentsNameEndsAsDocumentsDo) {
    EXPECT_EQ(SavePlanComplaint("a.exr", "b.tif"),
              "-o b.tif: a document's name ends in .psd or .psb");
    EXPECT_EQ(SavePlanComplaint("a.exr", "psd"), "-o psd: a document's name ends in .psd or .psb");
    EXPECT_NO_THROW(CheckSuffix("a.Psd"));
}

}  // namespace
}  // namespace command
