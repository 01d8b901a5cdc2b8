#include "host/undo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/application.h"

namespace {

using testing::ElementsAre;

using Journal = std::vector<std::string>;

class Change : public RestoreObj {
  public:
    Change(Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}
    ~Change() override { journal_.push_back("~" + name_); }
    void Restore(int isUndo) override {
        journal_.push_back((isUndo ? "undo " : "cancel ") + name_);
    }
    void Redo() override { journal_.push_back("redo " + name_); }

  private:
    Journal& journal_;
    std::string name_;
};

class Undo : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
    void Put(const char* name) { theHold.Put(new Change(journal, name)); }
    host::UndoStack& Stack() { return host::App().undo; }

    Journal journal;
};

TEST_F(Undo, AStepIsTakenBackFromItsEndAndDoneAgainFromItsStart) {
    theHold.Begin();
    EXPECT_TRUE(theHold.Holding());
    Put("a");
    Put("b");
    theHold.Accept(_M("Step"));
    EXPECT_FALSE(theHold.Holding());
    EXPECT_EQ(Stack().UndoName(), MSTR(_M("Step")));
    EXPECT_TRUE(Stack().Undo());
    EXPECT_EQ(Stack().RedoName(), MSTR(_M("Step")));
    EXPECT_TRUE(Stack().Redo());
    EXPECT_THAT(journal, ElementsAre("undo b", "undo a", "redo a", "redo b"));
}

TEST_F(Undo, WithoutStepsThereIsNothingToUndo) {
    EXPECT_FALSE(Stack().CanUndo());
    EXPECT_FALSE(Stack().Undo());
    EXPECT_FALSE(Stack().Redo());
    EXPECT_TRUE(Stack().UndoName().isNull());
}

TEST_F(Undo, AHoldWithoutChangesMakesNoStep) {
    theHold.Begin();
    theHold.Accept(_M("Nothing"));
    EXPECT_FALSE(Stack().CanUndo());
}

TEST_F(Undo, CancelTakesTheChangesBackAndMakesNoStep) {
    theHold.Begin();
    Put("a");
    Put("b");
    theHold.Cancel();
    EXPECT_THAT(journal, ElementsAre("cancel b", "cancel a", "~a", "~b"));
    EXPECT_FALSE(Stack().CanUndo());
    EXPECT_FALSE(theHold.Holding());
}

TEST_F(Undo, ANestedHoldJoinsTheOuterOneUnderItsName) {
    theHold.Begin();
    Put("a");
    theHold.Begin();
    Put("b");
    theHold.Accept(_M("Inner"));
    EXPECT_TRUE(theHold.Holding());
    EXPECT_FALSE(Stack().CanUndo());
    Put("c");
    theHold.Accept(_M("Outer"));
    EXPECT_EQ(Stack().UndoName(), MSTR(_M("Outer")));
    Stack().Undo();
    EXPECT_THAT(journal, ElementsAre("undo c", "undo b", "undo a"));
}

TEST_F(Undo, CancelOfANestedHoldTakesBackOnlyItsOwnChanges) {
    theHold.Begin();
    Put("a");
    theHold.Begin();
    Put("b");
    theHold.Cancel();
    EXPECT_THAT(journal, ElementsAre("cancel b", "~b"));
    theHold.Accept(_M("Outer"));
    Stack().Undo();
    EXPECT_EQ(journal.back(), "undo a");
}

TEST_F(Undo, AChangePutOutsideAHoldIsDestroyed) {
    Put("a");
    EXPECT_THAT(journal, ElementsAre("~a"));
}

TEST_F(Undo, AcceptAndCancelWithoutBeginDoNothing) {
    theHold.Accept(_M("No"));
    theHold.Cancel();
    EXPECT_FALSE(Stack().CanUndo());
    EXPECT_FALSE(theHold.Holding());
}

TEST_F(Undo, ANewStepEndsWhatCouldBeDoneAgain) {
    theHold.Begin();
    Put("a");
    theHold.Accept(_M("A"));
    Stack().Undo();
    theHold.Begin();
    Put("b");
    theHold.Accept(_M("B"));
    EXPECT_FALSE(Stack().CanRedo());
    EXPECT_THAT(journal, ElementsAre("undo a", "~a"));
}

TEST_F(Undo, NothingIsTakenBackWhileAHoldIsOpen) {
    theHold.Begin();
    Put("a");
    theHold.Accept(_M("A"));
    theHold.Begin();
    EXPECT_FALSE(Stack().Undo());
    theHold.Accept(_M("B"));
    EXPECT_TRUE(Stack().Undo());
}

TEST_F(Undo, HoldsThatAreOpenedByWhatIsTakenBackRecordNothing) {
    class Nested : public RestoreObj {
      public:
        void Restore(int) override {
            theHold.Begin();
            holding = theHold.Holding();
            theHold.Put(new Nested);
            theHold.Accept(_M("Nested"));
        }
        void Redo() override {}
        bool holding = true;
    };
    auto* change = new Nested;
    theHold.Begin();
    theHold.Put(change);
    theHold.Accept(_M("Outer"));
    EXPECT_TRUE(Stack().Undo());
    EXPECT_FALSE(change->holding);
    EXPECT_FALSE(Stack().CanUndo());
    EXPECT_EQ(Stack().RedoName(), MSTR(_M("Outer")));
}

TEST_F(Undo, WhileItIsPausedNothingIsRecorded) {
    theHold.Begin();
    Put("a");
    {
        const host::UndoStack::Pause pause(Stack());
        EXPECT_FALSE(theHold.Holding());
        const host::UndoStack::Pause again(Stack());
        Put("b");
        theHold.Accept(_M("Inner"));
    }
    EXPECT_TRUE(theHold.Holding());
    theHold.Accept(_M("Step"));
    Stack().Undo();
    EXPECT_THAT(journal, ElementsAre("~b", "undo a"));
}

TEST_F(Undo, OfMoreThanTwoHundredStepsTheOldestIsForgotten) {
    for (int i = 0; i < 202; ++i) {
        theHold.Begin();
        Put(std::to_string(i).c_str());
        theHold.Accept(_M("Step"));
    }
    EXPECT_THAT(journal, ElementsAre("~0", "~1"));
    int steps = 0;
    while (Stack().Undo())
        ++steps;
    EXPECT_EQ(steps, 200);
    EXPECT_EQ(journal.back(), "undo 2");
}

TEST_F(Undo, TheLatestChangeIsThatOfTheInnermostHold) {
    EXPECT_EQ(Stack().LastChange(), nullptr);
    theHold.Begin();
    auto* change = new Change(journal, "a");
    theHold.Put(change);
    EXPECT_EQ(Stack().LastChange(), change);
    theHold.Begin();
    EXPECT_EQ(Stack().LastChange(), nullptr) << "it might be cancelled";
    theHold.Accept(_M("Inner"));
    EXPECT_EQ(Stack().LastChange(), change);
    theHold.Accept(_M("Step"));
    EXPECT_EQ(Stack().LastChange(), nullptr);
}

// What it tells while it is taken back, done again, and not.
class Telling final : public RestoreObj {
  public:
    explicit Telling(std::vector<int>& told) : told_(told) {}
    void Restore(int) override { told_.push_back(theHold.RestoreOrRedoing()); }
    void Redo() override { told_.push_back(theHold.RestoreOrRedoing()); }

  private:
    std::vector<int>& told_;
};

TEST_F(Undo, TellsWhetherAStepIsBeingTakenBackOrDoneAgain) {
    std::vector<int> told;
    theHold.Begin();
    theHold.Put(new Telling(told));
    theHold.Accept(_M("Step"));
    Stack().Undo();
    Stack().Redo();
    theHold.Begin();
    theHold.Put(new Telling(told));
    theHold.Cancel();
    EXPECT_THAT(told, ElementsAre(1, 1, 1));
    EXPECT_FALSE(theHold.RestoreOrRedoing());
    const host::UndoStack::Pause pause(Stack());
    EXPECT_FALSE(theHold.RestoreOrRedoing());
}

TEST_F(Undo, ClearForgetsWithoutTakingBack) {
    theHold.Begin();
    Put("a");
    theHold.Accept(_M("A"));
    theHold.Begin();
    Put("b");
    Stack().Clear();
    EXPECT_FALSE(theHold.Holding());
    EXPECT_FALSE(Stack().CanUndo());
    EXPECT_THAT(journal, testing::UnorderedElementsAre("~a", "~b"));
}

}  // namespace
