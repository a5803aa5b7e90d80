#include "evidence.h"

#include <cstdio>
#include <fstream>
#include <functional>
#include <system_error>

#include "input.h"
#include "look/control_tree.h"
#include "look_formats.h"
#include "platform/text_encoding.h"

namespace dialwright::tools {
namespace {

/// "sign-in.txt-L4", with the hyphen for what no file name may hold.
std::wstring NameOf(const LineReport& line) {
    std::wstring name = FilePath(line.file).filename().wstring();
    for (wchar_t& unit : name) {
        if (unit < L' ' || std::wstring_view(L"<>:\"/\\|?*").find(unit) != std::wstring_view::npos) unit = L'-';
    }
    return name + L"-L" + std::to_wstring(line.line);
}

bool WriteWhole(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    return static_cast<bool>(file.flush());
}

/// The window and its controls, or all windows where the target was not found.
std::string TreeOf(HWND window, const Redactor& redactor) {
    if (!::IsWindow(window)) return redactor.Clean(FormatWindows(ListTopLevelWindows(), true));
    return redactor.Clean(FormatControls(ReadWindow(window), ReadControls(window), true));
}

}  // namespace

std::vector<std::string> SaveEvidence(const EvidenceSettings& settings, const LineReport& line,
                                      const LineResult& result, const Redactor& redactor) {
    std::vector<std::string> saved;
    std::error_code failed;
    if (!settings.kinds.empty()) std::filesystem::create_directories(settings.folder, failed);
    for (const std::string& kind : settings.kinds) {
        if (kind != "tree") continue;
        const std::filesystem::path path = settings.folder / (NameOf(line) + L".json");
        if (WriteWhole(path, TreeOf(result.window, redactor))) {
            saved.push_back(ToUtf8(path.wstring()));
        } else {
            std::fprintf(stderr, "dialwright: %s cannot be written\n", ToUtf8(path.wstring()).c_str());
        }
    }
    return saved;
}

}  // namespace dialwright::tools
