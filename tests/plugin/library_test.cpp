#include "plugin/library.h"

#include <gtest/gtest.h>
#include <notify.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "effect/psd_output.h"
#include "host/application.h"
#include "host/text.h"
#include "plugin/class_descriptors.h"
#include "plugin/entry.h"
#include "plugin/string_table.h"

namespace {

constexpr DWORD processDetach = 0;
constexpr DWORD processAttach = 1;
constexpr DWORD threadAttach = 2;
constexpr DWORD threadDetach = 3;

// One of four modules that no system knows.
HINSTANCE Handle(std::size_t number) {
    static char modules[4];
    return reinterpret_cast<HINSTANCE>(&modules[number]);
}

// How often the library listens to a code without an effect. Takes the registrations away.
int TakeRegistrations(int code) {
    int count = 0;
    while (UnRegisterNotification(effect::OnEffectNotification, nullptr, code) != 0)
        ++count;
    return count;
}

std::vector<int> TakeAllRegistrations() {
    std::vector<int> counts;
    for (const int code : {6, 8, 10, 14, 80, 73})
        counts.push_back(TakeRegistrations(code));
    return counts;
}

std::vector<int> RegisteredCodes() {
    std::vector<int> codes;
    for (const auto& registration : host::App().notifications.Registrations())
        codes.push_back(registration.code);
    return codes;
}

int TakeOtherRegistrations() {
    int count = 0;
    for (int code = 0; code < 1000; ++code)
        count += TakeRegistrations(code);
    return count;
}

// A process attaches once, so each of these tests is one: the body runs in a new process, which
// says on standard error which line doesn't hold.
class LibraryProcess : public testing::Test {
  protected:
    LibraryProcess() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

#define MUST(condition)                                                        \
    if (!(condition)) {                                                        \
        std::cerr << "line " << __LINE__ << ": " #condition " doesn't hold\n"; \
        std::_Exit(1);                                                         \
    }

void AttachFromNothing() {
    MUST(plugin::Module() == nullptr)
    MUST(plugin::GetString(1) == nullptr)
    MUST(LibDescription() == nullptr)
    MUST(LibClassDesc(0)->ClassName() == nullptr)
    MUST(LibClassDesc(0)->HInstance() == nullptr)
    MUST(*plugin::LibraryName() == 0)
    MUST(LibNumberClasses() == 3)

    MUST(plugin::LibraryMain(Handle(0), processAttach) == TRUE)
    MUST(plugin::Module() == Handle(0))
#ifndef _WIN32
    // No module's resources are behind that handle elsewhere.
    MUST(host::ToUtf8(LibDescription()) == "veltrane")
    MUST(host::ToUtf8(plugin::LibraryName()) == "veltrane")
#endif
    MUST((RegisteredCodes() == std::vector<int>{6, 8, 10, 14, 80, 73}))
    MUST((TakeAllRegistrations() == std::vector<int>{1, 1, 1, 1, 1, 1}))
    MUST(TakeOtherRegistrations() == 0)
    std::_Exit(0);
}

TEST_F(LibraryProcess, AttachingKeepsTheHandleAndRegistersForSixCodesOnce) {
    EXPECT_EXIT(AttachFromNothing(), testing::ExitedWithCode(0), "");
}

void CallAgain() {
    MUST(plugin::LibraryMain(Handle(0), processAttach) == TRUE)
    MUST(plugin::LibraryMain(Handle(1), threadAttach) == TRUE)
    MUST(plugin::Module() == Handle(1))
    MUST(plugin::LibraryMain(Handle(2), threadDetach) == TRUE)
    MUST(plugin::LibraryMain(Handle(3), processAttach) == TRUE)
    MUST(plugin::Module() == Handle(3))
    plugin::Attach();
    MUST(plugin::Module() == Handle(3))
    MUST((TakeAllRegistrations() == std::vector<int>{1, 1, 1, 1, 1, 1}))
    std::_Exit(0);
}

TEST_F(LibraryProcess, FurtherCallsOnlyKeepTheHandle) {
    EXPECT_EXIT(CallAgain(), testing::ExitedWithCode(0), "");
}

void Detach() {
    MUST(plugin::LibraryMain(Handle(0), processAttach) == TRUE)
    // Of an effect; it isn't the library's to take back.
    int something = 0;
    RegisterNotification(effect::OnEffectNotification, &something, 6);
    MUST(plugin::LibraryMain(Handle(1), processDetach) == TRUE)
    MUST(plugin::Module() == Handle(1))
    MUST((TakeAllRegistrations() == std::vector<int>{0, 0, 0, 0, 0, 0}))
    MUST(UnRegisterNotification(effect::OnEffectNotification, &something, 6) != 0)
    MUST(plugin::LibraryMain(Handle(0), processAttach) == TRUE)
    MUST((TakeAllRegistrations() == std::vector<int>{0, 0, 0, 0, 0, 0}))
    std::_Exit(0);
}

TEST_F(LibraryProcess, DetachingTakesTheRegistrationsBackForGood) {
    EXPECT_EXIT(Detach(), testing::ExitedWithCode(0), "");
}

void DetachFirst() {
    MUST(plugin::LibraryMain(Handle(0), processDetach) == TRUE)
    MUST(plugin::Module() == Handle(0))
    MUST((TakeAllRegistrations() == std::vector<int>{0, 0, 0, 0, 0, 0}))
    std::_Exit(0);
}

TEST_F(LibraryProcess, ADetachAsTheFirstCallLeavesNothingBehind) {
    EXPECT_EXIT(DetachFirst(), testing::ExitedWithCode(0), "");
}

void AttachOneself() {
    plugin::Attach();
    HINSTANCE module = plugin::Module();
    MUST(module != nullptr)
    MUST(host::ToUtf8(LibDescription()) == "veltrane")
    MUST(host::ToUtf8(plugin::LibraryName()) == "veltrane")
    plugin::Attach();
    MUST(plugin::Module() == module)
    MUST((TakeAllRegistrations() == std::vector<int>{1, 1, 1, 1, 1, 1}))
    std::_Exit(0);
}

TEST_F(LibraryProcess, AProgramAttachesTheLibraryThatItHasLinkedIn) {
    EXPECT_EXIT(AttachOneself(), testing::ExitedWithCode(0), "");
}

TEST(Library, WhatItListensToDoesNothing) {
    plugin::Attach();
    host::ResetApplication();
    for (const int code : {6, 8, 10, 14, 80, 73}) {
        RegisterNotification(effect::OnEffectNotification, nullptr, code);
        host::Broadcast(code);
    }
    EXPECT_TRUE(host::App().log.Entries().empty());
    EXPECT_FALSE(host::App().settings.saveRequired);
    host::ResetApplication();
}

}  // namespace
