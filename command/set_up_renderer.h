// The renderer that made the frames, as effects meet it in the application.
#pragma once

#include <plugapi.h>

#include "command/render_file.h"

namespace command {

// The class that effects know the file's renderer by; Class_ID() for one that they don't know.
Class_ID RendererClassOf(const Description& file);

// The application's from now on; Class_ID() for none. V-Ray keeps the frame in its own frame
// buffer, of the frame's size, and gives it to the application as well.
void SetUpRenderer(Class_ID id);

}  // namespace command
