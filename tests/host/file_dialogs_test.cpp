#include "host/file_dialogs.h"

#include <gtest/gtest.h>

#include "host/application.h"
#include "host/text.h"

namespace {

TEST(FileDialogs, AreCancelledWhenNobodyIsThere) {
    host::ResetApplication();
    MSTR name(_M("/a/b.psd"));
    MSTR folder(_M("/a"));
    FilterList filters;
    EXPECT_FALSE(
        GetCOREInterface8()->DoMaxSaveAsDialog(nullptr, MSTR(_M("Save")), name, folder, filters));
    EXPECT_EQ(host::ToUtf8(name), "/a/b.psd");
}

TEST(FileDialogs, AreAskedForTheFileWithAllThatTheyStartFrom) {
    host::ResetApplication();
    host::FileDialog asked;
    std::optional<MSTR> answer = MSTR(_M("/c/d.psb"));
    host::App().fileDialogs = [&](const host::FileDialog& dialog) {
        asked = dialog;
        return answer;
    };
    MSTR name(_M("/a/b.psd"));
    MSTR folder(_M("/a"));
    FilterList filters;
    filters.Append(_M("Large (*.PSB)"));
    filters.Append(_M("*.psb"));
    const auto ask = [&] {
        return GetCOREInterface8()->DoMaxSaveAsDialog(nullptr, MSTR(_M("Save")), name, folder,
                                                      filters);
    };
    EXPECT_TRUE(ask());
    EXPECT_EQ(host::ToUtf8(name), "/c/d.psb");
    EXPECT_EQ(host::ToUtf8(asked.title), "Save");
    EXPECT_EQ(host::ToUtf8(asked.fileName), "/a/b.psd");
    EXPECT_EQ(host::ToUtf8(asked.folder), "/a");
    ASSERT_EQ(asked.filters.Count(), 1);
    EXPECT_EQ(host::ToUtf8(asked.filters.Text(0)), "Large (*.PSB)");
    EXPECT_EQ(host::ToUtf8(asked.filters.Pattern(0)), "*.psb");
    answer.reset();
    EXPECT_FALSE(ask());
    EXPECT_EQ(host::ToUtf8(name), "/c/d.psb");
}

}  // namespace
