#include "effect/object_groups.h"

#include <INamedSelectionSetManager.h>
#include <ilayermanager.h>
#include <iparamb2.h>
#include <maxapi.h>

#include <boost/make_shared.hpp>

#include "effect/matte_layer.h"
#include "effect/scene_layer_choice.h"
#include "effect/selection_set_list.h"
#include "plugin/parameters.h"
#include "sources/fragment_weight.h"
#include "sources/id_bounds.h"
#include "sources/node_render_ids.h"
#include "sources/node_set_channels.h"

namespace effect {
namespace {

bool RendersHidden() {
    return GetCOREInterface()->GetRendHidden() != FALSE;
}

bool HasPixels(USHORT renderID) {
    const auto found = sources::nodeRenderIDBounds.find(renderID);
    return renderID != sources::noRenderID && found != sources::nodeRenderIDBounds.end() &&
           !found->second.IsEmpty();
}

// Of a group, its head's own pixels count too.
bool HasPixels(INode& node) {
    sources::RenderIDSet ids;
    sources::AddRenderIDs(&node, ids);
    bool found = HasPixels(node.GetRenderID());
    ids.ForEach([&found](USHORT id) { found = found || HasPixels(id); });
    return found;
}

// A matte of many objects, which `Source` finds by `identity`.
template <class Source, class Identity>
void AddMatte(MatteGroup& mattes, const Frame& frame, const MCHAR* name, Identity identity) {
    Bitmap* bitmap = frame.sources.bitmap;
    if (mattes.LeavesOutEmpty()) {
        Source coverage(bitmap, identity, coverageComponent, mattes.Premultiplied());
        coverage.ComputeBounds();
        if (coverage.Bounds().IsEmpty()) return;
    }
    mattes.Add(LayerName(name), [=](int component, bool premultiplied) {
        return boost::make_shared<Source>(bitmap, identity, component, premultiplied);
    });
}

}  // namespace

void AddObjectsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    MatteGroup mattes(builder, frame,
                      {.ownLayerSet = "outputObjectsLayerSet"_param,
                       .outputAs = "outputObjectsAs"_param,
                       .layerSetName = "objectsLayerSetName"_param,
                       .defaultLayerSetName = _M("Objects"),
                       .channels = BMM_CHAN_NODE_RENDER_ID});
    if (!mattes.HasItsChannels()) return;
    const int count = frame.pblock.Count("objectList"_param);
    for (int i = 0; i < count; ++i) {
        INode* node = frame.pblock.GetINode("objectList"_param, 0, i);
        if (node && node->IsNodeHidden() && !RendersHidden()) continue;
        if (mattes.LeavesOutEmpty() && !(node && HasPixels(*node))) continue;
        mattes.Add(LayerName(node ? node->GetName() : _M("???")),
                   [&](int component, bool premultiplied) {
                       return boost::make_shared<sources::SpecificNodeRenderIDToPSDChannel>(
                           frame.sources.bitmap, node, component, premultiplied);
                   });
    }
}

void AddSceneLayersGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    MatteGroup mattes(builder, frame,
                      {.ownLayerSet = "outputSceneLayersLayerGroup"_param,
                       .outputAs = "outputSceneLayersAs"_param,
                       .layerSetName = "sceneLayersLayerSetName"_param,
                       .defaultLayerSetName = _M("Scene Layers"),
                       .channels = BMM_CHAN_NODE_RENDER_ID});
    ILayerManager* manager = GetCOREInterface()->GetLayerManager();
    if (!mattes.HasItsChannels() || !manager) return;
    const auto chunkID = static_cast<DWORD>(frame.pblock.GetInt("sceneLayerAppDataChunkId"_param));
    const int count = manager->GetLayerCount();
    for (int i = 0; i < count; ++i) {
        ILayer* layer = manager->GetLayer(i);
        if (!layer || !IsSceneLayerOn(layer, chunkID)) continue;
        constexpr bool checkParents = true;
        if (layer->IsHidden(checkParents) && !RendersHidden()) continue;
        // The host's name of the layer that is always there.
        const MSTR name = layer->GetName();
        const bool isDefault = name == MSTR(_M("0"));
        auto* contents =
            static_cast<ILayerProperties*>(layer->GetInterface(LAYERPROPERTIES_INTERFACE));
        AddMatte<sources::MaxLayerToPSDChannel>(mattes, frame, isDefault ? _M("Default") : name,
                                                contents);
    }
}

void AddSelectionSetsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    MatteGroup mattes(builder, frame,
                      {.ownLayerSet = "createNamedSelectionSetsLayerSet"_param,
                       .outputAs = "outputNamedSelectionSetsAs"_param,
                       .layerSetName = "namedSelectionSetsLayerSetName"_param,
                       .defaultLayerSetName = _M("Selection Sets"),
                       .channels = BMM_CHAN_NODE_RENDER_ID});
    INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance();
    if (!mattes.HasItsChannels() || !sets) return;
    const SetNames listed = ListedSelectionSets(frame.pblock);
    const int count = sets->GetNumNamedSelSets();
    for (int i = 0; i < count; ++i) {
        MSTR name;
        if (!sets->GetNamedSelSetName(i, name) || !IsSelectionSetOn(listed, name)) continue;
        AddMatte<sources::NamedSelectionSetToPSDChannel>(mattes, frame, name, i);
    }
}

}  // namespace effect
