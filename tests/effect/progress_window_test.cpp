#include "effect/progress_window.h"

#include "tests/effect/effect_fixture.h"
#include "tests/host/window_stage.h"

namespace {

using effect::FindRenderProgressWindow;

class ProgressWindow : public EffectTest {
  protected:
    WindowStage stage;

    ProgressWindow() { Host().settings.mainWindow = stage.Add({_M("Main"), _M("Application")}); }

    struct Control {
        int id;
        const MCHAR* className;
    };
    std::vector<Control> controls = {{2, _M("Button")},
                                     {1345, _M("msctls_progress32")},
                                     {1346, _M("msctls_progress32")},
                                     {1348, _M("Static")},
                                     {1280, _M("RollupWindow")}};

    // A window with `controls` in it.
    HWND Add(const MCHAR* title, const MCHAR* className, HWND owner) {
        HWND window = stage.Add({className, title, nullptr, owner, 0});
        for (const Control& control : controls) {
            stage.Add({control.className, _M(""), window, nullptr, control.id});
        }
        return window;
    }
    HWND Add(const MCHAR* title) { return Add(title, _M("#32770"), Host().settings.mainWindow); }
};

TEST_F(ProgressWindow, IsNoneOnAnEmptyDesktop) {
    EXPECT_EQ(FindRenderProgressWindow(), nullptr);
}

TEST_F(ProgressWindow, IsFoundByItsTitle) {
    HWND window = Add(_M("Rendering"));
    EXPECT_EQ(FindRenderProgressWindow(), window);
}

TEST_F(ProgressWindow, IsFoundByItsControlsUnderAnotherTitle) {
    Add(_M("Other"), _M("Frame"), Host().settings.mainWindow);
    HWND window = Add(_M("Rendu"));
    Add(_M("Second"));
    EXPECT_EQ(FindRenderProgressWindow(), window) << "the first in order";
}

TEST_F(ProgressWindow, WithTheTitleComesBeforeThoseInFrontOfIt) {
    Add(_M("First"));
    HWND window = Add(_M("Rendering"));
    EXPECT_EQ(FindRenderProgressWindow(), window);
}

TEST_F(ProgressWindow, WithTheTitleButNotTheRestIsPassedOver) {
    stage.Add({_M("#32770"), _M("Rendering"), nullptr, Host().settings.mainWindow, 0});
    EXPECT_EQ(FindRenderProgressWindow(), nullptr);
    HWND window = Add(_M("Other"));
    EXPECT_EQ(FindRenderProgressWindow(), window);
}

TEST_F(ProgressWindow, OfAnotherClassIsNone) {
    Add(_M("Rendering"), _M("#32771"), Host().settings.mainWindow);
    EXPECT_EQ(FindRenderProgressWindow(), nullptr);
}

TEST_F(ProgressWindow, OfAnotherProgramsMainWindowIsNone) {
    Add(_M("Rendering"), _M("#32770"), nullptr);
    HWND other = stage.Add({_M("Main"), _M("Other application")});
    Add(_M("Rendering"), _M("#32770"), other);
    EXPECT_EQ(FindRenderProgressWindow(), nullptr);
}

TEST_F(ProgressWindow, WithoutOneOfItsControlsIsNone) {
    const std::vector<Control> all = controls;
    for (std::size_t left = 0; left < all.size(); ++left) {
        controls = all;
        controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(left));
        HWND window = Add(_M("Rendering"));
        EXPECT_EQ(FindRenderProgressWindow(), nullptr) << "control " << all[left].id;
        stage.Remove(window);
    }
}

TEST_F(ProgressWindow, WithAControlOfAnotherClassIsNone) {
    const std::vector<Control> all = controls;
    for (std::size_t changed = 0; changed < all.size(); ++changed) {
        controls = all;
        controls[changed].className = _M("Edit");
        HWND window = Add(_M("Rendering"));
        EXPECT_EQ(FindRenderProgressWindow(), nullptr) << "control " << all[changed].id;
        stage.Remove(window);
    }
}

}  // namespace
