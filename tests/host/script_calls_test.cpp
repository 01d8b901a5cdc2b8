#include "host/script_calls.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "host/application.h"
#include "host/host_renderer.h"
#include "host/text.h"
#include "tests/host/temporary_folder.h"

namespace {

class ScriptCalls : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        SetRenderer(VRAY_CLASS_ID);
        frameBuffer->SetLook({[](BMM_Color_fl*, int) {},
                              [](std::ostream& stream) {
                                  stream << "table";
                                  return true;
                              }});
    }
    void TearDown() override { host::ResetApplication(); }
    void SetRenderer(Class_ID id) {
        auto* renderer = new host::HostRenderer(id);
        renderer->SetFrameBuffer(frameBuffer);
        host::App().renderer.reset(renderer);
    }
    // With the path of the file in place of the $.
    MSTR Script(const std::string& text, const std::string& name = "a.cube") const {
        const std::size_t place = text.find('$');
        return host::FromUtf8(text.substr(0, place) + (folder.path / name).string() +
                              text.substr(place + 1));
    }
    static std::optional<FPValue> Run(const MSTR& script) {
        FPValue value = host::ScriptInt(7);
        if (!ExecuteMAXScriptScript(script.data(), TRUE, &value)) {
            EXPECT_EQ(value.i, 7);
            return std::nullopt;
        }
        return value;
    }
    static bool GivesTrue(const MSTR& script) {
        const std::optional<FPValue> value = Run(script);
        return value && value->type == TYPE_BOOL && value->b == 1;
    }
    static bool GivesFalse(const MSTR& script) {
        const std::optional<FPValue> value = Run(script);
        return value && value->type == TYPE_BOOL && value->b == 0;
    }
    std::string Take(const std::string& name) const {
        std::ifstream file(folder.path / name, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(file), {}};
        file.close();
        std::filesystem::remove(folder.path / name);
        return bytes;
    }

    TemporaryFolder folder;
    std::shared_ptr<host::VRayFrameBuffer> frameBuffer = std::make_shared<host::VRayFrameBuffer>();
};

const char* const save = "vfbControl #saveglobalccpreset \"$\"";

TEST_F(ScriptCalls, TheLookIsSavedUnderThePath) {
    EXPECT_TRUE(GivesTrue(Script(save)));
    EXPECT_EQ(Take("a.cube"), "table");
}

TEST_F(ScriptCalls, CaseAndBlanksOfTheWordsDoNotCount) {
    for (const char* script :
         {"VFBCONTROL #SaveGlobalCCPreset \"$\"", "  vfbcontrol\t#saveglobalccpreset\n\"$\" \r\n",
          "vfbControl#saveglobalccpreset\"$\""}) {
        EXPECT_TRUE(GivesTrue(Script(script))) << script;
        EXPECT_EQ(Take("a.cube"), "table") << script;
    }
}

TEST_F(ScriptCalls, ThePathIsKeptAsItIs) {
    for (const char* name :
         {"Case And Blank.cube", "\xc3\xa9 \xf0\x9f\x98\x80.cube", "a (1) #b.cube",
#ifndef _WIN32
          "a\\nb\\\\c.cube"
#endif
         }) {
        EXPECT_TRUE(GivesTrue(Script(save, name))) << name;
        EXPECT_EQ(Take(name), "table") << name;
    }
}

TEST_F(ScriptCalls, WhatCantBeSavedIsFalse) {
    EXPECT_TRUE(GivesFalse(Script(save, "missing/a.cube")));
    EXPECT_TRUE(GivesFalse(Script(save, "")));
    EXPECT_TRUE(GivesFalse(_M("vfbControl #saveglobalccpreset \"\"")));
    frameBuffer = std::make_shared<host::VRayFrameBuffer>();
    SetRenderer(VRAY_CLASS_ID);
    EXPECT_TRUE(GivesFalse(Script(save))) << "it has no look";
    EXPECT_FALSE(std::filesystem::exists(folder.path / "a.cube"));
}

TEST_F(ScriptCalls, WithoutAVRayFrameBufferTheScriptFails) {
    SetRenderer(CORONA_CLASS_ID);
    EXPECT_FALSE(Run(Script(save)));
    host::App().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
    EXPECT_FALSE(Run(Script(save)));
    host::App().renderer.reset();
    EXPECT_FALSE(Run(Script(save)));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "a.cube"));
}

TEST_F(ScriptCalls, OtherTextFails) {
    for (const char* script :
         {"vfbControl", "vfbControl #saveglobalccpreset", "vfbControl #saveglobalccpreset $",
          "vfbControl #saveglobalccpreset \"$", "vfbControl #saveglobalccpreset \"$\" x",
          "vfbControl #saveglobalccpreset \"$\"\"", "vfbControl #saveglobalccpresets \"$\"",
          "vfbControl saveglobalccpreset \"$\"", "vfbControls #saveglobalccpreset \"$\"",
          "#saveglobalccpreset vfbControl \"$\"", "x vfbControl #saveglobalccpreset \"$\""}) {
        const std::string text = script;
        EXPECT_FALSE(Run(text.find('$') == std::string::npos ? host::FromUtf8(text) : Script(text)))
            << script;
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path));
}

}  // namespace
