#include "effect/id_groups.h"

#include <iparamb2.h>

#include <boost/make_shared.hpp>

#include "effect/id_list.h"
#include "effect/matte_layer.h"
#include "effect/text.h"
#include "plugin/parameters.h"
#include "sources/id_bounds.h"
#include "sources/single_id_channels.h"

namespace effect {
namespace {

using Channel = psdfile::PSDChannelImageDataSourcePtr;

struct IDGroup {
    MatteGroupSettings settings;
    ParamID list;
    // The ID follows.
    const MCHAR* layerName;
    const sources::IDBounds& bounds;
    Channel (*matte)(Bitmap* bitmap, std::uint16_t id, int component, bool premultiplied);
};

template <class Source>
Channel Make(Bitmap* bitmap, std::uint16_t id, int component, bool premultiplied) {
    return boost::make_shared<Source>(bitmap, id, component, premultiplied);
}

MSTR NameOf(const IDGroup& group, int id, const MCHAR* given) {
    return *given ? MSTR(given) : group.layerName + NumberText(id);
}

bool HasPixels(const IDGroup& group, int id) {
    if (id > highestID) return false;
    const auto found = group.bounds.find(static_cast<std::uint16_t>(id));
    return found != group.bounds.end() && !found->second.IsEmpty();
}

void AddGroup(psdbuilder::PSDBuilder& builder, const Frame& frame, const IDGroup& group) {
    Tab<int> ids;
    NameTab names;
    // As far as the list can be understood.
    ParseIDList(frame.pblock.GetStr(group.list), ids, names);
    MatteGroup mattes(builder, frame, group.settings);
    if (!mattes.HasItsChannels()) return;
    for (int i = 0; i < ids.Count(); ++i) {
        const int id = ids[i];
        if (mattes.LeavesOutEmpty() && !HasPixels(group, id)) continue;
        mattes.Add(LayerName(NameOf(group, id, names[i])), [&](int component, bool premultiplied) {
            if (id > highestID) return frame.blackSource;
            return group.matte(frame.sources.bitmap, static_cast<std::uint16_t>(id), component,
                               premultiplied);
        });
    }
}

}  // namespace

void AddObjectIDGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    AddGroup(builder, frame,
             {{.ownLayerSet = "outputNodeIDsLayerSet"_param,
               .outputAs = "outputNodeIDsAs"_param,
               .layerSetName = "nodeIdsLayerSetName"_param,
               .defaultLayerSetName = _M("Object IDs"),
               .channels = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID},
              "nodeIDList"_param,
              _M("Object ID: "),
              sources::nodeIDBounds,
              Make<sources::SpecificNodeIDToPSDChannel>});
}

void AddMaterialIDGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    AddGroup(builder, frame,
             {{.ownLayerSet = "outputMtlIDsLayerSet"_param,
               .outputAs = "outputMtlIDsAs"_param,
               .layerSetName = "mtlIDsLayerSetName"_param,
               .defaultLayerSetName = _M("Material IDs"),
               .channels = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_MTL_ID},
              "mtlIDList"_param,
              _M("Material ID: "),
              sources::mtlIDBounds,
              Make<sources::SpecificMtlIDToPSDChannel>});
}

}  // namespace effect
