#include <gtest/gtest.h>
#include <windows.h>

#include "command/system_message.h"
#include "host/text.h"

namespace command {
namespace {

TEST(SystemMessage, IsTheSystemsTextInOneLine) {
    wchar_t text[512] = {};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                   ERROR_ACCESS_DENIED, 0, text, 511, nullptr);
    const std::string message = SystemMessage({ERROR_ACCESS_DENIED, std::system_category()});
    ASSERT_FALSE(message.empty());
    EXPECT_TRUE(host::ToUtf8(text).starts_with(message));
    EXPECT_EQ(message.find_first_of("\r\n"), std::string::npos);
    EXPECT_NE(message.back(), '.');
}

TEST(SystemMessage, AFaultThatTheSystemHasNoTextForIsItsNumber) {
    EXPECT_EQ(SystemMessage({0x2fffffff, std::system_category()}), "system error 805306367");
}

TEST(SystemMessage, FaultsOfTheStandardLibraryKeepTheirs) {
    EXPECT_EQ(SystemMessage(std::make_error_code(std::errc::permission_denied)),
              std::make_error_code(std::errc::permission_denied).message());
}

}  // namespace
}  // namespace command
