#include "ui/element_changes.h"

#include <gtest/gtest.h>

#include "tests/host/sample_objects.h"

namespace {

class ClassedTarget : public SampleTarget {
  public:
    explicit ClassedTarget(SClass_ID superClass) : id(superClass) {}
    SClass_ID SuperClassID() override { return id; }

  private:
    SClass_ID id;
};

TEST(ElementChanges, AreChangesOfElementsAndOfTheirProperties) {
    ClassedTarget element(4432);
    EXPECT_TRUE(ui::TellsElementChange(&element, 80));
    EXPECT_TRUE(ui::TellsElementChange(&element, 259));
}

TEST(ElementChanges, AreNoOtherMessages) {
    ClassedTarget element(4432);
    for (const RefMessage message : {0U, 79U, 81U, 83U, 258U, 260U})
        EXPECT_FALSE(ui::TellsElementChange(&element, message)) << message;
}

TEST(ElementChanges, AreNoneOfOtherTargets) {
    for (const SClass_ID id : {4240U, 512U, 0U}) {
        ClassedTarget other(id);
        EXPECT_FALSE(ui::TellsElementChange(&other, 80)) << id;
    }
    EXPECT_FALSE(ui::TellsElementChange(nullptr, 80));
}

}  // namespace
