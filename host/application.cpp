#include "host/application.h"

#include <memory>

#include "host/gamma.h"
#include "host/temporary_folder.h"

namespace host {
namespace {

// What is left of a render can still ask the application while it goes, so it goes first.
class Holder {
  public:
    ~Holder() { Empty(); }
    Application& Get() { return *application_; }
    void Renew() {
        Empty();
        application_ = std::make_unique<Application>();
    }

  private:
    void Empty() {
        application_->undo.Clear();
        application_->effects.clear();
        application_->renderer.reset();
        for (RenderElementManager& elements : application_->elements) {
            elements.Clear();
        }
        application_->scene.Clear();
    }

    std::unique_ptr<Application> application_ = std::make_unique<Application>();
};

Holder& TheHolder() {
    static Holder holder;
    return holder;
}

}  // namespace

Application::Application() {
    scripts.Set("maxops.rendUseIterative",
                [this] { return ScriptInt(settings.render.iterative ? 1 : 0); });
}

Application& App() {
    return TheHolder().Get();
}

void ResetApplication() {
    TheHolder().Renew();
    gammaMgr = DefaultGamma();
    UseTemporaryFolder({});
}

}  // namespace host
