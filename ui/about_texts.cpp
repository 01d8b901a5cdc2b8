#include "ui/about_texts.h"

#include <iterator>

namespace ui {
namespace {

constexpr AboutText aboutTexts[] = {
    {_M("Product"), _M("veltrane")},    {_M("Version"), _M("4.0.2")},
    {_M("Compression"), _M("zlib")},    {_M("Shared pointers"), _M("Boost")},
    {_M("Vector code"), _M("Highway")},
};

}  // namespace

std::span<const AboutText> AboutTexts() {
    return aboutTexts;
}

void OpenAbout(HWND parent, AboutLoader load) {
    if (AboutFunction show = load(aboutLibrary, aboutFunctionName)) {
        show(parent, aboutTexts, static_cast<int>(std::size(aboutTexts)));
    }
}

}  // namespace ui
