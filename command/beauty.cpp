#include "command/beauty.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/layer_names.h"
#include "command/nearest_names.h"

namespace command {
namespace {

constexpr std::size_t mostNamesShown = 12;

const Channel* Find(const Layer& layer, Component component) {
    for (const Channel& channel : layer.channels) {
        if (ColorComponent(channel.suffix) == component) return &channel;
    }
    return nullptr;
}

const Channel* FindSuffix(const Layer& layer, std::string_view suffix) {
    for (const Channel& channel : layer.channels) {
        if (EqualIgnoringCase(channel.suffix, suffix)) return &channel;
    }
    return nullptr;
}

std::string NameOf(const Channel* channel) {
    return channel ? channel->name : std::string();
}

bool HasColors(const Layer& layer) {
    return Find(layer, Component::Red) && Find(layer, Component::Green) &&
           Find(layer, Component::Blue);
}

bool IsLumaChroma(const Layer& layer) {
    return Find(layer, Component::Luminance) && Find(layer, Component::RedChroma) &&
           Find(layer, Component::BlueChroma);
}

bool IsPicture(const Layer& layer) {
    return HasColors(layer) || IsLumaChroma(layer);
}

bool IsCryptomatte(const Layer& layer) {
    return AsciiLower(layer.name).find("crypto") != std::string::npos;
}

// Which channel is red, green, blue and alpha; nothing for a layer that can't be shown.
std::optional<Beauty> AssignChannels(const Layer& layer) {
    Beauty beauty;
    beauty.alpha = NameOf(Find(layer, Component::Alpha));
    if (HasColors(layer)) {
        beauty.red = Find(layer, Component::Red)->name;
        beauty.green = Find(layer, Component::Green)->name;
        beauty.blue = Find(layer, Component::Blue)->name;
        return beauty;
    }
    const auto grey = [&](const Channel& channel) {
        beauty.red = beauty.green = beauty.blue = channel.name;
    };
    if (const Channel* luminance = Find(layer, Component::Luminance);
        luminance && !FindSuffix(layer, "x")) {
        grey(*luminance);
        beauty.lumaChroma = IsLumaChroma(layer);
        return beauty;
    }
    if (layer.channels.size() == 1) {
        grey(layer.channels.front());
        beauty.alpha.clear();
        return beauty;
    }
    const Channel* x = FindSuffix(layer, "x");
    const Channel* y = FindSuffix(layer, "y");
    if (x && y) {
        beauty.red = x->name;
        beauty.green = y->name;
        beauty.blue = NameOf(FindSuffix(layer, "z"));
        beauty.alpha.clear();
        return beauty;
    }
    const Channel* red = Find(layer, Component::Red);
    const Channel* green = Find(layer, Component::Green);
    if (red && green) {
        beauty.red = red->name;
        beauty.green = green->name;
        return beauty;
    }
    if (layer.channels.size() == 2 && !beauty.alpha.empty()) {
        grey(layer.channels[beauty.alpha == layer.channels[0].name ? 1 : 0]);
        return beauty;
    }
    return std::nullopt;
}

std::string LayerList(const Description& file) {
    std::vector<std::string> names;
    names.reserve(file.layers.size());
    for (const Layer& layer : file.layers)
        names.push_back(layer.name);
    const std::size_t more = names.size() > mostNamesShown ? names.size() - mostNamesShown : 0;
    names.resize(names.size() - more);
    return Joined(names) + (more > 0 ? " and " + std::to_string(more) + " more" : "");
}

[[noreturn]] void Fail(const Description& file, const std::string& fault) {
    throw InputError(file.path + ": " + fault);
}

bool IsTailOf(std::string_view tail, std::string_view name) {
    return name.size() > tail.size() && name[name.size() - tail.size() - 1] == '.';
}

using Match = bool (*)(std::string_view wanted, std::string_view name);

constexpr Match matches[] = {
    [](std::string_view wanted, std::string_view name) { return wanted == name; },
    [](std::string_view wanted, std::string_view name) {
        return IsTailOf(wanted, name) && name.ends_with(wanted);
    },
    [](std::string_view wanted, std::string_view name) { return EqualIgnoringCase(wanted, name); },
    [](std::string_view wanted, std::string_view name) {
        return IsTailOf(wanted, name) &&
               EqualIgnoringCase(wanted, name.substr(name.size() - wanted.size()));
    },
};

std::size_t FindWanted(const Description& file, std::string_view wanted) {
    for (const Match match : matches) {
        std::vector<std::size_t> fitting;
        for (std::size_t i = 0; i < file.layers.size(); ++i) {
            if (match(wanted, file.layers[i].name)) fitting.push_back(i);
        }
        if (fitting.size() == 1) return fitting.front();
        if (fitting.size() > 1) {
            std::vector<std::string> names;
            names.reserve(fitting.size());
            for (const std::size_t i : fitting)
                names.push_back(file.layers[i].name);
            Fail(file, "--beauty " + std::string(wanted) +
                           " fits several layers: " + Joined(names) + "; give one of these names");
        }
    }
    Fail(file,
         "there is no layer \"" + std::string(wanted) + "\"; the layers are " + LayerList(file));
}

// The layer's last component is `name`, or the one before it where the last names a view of a
// stereo picture.
bool IsCalled(std::string_view layer, std::string_view name) {
    const auto isLast = [&](std::string_view text) {
        return text == name || (IsTailOf(name, text) && text.ends_with(name));
    };
    const ChannelName split = SplitChannelName(layer);
    const bool isView =
        EqualIgnoringCase(split.suffix, "left") || EqualIgnoringCase(split.suffix, "right");
    return isLast(layer) || (isView && isLast(split.layer));
}

struct Choice {
    bool (*fits)(const Layer& layer);
    const char* why;
};

bool IsNamedBeauty(const Layer& layer) {
    constexpr std::string_view names[] = {"beauty", "rgba",  "rgb",   "combined", "c",
                                          "color",  "final", "image", "master"};
    const std::string lower = AsciiLower(layer.name);
    return std::any_of(std::begin(names), std::end(names),
                       [&](std::string_view name) { return IsCalled(lower, name); });
}

// In the order in which they are tried.
constexpr Choice choices[] = {
    {[](const Layer& layer) { return layer.plain && IsPicture(layer) && IsNamedBeauty(layer); },
     "its channels have no layer name"},
    {[](const Layer& layer) { return layer.plain && IsPicture(layer); },
     "its channels have no layer name"},
    {[](const Layer& layer) {
         return IsPicture(layer) && IsCalled(layer.name, "Combined") &&
                !layer.name.starts_with("Composite.");
     },
     "the renderer calls its picture so"},
    {[](const Layer& layer) { return IsPicture(layer) && IsCalled(layer.name, "RGBA"); },
     "the renderer calls its picture so"},
    {[](const Layer& layer) { return IsPicture(layer) && IsCalled(layer.name, "Combined"); },
     "the renderer calls its picture so"},
    {[](const Layer& layer) { return IsPicture(layer) && IsNamedBeauty(layer); },
     "the renderer calls its picture so"},
    {[](const Layer& layer) { return IsPicture(layer) && !IsCryptomatte(layer); },
     "it is the first layer with colours"},
    {[](const Layer& layer) { return layer.plain && Find(layer, Component::Luminance); },
     "its channel has no layer name"},
    {[](const Layer& layer) {
         return Find(layer, Component::Luminance) && !FindSuffix(layer, "x");
     },
     "it is the first grey layer"},
};

Beauty Take(const Description& file, std::size_t index, std::string why) {
    const Layer& layer = file.layers[index];
    std::optional<Beauty> beauty = AssignChannels(layer);
    if (!beauty) {
        Fail(file,
             "layer \"" + layer.name +
                 "\" has no colour channels; choose another with --beauty: " + LayerList(file));
    }
    beauty->layer = index;
    beauty->why = std::move(why);
    return *beauty;
}

}  // namespace

Beauty ChooseBeauty(const Description& file, std::string_view wanted) {
    if (file.layers.empty()) Fail(file, "the file has no channels");
    if (!wanted.empty()) return Take(file, FindWanted(file, wanted), "--beauty names it");
    for (const Choice& choice : choices) {
        // Of two that fit, a flat layer has been filtered as the renderer thinks best.
        for (const bool deep : {false, true}) {
            for (std::size_t i = 0; i < file.layers.size(); ++i) {
                const Layer& layer = file.layers[i];
                if (file.parts[layer.part].deep == deep && choice.fits(layer))
                    return Take(file, i, choice.why);
            }
        }
    }
    if (file.layers.size() == 1 && AssignChannels(file.layers.front())) {
        return Take(file, 0, "it is the only layer");
    }
    Fail(file, "no layer looks like the picture; choose one with --beauty: " + LayerList(file));
}

}  // namespace command
