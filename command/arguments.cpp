#include "command/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

#include "command/failure.h"

namespace command {
namespace {

constexpr float lowestGamma = 0.01F;
constexpr float highestGamma = 10.0F;

constexpr const char* programText =
    "veltrane saves rendered frames as layered PSD and PSB documents.";

#ifdef _WIN32
constexpr const char* inputText =
    "Render file: OpenEXR, PNG, TIFF or JPEG; with --frames\n"
    "its name holds the frame number as ####, %04d or $F4";
#else
constexpr const char* inputText =
    "Render file: OpenEXR, PNG, TIFF, JPEG, Radiance HDR or\n"
    "TGA; with --frames its name holds the frame number as\n"
    "####, %04d or $F4";
#endif

constexpr const char* programExamples =
    "Examples:\n"
    "  veltrane save still.exr                          still.psd beside it, 16 bits\n"
    "  veltrane save still.exr --all                    with all mattes and passes\n"
    "  veltrane save still.exr -o out/still.psb         the large document format\n"
    "  veltrane save shot.####.exr --frames 1-100       shot.0001.psd to shot.0100.psd\n"
    "  veltrane info still.exr                          what is in a render file\n"
    "  veltrane params                                  what --set can set\n"
    "\n"
    "\"veltrane save --help\" explains the options of save.";

constexpr const char* saveExamples =
    "Examples:\n"
    "  veltrane save still.exr --set bitDepth=8 --set outputRenderAs=0\n"
    "  veltrane save still.exr --all --scene still.json --element 'Shadow*:visible=true'\n"
    "  veltrane save still.exr --beauty ViewLayer.Combined --gamma off\n"
    "  veltrane save still.exr --all --lut look.cube --shadow shadow.exr\n"
    "  veltrane save 'shot.$F4.exr' --frames 1-10,20-40x2 --progress lines\n"
    "\n"
    "Exit status: 0 all frames saved, 1 a frame was not saved, 2 wrong usage.";

std::optional<float> ParseGamma(const std::string& text) {
    if (text == "off") return std::nullopt;
    float gamma = 0;
    const char* last = text.data() + text.size();
    const auto [end, fault] = std::from_chars(text.data(), last, gamma);
    // Not "less or greater": NaN must fail too.
    const bool inRange = gamma >= lowestGamma && gamma <= highestGamma;
    if (fault != std::errc() || end != last || !inRange) {
        throw UsageError("--gamma " + text + ": expected off or a number from 0.01 to 10");
    }
    return gamma;
}

// The parser, and the places that it writes to.
class Parser {
  public:
    Parser() : app(programText, "veltrane") {
        app.require_subcommand(1);
        // What begins with a slash is a path, on Windows as elsewhere.
        app.allow_windows_style_options(false);
        app.get_formatter()->column_width(24);
        app.footer(programExamples);
        app.set_version_flag("--version", "veltrane " VELTRANE_VERSION, "Show the version");
        AddSave();
        AddInfo();
        AddParams();
    }

    Arguments Parse(const std::vector<std::string>& arguments) {
        CheckCommand(arguments);
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        try {
            app.parse(reversed);
        } catch (const CLI::CallForHelp&) {
            return TextArguments{app.help()};
        } catch (const CLI::CallForVersion& version) {
            return TextArguments{version.what() + std::string("\n")};
        } catch (const CLI::ParseError& fault) {
            throw UsageError(std::string(fault.what()) + "; \"veltrane --help\" tells the usage");
        }
        if (saveCommand->parsed()) {
            CheckNoValueIsEmpty();
            CheckLook();
            save.gamma = ParseGamma(gamma);
            save.fastDeflate = deflate == "fast";
            return save;
        }
        if (infoCommand->parsed()) return info;
        params.form = json       ? ListingForm::Json
                      : markdown ? ListingForm::Markdown
                                 : ListingForm::Text;
        return params;
    }

  private:
    // An unset variable in a script must not pass for an option that wasn't given.
    void CheckNoValueIsEmpty() {
        for (const CLI::Option* option : saveCommand->get_options()) {
            if (option->get_expected_max() == 0 || option->count() == 0) continue;
            if (option->results().front().empty()) {
                throw UsageError(option->get_name() + ": the value is empty; give one or leave " +
                                 option->get_name() + " out");
            }
        }
    }

    // Only V-Ray's frame buffer has looks.
    void CheckLook() const {
        if (save.lut.empty() || save.renderer != "none") return;
        throw UsageError("--lut " + save.lut +
                         ": with --renderer none there is no frame buffer that has a look; leave "
                         "one of them out");
    }

    static void CheckCommand(const std::vector<std::string>& arguments) {
        constexpr std::string_view commands[] = {"save", "info",   "params",
                                                 "-h",   "--help", "--version"};
        if (arguments.empty()) {
            throw UsageError("there is nothing to do; \"veltrane --help\" tells the usage");
        }
        const std::string& first = arguments.front();
        if (std::find(std::begin(commands), std::end(commands), first) == std::end(commands)) {
            throw UsageError("there is no command \"" + first +
                             "\"; the commands are save, info and params");
        }
    }

    void AddSave() {
        saveCommand = app.add_subcommand("save", "Save a render file as a layered document");
        saveCommand->footer(saveExamples);
        saveCommand->add_option("INPUT", save.input, inputText)->required()->type_name("");
        saveCommand
            ->add_option("-o,--output", save.output,
                         "Document, .psd or .psb (default: INPUT with the suffix\n.psd)")
            ->type_name("FILE");
        saveCommand
            ->add_option("--set", save.settings,
                         "Set a parameter by name, or an internal one by #ID; may be\nrepeated")
            ->type_name("NAME=VALUE")
            ->expected(1)
            ->take_all();
        saveCommand->add_flag("--all", save.all,
                              "Turn on all that the input has: elements, mattes of objects\n"
                              "and materials, IDs, normals, depth, and with an object\n"
                              "Cryptomatte scene layers and selection sets");
        saveCommand
            ->add_option("--element", save.elementSettings,
                         "Set one setting of a render element (\"veltrane params\n"
                         "--elements\"); * in the name fits any text; may be repeated")
            ->type_name("NAME:SETTING=VALUE")
            ->expected(1)
            ->take_all();
        saveCommand
            ->add_option("--scene", save.scene,
                         "Scene file: objects, layers, selection sets, settings")
            ->type_name("FILE.json");
        saveCommand->add_option("--frames", save.frames, "Frames of a sequence: 1-10,20-40x2")
            ->type_name("LIST");
        saveCommand
            ->add_option("--beauty", save.beauty,
                         "Layer that is the picture (default: the one that the\nrenderer calls so)")
            ->type_name("LAYER");
        saveCommand
            ->add_option("--renderer", save.renderer,
                         "Whose frame buffer the passes stand in: vray, none, or\n"
                         "auto: what the file says")
            ->type_name("auto|vray|none")
            ->check(CLI::IsMember({"auto", "vray", "none"}).description(""))
            ->capture_default_str();
        saveCommand
            ->add_option("--lut", save.lut,
                         "Look over the picture, a table for linear colours: an\nadjustment layer")
            ->type_name("FILE.cube");
        saveCommand
            ->add_option("--shadow", save.shadow,
                         "Image whose alpha becomes the shadow layer; in a sequence\n"
                         "#### stands right before its suffix")
            ->type_name("FILE");
        saveCommand->add_option("--gamma", gamma, "File gamma of the host, 0.01 to 10, or off")
            ->type_name("G|off")
            ->capture_default_str();
        saveCommand
            ->add_option("--deflate", deflate,
                         "ZIP compression: zlib, or ISA-L at ten times its speed")
            ->type_name("zlib|fast")
            ->check(CLI::IsMember({"zlib", "fast"}).description(""))
            ->capture_default_str();
        saveCommand
            ->add_option("--progress", save.progress,
                         "bar, lines (PROGRESS: 42%), none, or auto: a bar on a\nterminal")
            ->type_name("STYLE")
            ->check(CLI::IsMember({"auto", "bar", "lines", "none"}).description(""))
            ->capture_default_str();
        saveCommand->add_flag("-q,--quiet", save.quiet, "Show nothing but errors");
    }

    void AddInfo() {
        infoCommand = app.add_subcommand("info", "Tell what is in a render file");
        infoCommand->footer("");
        infoCommand->add_option("INPUT", info.input, "Render file")->required()->type_name("");
        infoCommand->add_flag("--json", info.json, "As JSON");
    }

    void AddParams() {
        CLI::App* command = app.add_subcommand("params", "List the parameters that --set can set");
        command->footer("");
        command->add_flag("--elements", params.ofElements,
                          "The settings of a render element, for --element");
        CLI::Option* asJson = command->add_flag("--json", json, "As JSON");
        command->add_flag("--markdown", markdown, "As a Markdown table")->excludes(asJson);
    }

    CLI::App app;
    CLI::App* saveCommand = nullptr;
    CLI::App* infoCommand = nullptr;
    SaveArguments save;
    std::string gamma = "2.2";
    std::string deflate = "zlib";
    InfoArguments info;
    ParamsArguments params;
    bool json = false;
    bool markdown = false;
};

}  // namespace

Arguments ParseArguments(const std::vector<std::string>& arguments) {
    return Parser().Parse(arguments);
}

}  // namespace command
