#include "ui/win32/open_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::wstring> opened;

TEST(OpenFile, GoesToWhoeverTookTheSystemsPlace) {
    opened.clear();
    ui::UseFileOpener([](const MSTR& file) { opened.emplace_back(file.data()); });
    ui::OpenFile(MSTR(L"C:\\r\\frame.psd"));
    EXPECT_EQ(opened, std::vector<std::wstring>{L"C:\\r\\frame.psd"});
    ui::UseFileOpener(nullptr);
    // Nobody opens what isn't there, and nobody is told.
    ui::OpenFile(MSTR(L"C:\\no\\such\\file.psd"));
    EXPECT_EQ(opened.size(), 1U);
}

}  // namespace
