#include "platform/narrow_path.h"

#include "platform/windows.h"

#include <dbghelp.h>

namespace dialwright {
namespace {

// Two for each unit, in the code pages of East Asia.
constexpr std::size_t kMostAnsiBytes = 2 * std::tuple_size_v<WidePath>;

bool Convert(UINT codePage, DWORD flags, const char* path, WidePath& wide) {
    return ::MultiByteToWideChar(codePage, flags, path, -1, wide.data(), static_cast<int>(wide.size())) > 0;
}

}  // namespace

WidePath WidenPath(const char* path) noexcept {
    WidePath wide{};
    if (Convert(CP_UTF8, MB_ERR_INVALID_CHARS, path, wide) || Convert(CP_ACP, 0, path, wide)) return wide;
    return {};
}

void CreateFoldersOf(const WidePath& path) noexcept {
    std::array<char, kMostAnsiBytes> ansi{};
    const UINT page = ::GetACP();
    // UTF-8 as the ANSI code page spells everything and takes no such question.
    BOOL replaced = FALSE;
    BOOL* const question = page == CP_UTF8 ? nullptr : &replaced;
    const DWORD flags = page == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = ::WideCharToMultiByte(page, flags, path.data(), -1, ansi.data(), static_cast<int>(ansi.size()),
                                             nullptr, question);
    if (length > 0 && !replaced) ::MakeSureDirectoryPathExists(ansi.data());
}

}  // namespace dialwright
