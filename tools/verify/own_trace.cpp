#include "verify/own_trace.h"

#include <fstream>
#include <iterator>

#include "trace_reader/file_pairs.h"
#include "trace_reader/record_splitter.h"
#include "trace_reader/trace_line.h"

namespace dialwright::verify {
namespace {

namespace fs = std::filesystem;

std::string ReadWhole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void AddRecords(const fs::path& path, std::vector<std::string>& lines) {
    tools::RecordSplitter splitter;
    splitter.Feed(ReadWhole(path));
    while (auto line = splitter.Next()) lines.push_back(std::move(*line));
    while (auto line = splitter.TakeRest()) lines.push_back(std::move(*line));
}

}  // namespace

fs::path TraceFolderOf(const fs::path& program) { return program.parent_path() / "logs" / "trace"; }

std::vector<std::string> ReadTrace(const fs::path& program, bool errors) {
    std::vector<std::string> lines;
    const std::wstring host = program.filename().wstring();
    for (const tools::TracePair& pair : tools::PairsIn(TraceFolderOf(program).wstring())) {
        if (pair.isError != errors || !pair.name.starts_with(host)) continue;
        for (const std::wstring& file : pair.Files()) AddRecords(file, lines);
    }
    return lines;
}

std::string TornLine(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const tools::TraceFields fields = tools::ReadFields(line);
        const bool isWhole = !fields.time.empty() && fields.process && fields.thread && fields.number && fields.level;
        if (!isWhole) return line.empty() ? "an empty line" : line;
    }
    return {};
}

bool HasEndedInOrder(const std::vector<std::string>& lines) {
    return !lines.empty() && lines.back().ends_with(" 1418    info] trace stopped");
}

}  // namespace dialwright::verify
