#include "host/element_class_names.h"

#include <elementclasses.h>
#include <gtest/gtest.h>
#include <vrayelements.h>

#include <algorithm>
#include <set>

namespace host {
namespace {

TEST(ElementClassNames, NamePassesAndElementsOfBothMakers) {
    EXPECT_EQ(ElementClassOf("DiffuseDirect"), PassClassID(PassKind::DiffuseDirect));
    EXPECT_EQ(ElementClassOf("SampleCount"), PassClassID(PassKind::SampleCount));
    EXPECT_EQ(ElementClassOf("Shadow Element"), SHADOW_ELEMENT);
    EXPECT_EQ(ElementClassOf("VRayAlpha"), VRAY_ALPHA_ELEMENT);
    EXPECT_EQ(ElementClassOf("MultiMatteElement"), VRAY_MULTI_MATTE_ELEMENT);
}

TEST(ElementClassNames, OtherNamesAreNoClasses) {
    EXPECT_EQ(ElementClassOf(""), std::nullopt);
    EXPECT_EQ(ElementClassOf("diffusedirect"), std::nullopt);
}

TEST(ElementClassNames, AClassTellsItsName) {
    EXPECT_EQ(ElementClassName(SHADOW_ELEMENT), "Shadow Element");
    EXPECT_EQ(ElementClassName(Class_ID(1, 2)), "");
    for (const std::string& name : ElementClassNames())
        EXPECT_EQ(ElementClassOf(ElementClassName(*ElementClassOf(name))), ElementClassOf(name));
}

TEST(ElementClassNames, NoNameStandsTwiceAndNoPassIsLeftOut) {
    const auto names = ElementClassNames();
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    for (DWORD kind = 1; kind <= static_cast<DWORD>(PassKind::SampleCount); ++kind) {
        const Class_ID id = PassClassID(static_cast<PassKind>(kind));
        const auto isIt = [&](const std::string& name) { return ElementClassOf(name) == id; };
        EXPECT_EQ(std::count_if(names.begin(), names.end(), isIt), 1) << kind;
    }
}

}  // namespace
}  // namespace host
