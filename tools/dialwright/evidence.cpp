#include "evidence.h"

#include <cstdio>
#include <string_view>
#include <system_error>

#include "input.h"
#include "look/png.h"
#include "look/window_picture.h"
#include "look_formats.h"
#include "platform/text_encoding.h"
#include "redacted_look.h"

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

/// Empty where there is none.
std::string PictureOf(const RedactedLook& look) {
    const WindowPicture taken = TakeWindowPicture(look.window.handle, look.blanked);
    if (taken.trouble == nullptr) return EncodePng(taken.picture);
    std::fprintf(stderr, "dialwright: %s\n", taken.trouble);
    return {};
}

/// A name that no file there has.
std::filesystem::path NewFile(const std::filesystem::path& folder, const std::wstring& name, const wchar_t* ending) {
    std::filesystem::path path = folder / (name + ending);
    std::error_code failed;
    for (int number = 2; std::filesystem::exists(path, failed); ++number) {
        path = folder / (name + L"-" + std::to_wstring(number) + ending);
    }
    return path;
}

}  // namespace

std::vector<std::string> SaveEvidence(const EvidenceSettings& settings, const LineReport& line,
                                      const LineResult& result, const Redactor& redactor,
                                      const std::vector<HWND>& controlsWithSecrets) {
    std::vector<std::string> saved;
    std::error_code failed;
    if (!settings.kinds.empty()) std::filesystem::create_directories(settings.folder, failed);
    const bool isThere = ::IsWindow(result.window) != FALSE;
    const RedactedLook look =
        isThere ? LookWithoutSecrets(ReadWindow(result.window), redactor, controlsWithSecrets) : RedactedLook();
    const auto tree = [&] {
        return isThere ? ControlsAsJson(look.window, look.controls, NamedBy::Id)
                       : FormatWindows(WindowsWithoutSecrets(redactor), true);
    };
    for (const std::string& kind : settings.kinds) {
        const bool isTree = kind == "tree";
        const std::string bytes = isTree ? tree() : PictureOf(look);
        if (bytes.empty()) continue;
        const std::string path = ToUtf8(NewFile(settings.folder, NameOf(line), isTree ? L".json" : L".png").wstring());
        if (WriteWholeFile(path, bytes)) {
            saved.push_back(path);
        } else {
            std::fprintf(stderr, "dialwright: %s cannot be written\n", path.c_str());
        }
    }
    return saved;
}

}  // namespace dialwright::tools
