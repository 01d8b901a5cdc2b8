#include "host/render_settings_edit.h"

#include <gtest/gtest.h>
#include <maxapi.h>
#include <notify.h>

#include "host/application.h"

namespace {

int heardWidth = 0;

void Hear(void*, NotifyInfo*) {
    heardWidth = host::App().settings.render.width;
}

TEST(RenderSettingsEdit, IsBroadcastWhenItIsDone) {
    host::ResetApplication();
    heardWidth = 0;
    RegisterNotification(Hear, nullptr, NOTIFY_RENDPARAM_CHANGED);
    host::EditRenderSettings([](host::RenderSettings& settings) { settings.width = 7; });
    EXPECT_EQ(host::App().settings.render.width, 7);
    EXPECT_EQ(heardWidth, 7);
    UnRegisterNotification(Hear, nullptr, NOTIFY_RENDPARAM_CHANGED);
}

TEST(RenderSettingsEdit, SwitchingTheSaveIsOneAndSwitchingItAgainIsNone) {
    host::ResetApplication();
    host::App().settings.render.width = 7;
    RegisterNotification(Hear, nullptr, NOTIFY_RENDPARAM_CHANGED);
    for (const int expected : {7, 0}) {
        heardWidth = 0;
        GetCOREInterface()->SetRendSaveFile(TRUE);
        EXPECT_EQ(heardWidth, expected);
    }
    UnRegisterNotification(Hear, nullptr, NOTIFY_RENDPARAM_CHANGED);
}

}  // namespace
