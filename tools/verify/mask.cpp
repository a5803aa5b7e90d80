#include "verify/mask.h"

#include <algorithm>
#include <cwctype>

#include "check/source_text.h"
#include "platform/text_encoding.h"
#include "platform/windows.h"

namespace dialwright::verify {
namespace {

std::wstring Variable(const wchar_t* name) {
    std::wstring value(::GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

template <class Convert>
std::wstring Converted(Convert convert, const std::wstring& path) {
    std::wstring other(convert(path.c_str(), nullptr, 0), L'\0');
    other.resize(convert(path.c_str(), other.data(), static_cast<DWORD>(other.size())));
    return other;
}

bool IsWordUnit(wchar_t unit) { return std::iswalnum(unit) != 0 || unit == L'_'; }

/// Whether no word goes on at either side.
bool StandsAlone(const std::wstring& text, std::size_t at, std::size_t length) {
    return (at == 0 || !IsWordUnit(text[at - 1])) && (at + length >= text.size() || !IsWordUnit(text[at + length]));
}

/// The place of the part, whatever its case.
std::size_t Find(const std::wstring& text, const std::wstring& part, std::size_t from) {
    const int at = ::FindStringOrdinal(FIND_FROMSTART, text.c_str() + from, static_cast<int>(text.size() - from),
                                       part.c_str(), static_cast<int>(part.size()), TRUE);
    return at < 0 ? std::wstring::npos : from + static_cast<std::size_t>(at);
}

}  // namespace

Mask::Mask(const std::filesystem::path& folder, const std::filesystem::path& work) {
    AddPath(work.wstring(), L"<work>");
    AddPath(folder.wstring(), L"<sdk>");
    AddPath(folder.parent_path().parent_path().wstring(), L"<sdk root>");
    AddPath(std::filesystem::temp_directory_path().parent_path().wstring(), L"<temp>");
    AddPath(Variable(L"LOCALAPPDATA"), L"<local app data>");
    AddPath(Variable(L"USERPROFILE"), L"<profile>");
    AddName(L"USERNAME", L"<user>");
    AddName(L"COMPUTERNAME", L"<computer>");
    AddName(L"USERDOMAIN", L"<domain>");
    AddName(L"USERDNSDOMAIN", L"<domain>");
    std::ranges::stable_sort(secrets, [](const Secret& a, const Secret& b) { return a.text.size() > b.text.size(); });
}

std::string Mask::operator()(const std::string& utf8) const {
    std::wstring text = tools::Wide(utf8);
    for (const Secret& secret : secrets) {
        std::size_t at = 0;
        while (at < text.size() && (at = Find(text, secret.text, at)) != std::wstring::npos) {
            const bool replace = !secret.isWord || StandsAlone(text, at, secret.text.size());
            if (replace) text.replace(at, secret.text.size(), secret.shown);
            at += replace ? secret.shown.size() : 1;
        }
    }
    return ToUtf8(text);
}

void Mask::AddPath(const std::wstring& path, const wchar_t* shown) {
    // A path of a drive alone is nobody's.
    constexpr std::size_t kDrive = 3;
    for (const std::wstring& form :
         {path, Converted(&::GetLongPathNameW, path), Converted(&::GetShortPathNameW, path)}) {
        std::wstring text = form;
        while (text.ends_with(L'\\') || text.ends_with(L'/')) text.pop_back();
        if (text.size() > kDrive) secrets.push_back({.text = text, .shown = shown});
    }
}

void Mask::AddName(const wchar_t* variable, const wchar_t* shown) {
    const std::wstring name = Variable(variable);
    if (!name.empty()) secrets.push_back({.text = name, .shown = shown, .isWord = true});
}

}  // namespace dialwright::verify
