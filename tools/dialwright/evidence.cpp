#include "evidence.h"

#include <cstdio>
#include <string_view>
#include <system_error>

#include "input.h"
#include "language/rectangle.h"
#include "look/control_tree.h"
#include "look/png.h"
#include "look/window_picture.h"
#include "look_formats.h"
#include "platform/text_encoding.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

/// "sign-in.txt-L4", with a hyphen for what no file name may hold.
std::wstring NameOf(const LineReport& line) {
    std::wstring name = FilePath(line.file).filename().wstring();
    for (wchar_t& unit : name) {
        if (unit < L' ' || std::wstring_view(L"<>:\"/\\|?*").find(unit) != std::wstring_view::npos) unit = L'-';
    }
    return name + L"-L" + std::to_wstring(line.line);
}

std::string TreeOf(HWND window, const Redactor& redactor) {
    if (!::IsWindow(window)) return redactor.Clean(FormatWindows(ListTopLevelWindows(), true));
    return redactor.Clean(ControlsAsJson(ReadWindow(window), ReadControls(window), NamedBy::Id));
}

std::vector<Rectangle> PlacesOf(const std::vector<HWND>& controls, HWND window) {
    RECT frame{};
    ::GetWindowRect(::GetAncestor(window, GA_ROOT), &frame);
    std::vector<Rectangle> places;
    for (const HWND control : controls) {
        RECT own{};
        if (::GetWindowRect(control, &own)) places.push_back(RelativeTo(ToRectangle(own), ToRectangle(frame)));
    }
    return places;
}

/// Empty where there is none.
std::string PictureOf(HWND window, const std::vector<HWND>& controlsWithSecrets) {
    const WindowPicture taken = TakeWindowPicture(window, PlacesOf(controlsWithSecrets, window));
    if (taken.trouble == nullptr) return EncodePng(taken.picture);
    std::fprintf(stderr, "dialwright: %s\n", taken.trouble);
    return {};
}

}  // namespace

std::vector<std::string> SaveEvidence(const EvidenceSettings& settings, const LineReport& line,
                                      const LineResult& result, const Redactor& redactor,
                                      const std::vector<HWND>& controlsWithSecrets) {
    std::vector<std::string> saved;
    std::error_code failed;
    if (!settings.kinds.empty()) std::filesystem::create_directories(settings.folder, failed);
    for (const std::string& kind : settings.kinds) {
        const bool isTree = kind == "tree";
        const std::string bytes =
            isTree ? TreeOf(result.window, redactor) : PictureOf(result.window, controlsWithSecrets);
        if (bytes.empty()) continue;
        const std::string path = ToUtf8((settings.folder / (NameOf(line) + (isTree ? L".json" : L".png"))).wstring());
        if (WriteWholeFile(path, bytes)) {
            saved.push_back(path);
        } else {
            std::fprintf(stderr, "dialwright: %s cannot be written\n", path.c_str());
        }
    }
    return saved;
}

}  // namespace dialwright::tools
