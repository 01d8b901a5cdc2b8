#include "command/apply_parameters.h"

#include <iparamb2.h>

namespace command {
namespace {

bool ApplyNodeTable(const NodeTable& table, const std::vector<host::Node*>& nodes,
                    IParamBlock2& block) {
    block.SetCount(table.row->id, 0);
    for (const std::size_t place : table.nodes) {
        ReferenceTarget* node = nodes[place];
        if (block.Append(table.row->id, 1, &node) < 0) return false;
    }
    return true;
}

}  // namespace

bool ApplyParameters(const SceneDescription& description, const std::vector<host::Node*>& nodes,
                     IParamBlock2& block) {
    bool all = true;
    for (const Setting& setting : description.parameters)
        all &= Apply(setting, block);
    for (const NodeTable& table : description.nodeTables)
        all &= ApplyNodeTable(table, nodes, block);
    return all;
}

}  // namespace command
