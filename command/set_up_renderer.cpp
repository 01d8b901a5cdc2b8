#include "command/set_up_renderer.h"

#include <iparamb2.h>
#include <rendererclasses.h>

#include "command/pass_names.h"
#include "host/application.h"
#include "host/host_renderer.h"

namespace command {

Class_ID RendererClassOf(const Description& file) {
    return RendererOf(file) == Renderer::VRay ? VRAY_CLASS_ID : Class_ID();
}

void SetUpRenderer(Class_ID id) {
    host::Application& app = host::App();
    app.renderer.reset();
    if (id == Class_ID()) return;
    auto* renderer = new host::HostRenderer(id);
    app.renderer.reset(renderer);
    if (id != VRAY_CLASS_ID) return;
    renderer->GetParamBlock(host::VRAY_BLOCK)->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, TRUE);
    app.settings.render.saveFile = TRUE;
}

}  // namespace command
