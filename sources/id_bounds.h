// Where in the frame each ID of the G-Buffer lies. Process-wide and unprotected: made anew for each
// document before its sources are, and only read while it is written.
#pragma once

#include <box2.h>

#include <cstdint>
#include <map>

namespace sources {

// Pixels, both ends included. An ID without fragments has no entry.
using IDBounds = std::map<std::uint16_t, Box2>;

extern IDBounds nodeRenderIDBounds;
extern IDBounds mtlIDBounds;
extern IDBounds nodeIDBounds;

}  // namespace sources
