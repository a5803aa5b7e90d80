#include "trace_reader/command_rows.h"

#include "target.h"

namespace dialwright::fuzz {
namespace {

constexpr std::string_view kFunctions[] = {"DialogScriptManager::ExecuteScript",
                                           "DialogScriptManager::ExecuteCommand",
                                           "DialogScriptManager::ParseInt",
                                           "DialogScriptManager::ValidateScript",
                                           "DialogScriptManager::ValidateCommand",
                                           "Window::Window",
                                           "Window::GetControlHandle",
                                           "Window::FindChildControl",
                                           "Window::SimulateMouseClick",
                                           "Window::ClearTextHelper",
                                           "Window::SetCheckState",
                                           "Window::CloseWindow",
                                           "Window::MoveWindow",
                                           "Program::Launch",
                                           ""};
constexpr std::string_view kMessages[] = {"Executing command: ",
                                          "Invalid command: ",
                                          "Exception during ",
                                          "Invalid ",
                                          "Initializing window search\n  Class: c\n  Title: t",
                                          "Window search failed",
                                          "Cleared text",
                                          "No valid window handle",
                                          "Standard dialog control handle",
                                          ""};

tools::TraceFields AnyFields(Input& input, std::string& line) {
    static constexpr std::string_view kLevels[] = {"  debug", "   info", "warning", "  error"};
    const auto digit = [&] { return std::to_string(input.Between(0, 9)); };
    line = "[2026-11-2" + digit() + " 10:00:0" + digit() + ".0000000 UTC+00:00] [4:" + digit() + "] [Dialwright  40 " +
           std::string(input.OneOf(kLevels)) + "] ";
    line += std::string(input.OneOf(kFunctions)) + ": " + std::string(input.OneOf(kMessages)) + input.Bytes(12);
    return tools::ReadFields(line);
}

}  // namespace

void Try(Input input) {
    tools::CommandRows rows;
    std::size_t added = 0;
    std::size_t problems = 0;
    for (; !input.IsEmpty() && added < 60; ++added) {
        std::string line;
        const tools::TraceFields fields = AnyFields(input, line);
        problems += fields.level >= tools::TraceLevel::Warning ? 1 : 0;
        rows.Add(input.Between<std::size_t>(0, 1), fields);
    }
    const std::vector<tools::CommandRow> told = rows.Take();
    Require(told.size() <= added, "there is no command without a line");
    std::size_t withProblem = 0;
    for (const tools::CommandRow& row : told) {
        Require(row.process == 4 && row.thread <= 9 && row.source <= 1, "a row is of one thread of one source");
        Require(row.attempts >= 0, "attempts are counted");
        Require(!NameOf(row.result).empty(), "a result has a name");
        Require(row.command.find('\n') == std::string::npos, "a command is one line");
        withProblem += row.problem.empty() ? 0 : 1;
    }
    Require(withProblem <= problems, "there is no problem without a warning or an error");
}

}  // namespace dialwright::fuzz
