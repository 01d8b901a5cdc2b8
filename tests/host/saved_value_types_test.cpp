#include "host/saved_value_types.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(SavedValueTypes, HaveNamesByWhichTheyAreFound) {
    for (const ParamType2 type : {TYPE_FLOAT, TYPE_INT, TYPE_BOOL, TYPE_PCNT_FRAC, TYPE_STRING,
                                  TYPE_FILENAME, TYPE_INODE, TYPE_REFTARG}) {
        EXPECT_EQ(ParameterTypeNamed(NameOfParameterType(type)), type);
    }
    EXPECT_EQ(NameOfParameterType(TYPE_BOOL), "bool");
    EXPECT_EQ(NameOfParameterType(TYPE_INODE_TAB), "node");
    EXPECT_EQ(ParameterTypeNames(), "float, int, bool, fraction, text, file, node, target");
}

TEST(SavedValueTypes, OthersHaveNone) {
    EXPECT_EQ(NameOfParameterType(TYPE_VOID), "");
    EXPECT_EQ(ParameterTypeNamed(""), std::nullopt);
    EXPECT_EQ(ParameterTypeNamed("Bool"), std::nullopt);
}

}  // namespace
}  // namespace host
