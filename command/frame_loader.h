// Puts a render file's frame behind the host's interfaces: the picture, the render elements, the
// fragments, and V-Ray's frame buffer where the renderer has one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "command/arguments.h"
#include "command/flat_reading.h"
#include "command/frame_elements.h"
#include "command/frame_view.h"
#include "command/id_lists.h"
#include "command/identities.h"
#include "command/passes.h"
#include "command/render_file.h"
#include "command/scene_file.h"
#include "command/session.h"
#include "host/image_bitmap.h"
#include "host/vray_frame_buffer.h"

namespace command {

class FrameLoader {
  public:
    using Warn = std::function<void(const std::string& text)>;

    // All outlive the loader; `scene` may be null. Throws UsageError for settings of elements.
    FrameLoader(const SaveArguments& arguments, Session& session, const SceneDescription* scene,
                Warn warn);
    ~FrameLoader();
    FrameLoader(const FrameLoader&) = delete;
    FrameLoader& operator=(const FrameLoader&) = delete;

    // Before Apply: sets the host's elements, nodes and render size, the parameters that --all
    // turns on, and the lists of objects and IDs. Only what the document uses is decoded, in one
    // pass over the file. Throws InputError; then the host has no pixels of the frame.
    host::Owned<host::ImageBitmap> Load(const std::string& path);

  private:
    struct Frame;

    host::Owned<host::ImageBitmap> Read(const std::string& path);
    void WarnOfLeftOut(const Frame& frame, std::size_t leftOut, const std::string& what, int room);
    void WarnOnce(const std::string& text);
    void WarnOfNumbers(const Frame& frame);
    void TellWarnings(const Frame& frame);
    void WarnOfNotFinite(const Frame& frame, std::uint64_t count);
    void ReleaseFrame();

    bool SharesAlpha(const PassPlan& plan) const;
    DWORD ChannelsToKeep(const Frame& frame) const;
    void SetIdentities(const Frame& frame);
    bool UsesMaterialNumbers(const PassPlan& plan) const;
    FragmentOptions OptionsOfFragments(const PassPlan& plan);
    FragmentSources SourcesOf(const Frame& frame, std::size_t picture) const;
    std::optional<CameraAxes> Camera() const;

    static PassChannels ChannelsOf(const Frame& frame);
    void ReadFlat(Frame& frame);
    void AddElementImages(Frame& frame, FlatReading& reading) const;
    static void TakeElementImages(Frame& frame, FlatReading& reading);
    void ReadDeep(Frame& frame);
    void TakePicture(Frame& frame, Picture picture);
    void Finish(Frame& frame, std::unique_ptr<host::FragmentBuffer> fragments);
    void FillVRay(Frame& frame);
    void SetLists();

    const SaveArguments& arguments;
    Session& session;
    Warn warn;
    const SceneDescription* scene;
    // Null with other renderers.
    std::shared_ptr<host::VRayFrameBuffer> vray;
    FrameElements elements;
    FrameView view;
    Identities identities;
    // What pixels had in files that tell numbers.
    NumberSet objectNumbers;
    NumberSet materialNumbers;
    std::set<std::string> told;
};

}  // namespace command
