#include "trace/message_text.h"

#include <atomic>
#include <clocale>
#include <cstdio>
#include <cwchar>
#include <vector>

#include "platform/text_encoding.h"

namespace dialwright {
namespace {

constexpr std::size_t kContinuationIndent = 80;
constexpr std::size_t kFirstBufferUnits = 1024;

/// The narrow format as the wide formatter reads it. There "%s" would take wide text, so the size is spelled
/// out; what is spelled out already ("%ls") means the same in both.
std::pmr::wstring WidenFormat(std::pmr::memory_resource* memory, std::string_view format) {
    constexpr std::string_view kFlagsWidthPrecision = "-+ #0123456789.*";
    std::pmr::wstring wide(memory);
    wide.reserve(2 * format.size());
    for (std::size_t i = 0; i < format.size(); ++i) {
        wide.push_back(static_cast<unsigned char>(format[i]));
        if (format[i] != '%') continue;
        while (i + 1 < format.size() && kFlagsWidthPrecision.find(format[i + 1]) != std::string_view::npos) {
            wide.push_back(static_cast<unsigned char>(format[++i]));
        }
        if (i + 1 == format.size()) break;
        if (format[i + 1] == 's') wide.push_back(L'h');
        wide.push_back(static_cast<unsigned char>(format[++i]));
    }
    return wide;
}

std::atomic<_locale_t> keptLocale = nullptr;

/// Made once and kept: the host's own locale must not decide how our text is read.
_locale_t CLocale() {
    if (const _locale_t kept = keptLocale) return kept;
    const _locale_t made = ::_create_locale(LC_ALL, "C");
    _locale_t expected = nullptr;
    if (keptLocale.compare_exchange_strong(expected, made)) return made;
    ::_free_locale(made);
    return expected;
}

}  // namespace

std::pmr::string FormatMessageText(std::pmr::memory_resource* memory, const char* format, std::va_list arguments) {
    // In a narrow formatter "%ls" fails for ever on text that the locale can't encode. The wide one converts
    // nothing, so that a negative result can only mean a buffer that is too small.
    const std::pmr::wstring wideFormat = WidenFormat(memory, format);
    for (std::pmr::vector<wchar_t> buffer(kFirstBufferUnits, memory);; buffer.resize(buffer.size() * 2)) {
        std::va_list pass;
        va_copy(pass, arguments);
        const int units =
            ::_vsnwprintf_s_l(buffer.data(), buffer.size(), _TRUNCATE, wideFormat.c_str(), CLocale(), pass);
        va_end(pass);
        if (units >= 0) return ToUtf8(memory, {buffer.data(), static_cast<std::size_t>(units)});
    }
}

void FreeMessageLocale() noexcept {
    if (const _locale_t kept = keptLocale.exchange(nullptr)) ::_free_locale(kept);
}

std::pmr::string IndentContinuationLines(std::pmr::memory_resource* memory, std::string_view message) {
    std::pmr::string indented(memory);
    indented.reserve(message.size());
    for (;;) {
        const std::size_t lineFeed = message.find('\n');
        indented += message.substr(0, lineFeed);
        if (lineFeed == std::string_view::npos) return indented;
        indented += '\n';
        message.remove_prefix(lineFeed + 1);
        if (!message.empty()) indented.append(kContinuationIndent, ' ');
    }
}

}  // namespace dialwright
