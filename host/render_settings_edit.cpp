#include "host/render_settings_edit.h"

#include <notify.h>

#include "host/application.h"

namespace host {

void EditRenderSettings(const std::function<void(RenderSettings& settings)>& change) {
    change(App().settings.render);
    Broadcast(NOTIFY_RENDPARAM_CHANGED);
}

}  // namespace host
