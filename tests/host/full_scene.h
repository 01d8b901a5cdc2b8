// A description of a scene with everything in it that a file can hold, as the application would
// give it: handles count up in the order of the lists.
#pragma once

#include <limits>

#include <maxapi.h>
#include <rendererclasses.h>
#include <vrayelements.h>

#include "host/scene_description.h"
#include "tests/host/referring_effect.h"
#include "tests/host/saved_sample.h"

// The classes are those of SavedSampleDesc and ReferringEffectDesc.
inline host::SceneDescription FullScene() {
    using namespace host;
    SceneDescription scene;
    SceneNode camera;
    camera.handle = 1;
    camera.name = "Kamera \xc3\xbc";
    camera.id = 65533;
    camera.kind = NodeKind::Camera;
    camera.transform = {1, 0.1F,   0,   -0.0, 0, 0, -1, -8, 3.4028234663852886e38,
                        1, 1e-45F, 1.5, 0,    0, 0, 1};
    camera.view = CameraLens{54.4, 0.0, 0.1, 60.0};
    SceneNode head;
    head.handle = 2;
    head.name = "Same";
    head.groupHead = true;
    head.appData = {{Class_ID(1, 2), 3, 4, {0, 255, 16}}, {Class_ID(1, 2), 3, 5, {}}};
    SceneNode member;
    member.handle = 3;
    member.name = "Same";
    member.id = 0;
    member.kind = NodeKind::Light;
    member.objectID = 65535;
    member.hidden = true;
    member.parent = 1;
    member.groupMember = true;
    member.properties = "a = 1\n\"b\"\t=\xed\xa0\x80";
    member.transform = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    SceneNode helper;
    helper.handle = 4;
    helper.name = "";
    helper.kind = NodeKind::PointHelper;
    SceneNode plan;
    plan.handle = 5;
    plan.name = "Plan\n\x7f";
    plan.kind = NodeKind::Camera;
    plan.view = CameraLens{0.0, 12.5, 0.0, 0.0};
    plan.parent = 1;
    head.children = {4, 2};
    scene.nodes = {camera, head, member, helper, plan};

    SceneLayerDescription top{6, "Layer", true, std::nullopt, {2, 1}, {}};
    top.appData = {{Class_ID(0x70068609, 0x1d5d297), 4240, 4294967295, {0, 0, 0, 0}}};
    const SceneLayerDescription inner{7, "Layer", false, 0, {}, {}};
    const SceneLayerDescription innermost{8, "\xed\xb0\x80", false, 1, {3}, {}};
    const SceneLayerDescription second{9, "Second", false, std::nullopt, {}, {}};
    scene.layers = {top, inner, innermost, second};
    scene.selectionSets = {{"", {}}, {"Set, with a comma", {4, 0, 2}}};

    SceneElement mattes;
    mattes.handle = 10;
    mattes.name = "id";
    mattes.elementClass = VRAY_MULTI_MATTE_ELEMENT;
    mattes.multiMatte.emplace();
    (*mattes.multiMatte)[0].id = 65535;
    (*mattes.multiMatte)[0].isMaterial = true;
    (*mattes.multiMatte)[2].nodes = {2, 0};
    (*mattes.multiMatte)[2].include = false;
    SceneElement unknown;
    unknown.handle = 11;
    unknown.name = "Reflections";
    unknown.elementClass = Class_ID(4294967295, 0);
    unknown.enabled = false;
    unknown.appData = {{Class_ID(5, 6), 7, 8, {9}}};
    mattes.parameters = {{-5, 7}, {9, 0}};
    SceneElement draft = unknown;
    draft.handle = 12;
    draft.enabled = true;
    draft.draft = true;
    draft.appData.clear();
    scene.elements = {mattes, unknown, draft};
    scene.render = {true, 0, 4800, 300'000, 1, "C:\\out\\\xc3\xbc.exr", true, {}, {}, {}, {}, {}};
    scene.render.timeType = REND_TIMEPICKUP;
    scene.render.numberBase = -2147483647 - 1;
    scene.render.effects = false;
    scene.render.draft = true;
    // All that V-Ray's block has.
    scene.render.renderer = SceneRenderer{
        VRAY_CLASS_ID, {{170, 1}, {171, 1920}, {172, 1080}, {189, 0}, {228, 0}, {280, 1}}, 3};

    // In the order of the block's descriptor.
    using Limits = std::numeric_limits<float>;
    SavedObject object = SavedSampleObject(13);
    object.chunks = {{0x20, {0, 127, 255}, {}}};
    object.appData = {{Class_ID(1, 1), 1, 1, {1}}};
    SampleBlockOf(object).parameters = {
        {SAMPLE_INT, TYPE_INT, {-2147483647 - 1}},
        {SAMPLE_RANGED_INT, TYPE_INT, {10}},
        {SAMPLE_BOOL, TYPE_BOOL, {0}},
        {SAMPLE_FLOAT, TYPE_FLOAT, {-Limits::infinity()}},
        {SAMPLE_RANGED_FLOAT, TYPE_FLOAT, {72.1F}},
        {SAMPLE_FRACTION, TYPE_PCNT_FRAC, {Limits::max()}},
        {SAMPLE_STRING, TYPE_STRING, {MSTR(_M("text \xdfff\n"))}},
        {SAMPLE_FILENAME, TYPE_FILENAME, {MSTR(_M(""))}},
        {SAMPLE_NODE, TYPE_INODE, {SavedReference{3}}},
        {SAMPLE_TARGET, TYPE_REFTARG, {SavedReference{10}}},
        {SAMPLE_TARGETS, TYPE_REFTARG_TAB, {SavedReference{7}, SavedReference{}}},
        {SAMPLE_NODES, TYPE_INODE_TAB, {SavedReference{5}, SavedReference{1}}},
        {SAMPLE_STRINGS, TYPE_STRING_TAB, {}},
        {SAMPLE_FIXED_STRINGS, TYPE_STRING_TAB, {MSTR(_M("a")), MSTR(_M("b"))}},
    };
    object.references[1] = SavedReference{12};
    SavedObject effect;
    effect.handle = 14;
    effect.superClass = RENDER_EFFECT_CLASS_ID;
    effect.classID = Class_ID(21, 22);
    effect.references = {SavedReference{13}};
    SavedObject off = effect;
    off.handle = 15;
    off.chunks = {{0x100, {}, {}}};
    off.references = {SavedReference{}};
    scene.objects = {object, effect, off};
    scene.effects = {14, 15};
    return scene;
}
