#include <Path.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/text.h"

namespace {

using MaxSDK::Util::Path;

#ifdef _WIN32
const std::string SEPARATOR = "\\";
const std::string ROOT = "C:\\";
#else
const std::string SEPARATOR = "/";
const std::string ROOT = "/";
#endif

std::string Utf8(const Path& path) {
    return host::ToUtf8(path.GetCStr());
}
Path Make(const std::string& utf8) {
    return Path(host::FromUtf8(utf8));
}
const std::string IN_FOLDER = ROOT + "scenes" + SEPARATOR + "shot.v1" + SEPARATOR + "frame.psd";

TEST(Path, StripToLeafKeepsWhatFollowsTheLastSeparator) {
    EXPECT_EQ(Utf8(Make(IN_FOLDER).StripToLeaf()), "frame.psd");
    EXPECT_EQ(Utf8(Make("frame.psd").StripToLeaf()), "frame.psd");
    EXPECT_EQ(Utf8(Make(ROOT + "scenes" + SEPARATOR).StripToLeaf()), "");
}

TEST(Path, RemoveLeafDropsTheLastSeparatorAndWhatFollows) {
    EXPECT_EQ(Utf8(Make(IN_FOLDER).RemoveLeaf()), ROOT + "scenes" + SEPARATOR + "shot.v1");
    EXPECT_EQ(Utf8(Make(ROOT + "scenes" + SEPARATOR).RemoveLeaf()), ROOT + "scenes");
    EXPECT_EQ(Utf8(Make("frame.psd").RemoveLeaf()), "");
}

TEST(Path, TheRootKeepsItsSeparator) {
    EXPECT_EQ(Utf8(Make(ROOT + "frame.psd").RemoveLeaf()), ROOT);
    EXPECT_EQ(Utf8(Make(ROOT).RemoveLeaf()), ROOT);
}

TEST(Path, ASeparatorIsAddedOnce) {
    EXPECT_EQ(Utf8(Make(ROOT + "scenes").AddTrailingBackslash().AddTrailingBackslash()),
              ROOT + "scenes" + SEPARATOR);
    EXPECT_EQ(Utf8(Make("").AddTrailingBackslash()), "");
}

TEST(Path, AppendPutsASeparatorBetween) {
    EXPECT_EQ(Utf8(Make(ROOT + "scenes").Append(_M("frame.psd"))),
              ROOT + "scenes" + SEPARATOR + "frame.psd");
    EXPECT_EQ(Utf8(Make(ROOT).Append(_M("frame.psd"))), ROOT + "frame.psd");
    EXPECT_EQ(Utf8(Make("").Append(_M("frame.psd"))), "frame.psd");
}

TEST(Path, ConvertToAbsoluteStartsAtTheCurrentFolderAndResolvesDots) {
    Path path = Make("a" + SEPARATOR + "." + SEPARATOR + "b" + SEPARATOR + ".." + SEPARATOR +
                     "\xc3\xa9.psd");
    ASSERT_TRUE(path.ConvertToAbsolute());
    const auto expected =
        std::filesystem::current_path() / "a" / host::ToNativePath(_M("\u00e9.psd"));
    EXPECT_EQ(MSTR(path.GetCStr()), host::FromNativePath(expected));
    ASSERT_TRUE(path.ConvertToAbsolute());
    EXPECT_EQ(MSTR(path.GetCStr()), host::FromNativePath(expected));
}

TEST(Path, WhatNamesNoFileIsLeftAsItWas) {
    const MCHAR lone[] = {_M('a'), 0xd83d, 0};
    Path surrogate(lone);
    EXPECT_FALSE(surrogate.ConvertToAbsolute());
    EXPECT_EQ(MSTR(surrogate.GetCStr()), MSTR(lone));
    Path empty;
    EXPECT_FALSE(empty.ConvertToAbsolute());
    EXPECT_TRUE(empty.IsEmpty());
#ifdef _WIN32
    EXPECT_FALSE(Make("a?.psd").ConvertToAbsolute());
    EXPECT_FALSE(Make("C:\\a:b").ConvertToAbsolute());
#else
    EXPECT_FALSE(Make(std::string(256, 'a')).ConvertToAbsolute());
    EXPECT_TRUE(Make(std::string(255, 'a')).ConvertToAbsolute());
    std::string deep;
    while (deep.size() < 4096) {
        deep += "folder/";
    }
    EXPECT_FALSE(Make(deep).ConvertToAbsolute());
#endif
}

TEST(Path, PathsAreComparedByName) {
    EXPECT_TRUE(Make(IN_FOLDER) == Make(IN_FOLDER));
    EXPECT_FALSE(Make(IN_FOLDER) == Make("frame.psd"));
#ifdef _WIN32
    EXPECT_TRUE(Make("C:\\A") == Make("c:\\a"));
#else
    EXPECT_FALSE(Make("/A") == Make("/a"));
#endif
}

struct Split {
    std::string folder;
    std::string base;
    std::string extension;
    bool operator==(const Split&) const = default;
};

Split SplitUtf8(const std::string& path) {
    MSTR folder;
    MSTR base;
    MSTR extension;
    SplitFilename(host::FromUtf8(path), &folder, &base, &extension);
    return {host::ToUtf8(folder), host::ToUtf8(base), host::ToUtf8(extension)};
}

TEST(SplitFilename, GivesFolderBaseAndExtension) {
    EXPECT_EQ(SplitUtf8(IN_FOLDER),
              (Split{ROOT + "scenes" + SEPARATOR + "shot.v1", "frame", ".psd"}));
    EXPECT_EQ(SplitUtf8("frame.v2.psd"), (Split{"", "frame.v2", ".psd"}));
    EXPECT_EQ(SplitUtf8(ROOT + "frame.psd"), (Split{ROOT, "frame", ".psd"}));
}

TEST(SplitFilename, WhatIsMissingIsEmpty) {
    EXPECT_EQ(SplitUtf8("frame"), (Split{"", "frame", ""}));
    EXPECT_EQ(SplitUtf8(".psd"), (Split{"", "", ".psd"}));
    EXPECT_EQ(SplitUtf8("shot.v1" + SEPARATOR + "frame"), (Split{"shot.v1", "frame", ""}));
    EXPECT_EQ(SplitUtf8(""), (Split{"", "", ""}));
}

TEST(SplitFilename, NullPartsAreLeftOut) {
    MSTR extension;
    SplitFilename(host::FromUtf8(IN_FOLDER), nullptr, nullptr, &extension);
    EXPECT_EQ(extension, MSTR(_M(".psd")));
    SplitFilename(host::FromUtf8(IN_FOLDER), nullptr, nullptr, nullptr);
}

}  // namespace
