#include "effect/layer_name.h"

#include <gtest/gtest.h>

namespace {

TEST(LayerName, HasBothForms) {
    const effect::LayerName name(_M("Glanz 漢"));
    EXPECT_STREQ(name.Ansi(), "Glanz ?");
    EXPECT_EQ(std::u16string(name.Wide()), u"Glanz 漢");
}

TEST(LayerName, IsTheGivenOneOrElseTheDefault) {
    EXPECT_STREQ(effect::NameOr(_M("Given"), _M("Default")).Ansi(), "Given");
    EXPECT_STREQ(effect::NameOr(_M(""), _M("Default")).Ansi(), "Default");
    EXPECT_STREQ(effect::NameOr(nullptr, _M("Default")).Ansi(), "Default");
    EXPECT_STREQ(effect::NameOr(_M(" "), _M("Default")).Ansi(), " ");
}

}  // namespace
