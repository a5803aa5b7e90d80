#include "trace/message_text.h"

#include <algorithm>
#include <atomic>
#include <clocale>
#include <cstdio>
#include <cwchar>

#include "platform/text_encoding.h"
#include "trace/plain_format.h"

namespace dialwright {
namespace {

using Memory = std::pmr::monotonic_buffer_resource;

constexpr std::size_t kContinuationIndent = 80;
constexpr std::size_t kFirstBufferUnits = 1024;
constexpr std::string_view kFlagsWidthPrecision = "-+ #0123456789.*";

/// Where the sequence that begins behind a "%" has its length or conversion.
std::size_t SkipFlags(std::string_view format, std::size_t at) {
    const std::size_t next = format.find_first_not_of(kFlagsWidthPrecision, at);
    return next == std::string_view::npos ? format.size() : next;
}

/// Whether any argument may be wide text.
bool WantsWideText(std::string_view format) {
    for (std::size_t at = 0; (at = format.find('%', at)) != std::string_view::npos;) {
        at = SkipFlags(format, at + 1);
        const std::string_view rest = format.substr(at);
        if (rest.starts_with("ls") || rest.starts_with("lc") || rest.starts_with('S') || rest.starts_with('C') ||
            rest.starts_with('w')) {
            return true;
        }
        ++at;
    }
    return false;
}

/// The narrow format as the wide formatter reads it. There "%s" would take wide text, so the size is spelled
/// out; what is spelled out already ("%ls") means the same in both.
std::pmr::wstring WidenFormat(Memory& memory, std::string_view format) {
    std::pmr::wstring wide(&memory);
    wide.reserve(2 * format.size());
    const auto take = [&](std::string_view text) { wide.append(text.begin(), text.end()); };
    for (;;) {
        const std::size_t percent = format.find('%');
        if (percent == std::string_view::npos) break;
        const std::size_t conversion = SkipFlags(format, percent + 1);
        take(format.substr(0, conversion));
        format.remove_prefix(conversion);
        if (format.starts_with('s')) wide.push_back(L'h');
        take(format.substr(0, 1));
        format.remove_prefix((std::min)(format.size(), std::size_t{1}));
    }
    take(format);
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

/// Formats into buffers of twice the size until the text fits.
template <class Unit, class FormatInto>
std::basic_string_view<Unit> FormatDoubling(Memory& memory, std::va_list arguments, FormatInto formatInto) {
    for (std::size_t units = kFirstBufferUnits;; units *= 2) {
        auto* const buffer = static_cast<Unit*>(memory.allocate(units * sizeof(Unit), alignof(Unit)));
        std::va_list pass;
        va_copy(pass, arguments);
        const int length = formatInto(buffer, units, pass);
        va_end(pass);
        if (length >= 0) return {buffer, static_cast<std::size_t>(length)};
    }
}

bool IsAscii(std::string_view text) {
    unsigned char all = 0;
    for (const char c : text) all |= static_cast<unsigned char>(c);
    return all < 0x80;
}

std::string_view Latin1ToUtf8(Memory& memory, std::string_view text) {
    if (IsAscii(text)) return text;
    auto* const utf8 = static_cast<char*>(memory.allocate(2 * text.size(), 1));
    std::size_t used = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) utf8[used++] = static_cast<char>(0xC0 | byte >> 6U);
        utf8[used++] = byte >= 0x80 ? static_cast<char>(0x80 | (byte & 0x3F)) : c;
    }
    return {utf8, used};
}

}  // namespace

std::string_view FormatMessageText(Memory& memory, const char* format, std::va_list arguments) {
    auto* const area = static_cast<char*>(memory.allocate(kFirstBufferUnits, 1));
    if (const auto plain = FormatPlain({area, kFirstBufferUnits}, format, arguments)) return *plain;
    return FormatByRuntime(memory, format, arguments);
}

std::string_view FormatByRuntime(Memory& memory, const char* format, std::va_list arguments) {
    if (!WantsWideText(format)) {
        const auto narrow = FormatDoubling<char>(memory, arguments, [&](char* buffer, std::size_t units, auto pass) {
            return ::_vsnprintf_s_l(buffer, units, _TRUNCATE, format, CLocale(), pass);
        });
        return Latin1ToUtf8(memory, narrow);
    }
    // In a narrow formatter "%ls" fails for ever on text that the locale can't encode. The wide one converts
    // nothing, so that a negative result can only mean a buffer that is too small.
    const std::pmr::wstring wideFormat = WidenFormat(memory, format);
    const auto wide = FormatDoubling<wchar_t>(memory, arguments, [&](wchar_t* buffer, std::size_t units, auto pass) {
        return ::_vsnwprintf_s_l(buffer, units, _TRUNCATE, wideFormat.c_str(), CLocale(), pass);
    });
    return ToUtf8(memory, wide);
}

void FreeMessageLocale() noexcept {
    if (const _locale_t kept = keptLocale.exchange(nullptr)) ::_free_locale(kept);
}

void AppendIndented(std::pmr::string& target, std::string_view message) {
    for (;;) {
        const std::size_t lineFeed = message.find('\n');
        target += message.substr(0, lineFeed);
        if (lineFeed == std::string_view::npos) return;
        target += '\n';
        message.remove_prefix(lineFeed + 1);
        if (!message.empty()) target.append(kContinuationIndent, ' ');
    }
}

}  // namespace dialwright
