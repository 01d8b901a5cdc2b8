#include "effect/multi_matte.h"

#include <elementclasses.h>
#include <vrayelements.h>

#include <optional>

#include "tests/effect/element_frame.h"

namespace {

class SplitMultiMatte : public ElementFrameTest {
  protected:
    static std::optional<std::string> Name(host::RenderElement& element, int component) {
        MSTR name = element.ElementName();
        if (effect::SplitMultiMatte(element, name, component)) return host::ToUtf8(name);
        EXPECT_EQ(name, MSTR(element.ElementName())) << "a component without a layer";
        return {};
    }
    host::RenderElement& Add(Class_ID id, const std::string& name) {
        return Elements().Add(id, host::FromUtf8(name));
    }
    static MultiMatteComponent ObjectID(int id) { return {.idOn = true, .id = id, .nodes = {}}; }
    static MultiMatteComponent MaterialID(int id) {
        return {.idOn = true, .id = id, .isMaterial = true, .nodes = {}};
    }
    MultiMatteComponent Nodes(const std::vector<std::string>& names) {
        MultiMatteComponent component;
        for (const std::string& name : names) {
            INode* node = &Host().scene.AddNode(host::FromUtf8(name));
            component.nodes.Append(1, &node);
        }
        return component;
    }
    // The name of component 0.
    std::string NameOf(const MultiMatteComponent& component, Class_ID id = VRAY_MULTI_MATTE_ELEMENT,
                       const std::string& elementName = "MultiMatteElement") {
        host::RenderElement& element = Add(id, elementName);
        element.SetMultiMatte(0, component);
        return Name(element, 0).value_or("(none)");
    }
};

TEST_F(SplitMultiMatte, NamesTheComponentsOfOtherElements) {
    host::RenderElement& element = Add(SPECULAR_ELEMENT, "Specular");
    EXPECT_EQ(Name(element, 0), "Specular R");
    EXPECT_EQ(Name(element, 1), "Specular G");
    EXPECT_EQ(Name(element, 2), "Specular B");
}

TEST_F(SplitMultiMatte, OfAMatteThatTellsNothingNamesTheComponents) {
    EXPECT_EQ(Name(Add(VRAY_MULTI_MATTE_ELEMENT, "Mattes"), 1), "Mattes G");
}

TEST_F(SplitMultiMatte, NamesAMatteByItsID) {
    EXPECT_EQ(NameOf(ObjectID(3)), "Matte Object ID: 3");
    EXPECT_EQ(NameOf(MaterialID(-12)), "Matte Material ID: -12");
    EXPECT_EQ(NameOf(ObjectID(3), VRAY_MULTI_MATTE_ELEMENT, "Chairs"), "Chairs Object ID: 3");
}

TEST_F(SplitMultiMatte, NamesAMatteByItsNodes) {
    EXPECT_EQ(NameOf(Nodes({"b"})), "Matte b");
    EXPECT_EQ(NameOf(Nodes({"c", "a", "b"})), "Matte a, b, c");
    EXPECT_EQ(NameOf(Nodes({"d", "c", "a", "b"})), "Matte a, b, c...");
    MultiMatteComponent allBut = Nodes({"b", "a"});
    allBut.include = false;
    EXPECT_EQ(NameOf(allBut), "Matte All but a, b");
    allBut.idOn = true;
    allBut.id = 7;
    EXPECT_EQ(NameOf(allBut), "Matte Object ID: 7 + All but a, b");
}

TEST_F(SplitMultiMatte, OfNothingHasNoLayer) {
    EXPECT_EQ(NameOf({}), "(none)");
    MultiMatteComponent idOff;
    idOff.id = 5;
    EXPECT_EQ(NameOf(idOff), "(none)");
    MultiMatteComponent all;
    all.include = false;
    EXPECT_EQ(NameOf(all), "Matte") << "all but nothing is everything";
}

TEST_F(SplitMultiMatte, HasOneLayerForEqualComponents) {
    host::RenderElement& element = Add(VRAY_MULTI_MATTE_ELEMENT, "MultiMatteElement");
    const MultiMatteComponent nodes = Nodes({"a", "b"});
    MultiMatteComponent otherOrder;
    for (int i : {1, 0})
        otherOrder.nodes.Append(1, &nodes.nodes[i]);
    // The id is off and has no meaning.
    otherOrder.id = 9;
    otherOrder.isMaterial = true;
    element.SetMultiMatte(0, nodes);
    element.SetMultiMatte(1, otherOrder);
    element.SetMultiMatte(2, nodes);
    EXPECT_EQ(Name(element, 0), "Matte a, b");
    EXPECT_EQ(Name(element, 1), std::nullopt);
    EXPECT_EQ(Name(element, 2), std::nullopt);
}

TEST_F(SplitMultiMatte, ComparesWithTheComponentsBefore) {
    host::RenderElement& element = Add(VRAY_MULTI_MATTE_ELEMENT, "MultiMatteElement");
    element.SetMultiMatte(0, ObjectID(1));
    element.SetMultiMatte(1, MaterialID(1));
    element.SetMultiMatte(2, MaterialID(1));
    EXPECT_EQ(Name(element, 0), "Matte Object ID: 1");
    EXPECT_EQ(Name(element, 1), "Matte Material ID: 1");
    EXPECT_EQ(Name(element, 2), std::nullopt);
    element.SetMultiMatte(2, ObjectID(2));
    EXPECT_EQ(Name(element, 2), "Matte Object ID: 2");
    element.SetMultiMatte(0, ObjectID(2));
    EXPECT_EQ(Name(element, 0), "Matte Object ID: 2") << "the lower component has the layer";
    EXPECT_EQ(Name(element, 2), std::nullopt);
}

TEST_F(SplitMultiMatte, CutsLongNames) {
    const std::string longest(255 - std::string(" Object ID: 3").size(), 'x');
    EXPECT_EQ(NameOf(ObjectID(3), VRAY_MULTI_MATTE_ELEMENT, longest), longest + " Object ID: 3");
    const std::string name = longest + "y Object ID: 3";
    EXPECT_EQ(NameOf(ObjectID(3), VRAY_MULTI_MATTE_ELEMENT, longest + "y"),
              name.substr(0, 252) + "...");
    const std::string cut = NameOf(Nodes({std::string(300, 'n')}));
    EXPECT_EQ(cut, "Matte " + std::string(246, 'n') + "...");
    EXPECT_EQ(cut.size(), 255U);
}

TEST_F(SplitMultiMatte, NamesTheOtherRenderersMask) {
    const auto name = [this](const MultiMatteComponent& component) {
        return NameOf(component, CORONA_MASK_ELEMENT, "CMasking_Mask");
    };
    EXPECT_EQ(name(ObjectID(3)), "Mask Object ID: 3");
    EXPECT_EQ(name(MaterialID(4)), "Mask Material ID 4");
    MultiMatteComponent allBut = Nodes({"a"});
    allBut.include = false;
    EXPECT_EQ(name(allBut), "Mask All but a");
    EXPECT_EQ(name({}), "(none)");
    EXPECT_EQ(NameOf(ObjectID(3), CORONA_MASK_ELEMENT, "MultiMatteElement"),
              "MultiMatteElement Object ID: 3");
}

TEST_F(SplitMultiMatte, ForgetsNodesThatAreDeleted) {
    host::RenderElement& element = Add(VRAY_MULTI_MATTE_ELEMENT, "MultiMatteElement");
    host::Node& node = Host().scene.AddNode(_M("a"));
    MultiMatteComponent component;
    INode* entries[] = {&node, nullptr};
    component.nodes.Append(2, entries);
    element.SetMultiMatte(0, component);
    EXPECT_EQ(Name(element, 0), "Matte a");
    node.DeleteThis();
    EXPECT_EQ(Name(element, 0), std::nullopt);
}

}  // namespace
