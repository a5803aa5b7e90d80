#include "trace/message_text.h"

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
std::wstring WidenFormat(std::string_view format) {
    constexpr std::string_view kFlagsWidthPrecision = "-+ #0123456789.*";
    std::wstring wide;
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

/// Made once and kept: the host's own locale must not decide how our text is read.
_locale_t CLocale() {
    static const _locale_t locale = ::_create_locale(LC_ALL, "C");
    return locale;
}

}  // namespace

std::string FormatMessageText(const char* format, std::va_list arguments) {
    // In a narrow formatter "%ls" fails for ever on text that the locale can't encode. The wide one converts
    // nothing, so that a negative result can only mean a buffer that is too small.
    const std::wstring wideFormat = WidenFormat(format);
    for (std::vector<wchar_t> buffer(kFirstBufferUnits);; buffer.resize(buffer.size() * 2)) {
        std::va_list pass;
        va_copy(pass, arguments);
        const int units =
            ::_vsnwprintf_s_l(buffer.data(), buffer.size(), _TRUNCATE, wideFormat.c_str(), CLocale(), pass);
        va_end(pass);
        if (units >= 0) return ToUtf8({buffer.data(), static_cast<std::size_t>(units)});
    }
}

std::string IndentContinuationLines(std::string_view message) {
    std::string indented;
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
