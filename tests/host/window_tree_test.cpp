#include "host/window_tree.h"

#include <gtest/gtest.h>

#include <array>

#include "host/application.h"

#ifndef _WIN32
namespace {

class WindowTreeTest : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        main = Tree().Add({_M("Main"), _M("Application"), nullptr, nullptr, 0});
        dialog = Tree().Add({_M("#32770"), _M("Rendering"), nullptr, main, 0});
        button = Tree().Add({_M("Button"), _M("Cancel"), dialog, nullptr, 2});
        label = Tree().Add({_M("Static"), _M(""), dialog, nullptr, 1348});
    }
    void TearDown() override { host::ResetApplication(); }
    host::WindowTree& Tree() { return host::App().windows; }

    HWND main = nullptr;
    HWND dialog = nullptr;
    HWND button = nullptr;
    HWND label = nullptr;
};

TEST_F(WindowTreeTest, TopLevelWindowsAreFoundByClassAndTitle) {
    EXPECT_EQ(FindWindow(_M("#32770"), _M("Rendering")), dialog);
    EXPECT_EQ(FindWindow(_M("#32770"), nullptr), dialog);
    EXPECT_EQ(FindWindow(nullptr, _M("RENDERING")), dialog);
    EXPECT_EQ(FindWindow(nullptr, nullptr), main);
    EXPECT_EQ(FindWindow(_M("#32770"), _M("Other")), nullptr);
    EXPECT_EQ(FindWindow(_M("Button"), nullptr), nullptr) << "a child is no top-level window";
}

TEST_F(WindowTreeTest, TopLevelWindowsAreWalkedInTheirOrder) {
    EXPECT_EQ(GetTopWindow(nullptr), main);
    EXPECT_EQ(GetWindow(main, GW_HWNDNEXT), dialog);
    EXPECT_EQ(GetWindow(dialog, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetWindow(nullptr, GW_HWNDNEXT), nullptr);
}

TEST_F(WindowTreeTest, ChildrenAreWalkedInTheirOrder) {
    EXPECT_EQ(GetTopWindow(dialog), button);
    EXPECT_EQ(GetWindow(button, GW_HWNDNEXT), label);
    EXPECT_EQ(GetWindow(label, GW_HWNDNEXT), nullptr);
}

TEST_F(WindowTreeTest, TheParentOfATopLevelWindowIsItsOwner) {
    EXPECT_EQ(GetParent(dialog), main);
    EXPECT_EQ(GetParent(button), dialog);
    EXPECT_EQ(GetParent(main), nullptr);
    EXPECT_EQ(GetParent(nullptr), nullptr);
}

TEST_F(WindowTreeTest, ControlsAreFoundByTheirId) {
    EXPECT_EQ(GetDlgItem(dialog, 2), button);
    EXPECT_EQ(GetDlgItem(dialog, 1348), label);
    EXPECT_EQ(GetDlgItem(dialog, 1345), nullptr);
    EXPECT_EQ(GetDlgItem(main, 2), nullptr);
    EXPECT_EQ(GetDlgItem(nullptr, 0), nullptr);
}

TEST_F(WindowTreeTest, AClassNameIsCutToItsBuffer) {
    std::array<MCHAR, 8> name{};
    EXPECT_EQ(GetClassName(button, name.data(), 8), 6);
    EXPECT_EQ(MSTR(name.data()), MSTR(_M("Button")));
    EXPECT_EQ(GetClassName(button, name.data(), 4), 3);
    EXPECT_EQ(MSTR(name.data()), MSTR(_M("But")));
    EXPECT_EQ(GetClassName(button, name.data(), 0), 0);
    EXPECT_EQ(GetClassName(nullptr, name.data(), 8), 0);
}

TEST_F(WindowTreeTest, AWindowsTextCanBeSet) {
    EXPECT_TRUE(SetWindowText(label, _M("veltrane")));
    EXPECT_EQ(label->title, MSTR(_M("veltrane")));
    EXPECT_FALSE(SetWindowText(nullptr, _M("")));
}

TEST_F(WindowTreeTest, AWindowTakesItsChildrenAndThoseItOwnsWithIt) {
    Tree().Remove(main);
    EXPECT_FALSE(Tree().Contains(main));
    EXPECT_FALSE(Tree().Contains(dialog));
    EXPECT_FALSE(Tree().Contains(label));
    EXPECT_EQ(GetTopWindow(nullptr), nullptr);
}

TEST_F(WindowTreeTest, AWindowNeedsAParentOfTheTree) {
    Tree().Remove(dialog);
    EXPECT_EQ(Tree().Add({_M("Button"), _M(""), dialog, nullptr, 2}), nullptr);
}

}  // namespace
#endif
