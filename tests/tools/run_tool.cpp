#include "run_tool.h"

#include "support/child_process.h"
#include "support/wait.h"

namespace dialwright::testing {

std::string Ended::Text() const {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

Ended RunTool(const std::vector<std::wstring>& arguments, const std::string& input) {
    return RunOther(L"dialwright.exe", arguments, input);
}

Ended RunOther(const std::wstring& program, const std::vector<std::wstring>& arguments, const std::string& input) {
    ChildProcess process(program, arguments);
    if (!input.empty()) process.WriteLine(input);
    process.CloseInput();
    Ended ended;
    while (auto line = process.ReadLine(kPatienceMs)) ended.lines.push_back(*line);
    ended.code = process.WaitForExit(kPatienceMs);
    return ended;
}

}  // namespace dialwright::testing
