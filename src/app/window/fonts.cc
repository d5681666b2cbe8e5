// The faces of the resources, opened for a try.
#include "app/window/fonts.h"

#include <X11/Xft/Xft.h>
#include <X11/Xresource.h>

namespace {

constexpr const char* faces[] = {"plain", "fixed", "bar"};  // of the resource file

std::string resource(Display* display, const std::string& face, const std::string& name) {
    char* type = nullptr;
    XrmValue value{};
    const std::string path = "kolv.window." + face + "." + name;
    const bool found = XrmGetResource(XrmGetDatabase(display), path.c_str(), "Kolv.Window.XmRendition.Name",
                                      &type, &value) != False;
    return found ? value.addr : "";
}

bool xft_opens(Display* display, const std::string& name) {
    XftFont* const font = XftFontOpenName(display, DefaultScreen(display), name.c_str());
    if (font != nullptr) XftFontClose(display, font);
    return font != nullptr;
}

bool core_opens(Display* display, const std::string& name) {
    XFontStruct* const font = XLoadQueryFont(display, name.c_str());
    if (font != nullptr) XFreeFont(display, font);
    return font != nullptr;
}

}  // namespace

std::string font_trouble(Display* display) {
    for (const char* const face : faces) {
        const std::string name = resource(display, face, "fontName");
        if (name.empty()) continue;
        const bool is_xft = resource(display, face, "fontType") == "FONT_IS_XFT";
        if (!(is_xft ? xft_opens : core_opens)(display, name)) return "the font cannot be opened : " + name;
    }
    return {};
}
