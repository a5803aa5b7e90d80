#include "trace/file_names.h"

#include "check/source_text.h"
#include "target.h"
#include "trace/file_pair.h"
#include "trace_reader/file_pairs.h"

// The names that the logger gives its files, and the reader's idea of which belong together.
namespace dialwright::fuzz {
namespace {

constexpr std::size_t kMostPath = 259;

void CheckNames(const std::string& folder, const std::string& name, const std::string& suffix) {
    const FileNameParts parts = SplitFileName(name);
    Require(std::string(parts.base) + std::string(parts.extension) == name, "base and extension are the name");
    Require(parts.extension.find('.', 1) == std::string_view::npos, "an extension has one dot");
    const TraceFileNames names = ComposeFileNames(folder, name, suffix);
    const std::pair<std::string_view, std::string_view> rows[] = {
        {names.main.View(), ""},     {names.error.View(), "_error"},
        {names.first.View(), "_1"},  {names.firstError.View(), "_1_error"},
        {names.second.View(), "_2"}, {names.secondError.View(), "_2_error"}};
    for (const auto& [path, part] : rows) {
        const std::string whole =
            folder + std::string(parts.base) + std::string(part) + suffix + std::string(parts.extension);
        Require(path == std::string_view(whole).substr(0, kMostPath), "a path is put together from its parts, and cut");
    }
}

void CheckPair(const TracePath& first, const TracePath& second, bool isError) {
    const std::wstring one = tools::Wide(first.View());
    const std::wstring two = tools::Wide(second.View());
    for (const std::wstring& path : {one, two}) {
        const tools::TracePair pair = tools::PairOf(path);
        Require(pair.first == one && pair.second == two, "either file of a pair tells both");
        Require(pair.isError == isError, "and which of the two kinds it is");
        Require(tools::MainAndErrorFiles(pair).size() == 4, "and all four files of the host");
    }
}

void CheckChoice(Input& input) {
    const FileStatus one{.size = input.Any<std::uint32_t>(), .modified = input.Between(0, 3)};
    const FileStatus other{.size = input.Any<std::uint32_t>(), .modified = input.Between(0, 3)};
    const auto limit = input.Between<std::uint64_t>(1, 2047);
    const PairChoice choice = ChooseFileOfPair(one, other, limit);
    const FileStatus& chosen = choice.second ? other : one;
    const FileStatus& left = choice.second ? one : other;
    const auto limitBytes = static_cast<std::int64_t>(limit << 20U);
    Require(choice.beginAnew || chosen.size < limitBytes, "nobody goes on in a full file");
    Require(choice.beginAnew || chosen.modified >= left.modified, "nobody goes on in the older file");
    Require(!choice.beginAnew || left.size >= limitBytes, "a file is begun anew only when the other one is full");
}

}  // namespace

void Try(Input input) {
    CheckChoice(input);
    const std::uint32_t processId = input.Any<std::uint32_t>();
    const std::string suffix = input.Flag() ? "_pid_" + std::to_string(processId) : "";
    const std::string folder = input.Bytes(input.Flag() ? 20 : 300);
    const std::string name = input.RestAsBytes();
    CheckNames(folder, name, suffix);
    (void)tools::MainAndErrorFiles(tools::PairOf(tools::Wide(name)));

    std::string host = name.substr(0, name.find_first_of("\\/"));
    for (char& c : host) c = static_cast<char>(c & 0x7F);
    host = host.substr(0, 100) + "_1_Dialwright.log";
    const TraceFileNames names = ComposeFileNames("C:\\t\\", host, suffix);
    CheckPair(names.first, names.second, false);
    CheckPair(names.firstError, names.secondError, true);
}

}  // namespace dialwright::fuzz
