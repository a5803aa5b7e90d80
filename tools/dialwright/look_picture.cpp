#include "look_picture.h"

#include <algorithm>
#include <cstdio>

#include "input.h"
#include "look/annotated_picture.h"
#include "look/inspect_page.h"
#include "look/png.h"
#include "look/window_picture.h"
#include "look_formats.h"
#include "subcommand.h"

namespace dialwright::tools {
namespace {

/// In whole numbers, so that the digits stay sharp.
int ScaleOf(HWND window) {
    constexpr unsigned kPixelsPerInch = 96;
    return static_cast<int>((std::max)(::GetDpiForWindow(window) / kPixelsPerInch, 1U));
}

/// Empty where there is no picture.
std::string AnnotatedPng(const WindowInfo& window, const std::vector<ControlInfo>& controls,
                         const std::vector<Rectangle>& blanked) {
    WindowPicture taken = TakeWindowPicture(window.handle, blanked);
    if (taken.trouble != nullptr) {
        std::fprintf(stderr, "dialwright: %s\n", taken.trouble);
        return {};
    }
    if (taken.fromScreen) {
        std::fprintf(stderr, "dialwright: the picture is from the screen; what covers the window is in it\n");
    }
    Annotate(taken.picture, MarksOf(controls), ScaleOf(window.handle));
    return EncodePng(taken.picture);
}

bool Write(const std::string& path, const std::string& bytes) {
    if (WriteWholeFile(path, bytes)) return true;
    std::fprintf(stderr, "dialwright: %s cannot be written\n", path.c_str());
    return false;
}

}  // namespace

int WritePictures(const PictureFiles& files, const WindowInfo& window, const std::vector<ControlInfo>& controls,
                  NamedBy way, const std::vector<Rectangle>& blanked) {
    const std::string png = AnnotatedPng(window, controls, blanked);
    if (!files.picture.empty() && !png.empty() && !Write(files.picture, png)) return kUsage;
    if (!files.page.empty() && !Write(files.page, InspectPage(ControlsAsJson(window, controls, way), png)))
        return kUsage;
    return png.empty() ? kFound : kDone;
}

}  // namespace dialwright::tools
