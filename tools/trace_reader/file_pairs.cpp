#include "trace_reader/file_pairs.h"

#include <algorithm>

#include "platform/windows.h"

namespace dialwright::tools {
namespace {

constexpr std::wstring_view kExtension = L".log";
constexpr std::wstring_view kError = L"_error";

/// A file's name, taken apart: "host.exe_1_Dialwright" + "_1" + "_error_pid_42.log".
struct NameParts {
    std::wstring_view base;
    std::wstring_view behindNumber;
};

/// Where the name says whose files they are: "_pid_42" at its end. The end itself where it does not.
std::size_t ProcessSuffixOf(std::wstring_view stem) {
    constexpr std::wstring_view kBegin = L"_pid_";
    const std::size_t at = stem.rfind(kBegin);
    if (at == std::wstring_view::npos) return stem.size();
    const std::wstring_view id = stem.substr(at + kBegin.size());
    const bool isId = !id.empty() && id.find_first_not_of(L"0123456789") == std::wstring_view::npos;
    return isId ? at : stem.size();
}

std::optional<NameParts> TakeApart(std::wstring_view name) {
    if (!name.ends_with(kExtension)) return std::nullopt;
    const std::wstring_view stem = name.substr(0, name.size() - kExtension.size());
    // An ID that begins like a number of a pair must not be taken for it.
    for (const std::size_t end : {ProcessSuffixOf(stem), stem.size()}) {
        for (const std::wstring_view number : {L"_1", L"_2"}) {
            for (const std::wstring_view part : {kError, std::wstring_view()}) {
                const std::wstring ending = std::wstring(number) + std::wstring(part);
                if (!stem.substr(0, end).ends_with(ending)) continue;
                const std::size_t at = end - ending.size();
                return NameParts{.base = name.substr(0, at), .behindNumber = name.substr(at + number.size())};
            }
        }
    }
    return std::nullopt;
}

std::wstring WithSeparator(const std::wstring& folder) {
    return folder.empty() || folder.ends_with(L'\\') || folder.ends_with(L'/') ? folder : folder + L"\\";
}

std::uint64_t Whole(DWORD high, DWORD low) { return static_cast<std::uint64_t>(high) << 32U | low; }

}  // namespace

std::vector<std::wstring> TracePair::Files() const {
    return second.empty() ? std::vector{first} : std::vector{first, second};
}

TracePair PairOf(std::wstring_view path) {
    const std::size_t nameBegin = path.find_last_of(L"\\/") + 1;
    const std::wstring folder(path.substr(0, nameBegin));
    const auto parts = TakeApart(path.substr(nameBegin));
    if (!parts) return {.folder = folder, .name = std::wstring(path.substr(nameBegin)), .first = std::wstring(path)};
    const auto compose = [&](std::wstring_view number) {
        return std::wstring(parts->base).append(number).append(parts->behindNumber);
    };
    return {.folder = folder,
            .name = compose(L""),
            .first = folder + compose(L"_1"),
            .second = folder + compose(L"_2"),
            .isError = parts->behindNumber.starts_with(kError)};
}

std::vector<TracePair> PairsIn(const std::wstring& folder) {
    std::vector<TracePair> pairs;
    const std::wstring begin = WithSeparator(folder);
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((begin + L"*.log").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return pairs;
    do {
        const TracePair pair = PairOf(begin + found.cFileName);
        const bool known = std::ranges::find(pairs, pair.first, &TracePair::first) != pairs.end();
        if (!known && !pair.second.empty()) pairs.push_back(pair);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
    std::ranges::sort(pairs, {}, &TracePair::name);
    return pairs;
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::wstring> MainAndErrorFiles(const TracePair& pair) {
    const std::wstring_view name = std::wstring_view(pair.first).substr(pair.folder.size());
    const auto parts = TakeApart(name);
    if (!parts) return {pair.first};
    const std::wstring_view rest = parts->behindNumber.substr(pair.isError ? kError.size() : 0);
    std::vector<std::wstring> files;
    for (const std::wstring_view part : {std::wstring_view(), kError}) {
        for (const std::wstring_view number : {L"_1", L"_2"}) {
            files.push_back(std::wstring(pair.folder).append(parts->base).append(number).append(part).append(rest));
        }
    }
    return files;
}

FileState StateOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (path.empty() || !::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return {};
    return {.size = Whole(data.nFileSizeHigh, data.nFileSizeLow),
            .written = Whole(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime)};
}

std::uint64_t LastWritten(const TracePair& pair) {
    return (std::max)(StateOf(pair.first).written, StateOf(pair.second).written);
}

}  // namespace dialwright::tools
