#include "ui/parameter_map_procedure.h"

#include <elementclasses.h>
#include <gtest/gtest.h>

#include "host/application.h"
#include "tests/host/sample_objects.h"

namespace {

// Of a class and message that a test chooses.
class Sender : public SampleTarget {
  public:
    explicit Sender(SClass_ID id) : superClassID(id) {}
    SClass_ID SuperClassID() override { return superClassID; }
    void Send(RefMessage message) { NotifyDependents(FOREVER, PART_ALL, message); }

  private:
    SClass_ID superClassID;
};

class ParameterMapProcedure : public testing::Test {
  protected:
    ParameterMapProcedure() {
        host::ResetApplication();
        procedure.ElementsOpened();
    }
    ~ParameterMapProcedure() override {
        procedure.ElementsClosed();
        host::ResetApplication();
    }
    static host::RenderElement& Add() {
        return host::App().elements[RS_Production].Add(SPECULAR_ELEMENT, _M("Specular"));
    }

    ui::PSDOutputParamMapUserDlgProc procedure;
};

TEST_F(ParameterMapProcedure, NotesThatARenderElementChanged) {
    host::RenderElement& element = Add();
    procedure.TakeElementsDirty();
    element.SetElementName(_M("Glanz"));
    EXPECT_TRUE(procedure.TakeElementsDirty());
    EXPECT_FALSE(procedure.TakeElementsDirty()) << "it is noted once";
}

TEST_F(ParameterMapProcedure, NotesChangesAndChangesOfPropertiesAndNoOtherMessage) {
    Sender element(4432);
    for (const RefMessage message : {80U, 259U}) {
        element.Send(message);
        EXPECT_TRUE(procedure.TakeElementsDirty()) << message;
    }
    for (const RefMessage message : {79U, 81U, 83U, 258U, 260U}) {
        element.Send(message);
        EXPECT_FALSE(procedure.TakeElementsDirty()) << message;
    }
}

TEST_F(ParameterMapProcedure, NotesNothingOfOtherTargets) {
    for (const SClass_ID id : {4240U, 512U, 0U}) {
        Sender(id).Send(REFMSG_CHANGE);
        EXPECT_FALSE(procedure.TakeElementsDirty()) << id;
    }
}

TEST_F(ParameterMapProcedure, AnswersThatAllIsWell) {
    Sender element(4432);
    PartID part = PART_ALL;
    for (const RefMessage message : {80U, 81U}) {
        EXPECT_EQ(procedure.NotifyRefChanged(FOREVER, &element, part, message, TRUE), REF_SUCCEED);
        EXPECT_EQ(procedure.NotifyRefChanged(FOREVER, nullptr, part, message, TRUE), REF_SUCCEED);
    }
    EXPECT_TRUE(procedure.TakeElementsDirty());
}

TEST_F(ParameterMapProcedure, HearsNothingWhileTheRollupIsClosed) {
    Sender element(4432);
    procedure.ElementsClosed();
    element.Send(REFMSG_CHANGE);
    EXPECT_FALSE(procedure.TakeElementsDirty());
    procedure.ElementsOpened();
    element.Send(REFMSG_CHANGE);
    EXPECT_TRUE(procedure.TakeElementsDirty());
}

TEST_F(ParameterMapProcedure, OpenedTwiceIsClosedOnce) {
    Sender element(4432);
    procedure.ElementsOpened();
    procedure.ElementsClosed();
    element.Send(REFMSG_CHANGE);
    EXPECT_FALSE(procedure.TakeElementsDirty());
}

TEST(DialogProcedure, IsTheSameEachTimeAndIsNeverFreed) {
    ui::PSDOutputParamMapUserDlgProc& procedure = ui::DialogProcedure();
    procedure.DeleteThis();
    EXPECT_EQ(&ui::DialogProcedure(), &procedure);
    EXPECT_FALSE(procedure.TakeElementsDirty());
}

}  // namespace
