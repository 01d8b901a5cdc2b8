#include "host/application.h"

#include <gtest/gtest.h>
#include <hold.h>

#include "tests/host/sample_effect.h"

namespace {

TEST(Application, AFreshOneForgetsEverything) {
    host::ResetApplication();
    host::App().settings.frameRate = 25;
    host::App().log.LogEntry(SYSLOG_INFO, NO_DIALOG, _M(""), _M("x"));
    host::App().scripts.Set("a", host::ScriptInt(1));
    theHold.Begin();
    host::ResetApplication();
    EXPECT_EQ(host::App().settings.frameRate, 30);
    EXPECT_TRUE(host::App().log.Entries().empty());
    EXPECT_FALSE(host::App().scripts.Evaluate("a"));
    EXPECT_FALSE(theHold.Holding());
}

TEST(Application, EffectsCanAskTheApplicationUntilTheyAreGone) {
    class Parting : public SampleEffect {
      public:
        Parting(Journal& journal, Journal& last) : SampleEffect(journal, "a"), last_(last) {
            RegisterNotification(Hear, this, NOTIFY_PRE_RENDER);
        }
        ~Parting() override {
            last_.push_back(UnRegisterNotification(Hear, this, NOTIFY_PRE_RENDER) ? "found"
                                                                                  : "lost");
        }

      private:
        static void Hear(void*, NotifyInfo*) {}
        Journal& last_;
    };
    Journal journal;
    Journal last;
    host::ResetApplication();
    host::App().effects.emplace_back(new Parting(journal, last));
    host::ResetApplication();
    EXPECT_EQ(last, Journal{"found"});
}

class Referring : public SampleEffect {
  public:
    Referring(Journal& journal, INode* node, IRenderElement* element, MSTR& last)
        : SampleEffect(journal, "a"), node_(node), element_(element), last_(last) {}
    ~Referring() override { last_ = MSTR(node_->GetName()) + element_->ElementName(); }

  private:
    INode* node_;
    IRenderElement* element_;
    MSTR& last_;
};

TEST(Application, TheSceneGoesAfterTheEffectsThatReferToIt) {
    host::ResetApplication();
    Journal journal;
    MSTR last;
    host::Node& node = host::App().scene.AddNode(_M("node"));
    host::RenderElement& element =
        host::App().elements[RS_Production].Add(Class_ID(4, 0), _M("element"));
    host::App().effects.emplace_back(new Referring(journal, &node, &element, last));
    host::ResetApplication();
    EXPECT_EQ(last, MSTR(_M("nodeelement")));
    EXPECT_EQ(host::App().scene.NumNodes(), 0);
    EXPECT_EQ(host::App().elements[RS_Production].NumRenderElements(), 0);
}

}  // namespace
