// What the library offers: the four entry points that the host calls, and for a host of our own
// that has the library linked in how to attach it, the tables of parameters, the list of render
// elements, the choice of the deflate implementation, and the reader of colour tables.
#pragma once

#include <plugapi.h>
#include <zlib.h>

#include <span>

#include "plugin/parameters.h"
#include "psdfile/cube_lut.h"

class Effect;

// Exported by the Windows library under just these names (veltrane.def).
extern "C" {

// Null before the library is attached. Valid until the next text is read from the string table.
const MCHAR* LibDescription();
int LibNumberClasses();
// Null for a number that is no class.
ClassDesc* LibClassDesc(int number);
// The host's version word that the library was made for.
ULONG LibVersion();

}  // extern "C"

namespace plugin {

// Does for a program that has the library linked in what the system does for one that loads it: the
// library's texts can be read from then on. Once a process; further calls do nothing.
void Attach();

std::span<const parameters::Row> EffectParameters();
// Those of one render element in the effect.
std::span<const parameters::Row> LayerParameters();

// Brings the effect's list of render elements (`layersProduction`) up to date with the host's, as
// opening its panel does. `effect` is of the class LibClassDesc(0).
void SyncRenderElements(Effect& effect);

// Puts other functions of zlib's signatures behind every ZIP-compressed channel from now on. Their
// output must be one zlib stream of the window that deflateInit2_ was asked for. No pointer may be
// null.
void UseDeflate(int (*deflateInit2)(z_streamp stream, int level, int method, int windowBits,
                                    int memLevel, int strategy, const char* version,
                                    int streamSize),
                int (*deflate)(z_streamp stream, int flush), int (*deflateEnd)(z_streamp stream));

// What a host's looks are read with, so that host and effect take the same .cube files.
using psdfile::CubeLUT;

}  // namespace plugin
