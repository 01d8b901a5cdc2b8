// What a node of the scene shows.
#pragma once

#include "ref.h"

constexpr SClass_ID GEOMOBJECT_CLASS_ID = 0x10;
constexpr SClass_ID CAMERA_CLASS_ID = 0x20;
constexpr SClass_ID LIGHT_CLASS_ID = 0x30;
constexpr SClass_ID HELPER_CLASS_ID = 0x50;

// First part of the class id of a point helper; the second is 0.
constexpr DWORD POINTHELP_CLASS_ID = 0x2011;
// Of what a camera or a light is aimed at, a GEOMOBJECT_CLASS_ID.
constexpr DWORD TARGET_CLASS_ID = 0x1020;

class Object : public ReferenceTarget {};

struct ObjectState {
    // Owned by the node; null for the root of the scene.
    Object* obj = nullptr;
};
