#include "command/run.h"

#include <exception>
#include <memory>

#include "command/arguments.h"
#include "command/console.h"
#include "command/failure.h"
#include "command/info.h"
#include "command/parameter_listing.h"
#include "command/render_file.h"
#include "command/save.h"
#include "plugin/entry.h"

namespace command {
namespace {

struct Runner {
    Console& console;

    int operator()(const SaveArguments& save) const {
        return Save(save, console) ? exitSaved : exitNotSaved;
    }
    int operator()(const InfoArguments& info) const {
        const std::unique_ptr<RenderFile> file = OpenRenderFile(info.input);
        const RenderInfo told = Inform(*file);
        console.Write(info.json ? DescribeAsJson(told) : DescribeAsText(told));
        return exitSaved;
    }
    int operator()(const ParamsArguments& params) const {
        console.Write(ListParameters(
            params.ofElements ? plugin::LayerParameters() : plugin::EffectParameters(),
            params.form));
        return exitSaved;
    }
    int operator()(const TextArguments& request) const {
        console.Write(request.text);
        return exitSaved;
    }
};

}  // namespace

int Run(const std::vector<std::string>& arguments, std::FILE* out, std::FILE* err) {
    Console console(out, err);
    try {
        return std::visit(Runner{console}, ParseArguments(arguments));
    } catch (const UsageError& fault) {
        console.Error(fault.what());
        return exitUsage;
    } catch (const std::exception& fault) {
        console.Error(fault.what());
        return exitNotSaved;
    }
}

}  // namespace command
