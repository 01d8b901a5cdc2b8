// Edits of the render's settings, as the user makes them in the host's dialog.
#pragma once

#include <functional>

#include "host/settings.h"

namespace host {

// NOTIFY_RENDPARAM_CHANGED comes after the change. Can't be undone.
void EditRenderSettings(const std::function<void(RenderSettings& settings)>& change);

}  // namespace host
