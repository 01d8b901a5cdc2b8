// An effect over a scene with a few objects, the user's selection among them, and the list of those
// that become mattes.
#pragma once

#include <iterator>
#include <string>
#include <vector>

#include "tests/effect/effect_fixture.h"

class ObjectListTest : public EffectTest {
  protected:
    static host::Node& Add(const std::string& name) {
        return Host().scene.AddNode(host::FromUtf8(name));
    }
    static std::vector<host::Node*> AddAll(const std::vector<std::string>& names) {
        std::vector<host::Node*> nodes;
        for (const std::string& name : names)
            nodes.push_back(&Add(name));
        return nodes;
    }
    IParamBlock2& Block() { return *effect->pblock; }
    void List(const std::vector<host::Node*>& nodes) {
        for (host::Node* node : nodes) {
            ReferenceTarget* target = node;
            Block().Append("objectList"_param, 1, &target);
        }
    }
    // The names in the list; "-" for an object that is gone.
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int i = 0; i < Block().Count("objectList"_param); ++i) {
            INode* node = Block().GetINode("objectList"_param, 0, i);
            names.push_back(node ? host::ToUtf8(node->GetName()) : "-");
        }
        return names;
    }
    static std::string UndoName() { return host::ToUtf8(Host().undo.UndoName()); }
};
