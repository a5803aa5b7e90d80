#include "trace_reader/command_rows.h"

#include <algorithm>
#include <array>
#include <utility>

namespace dialwright::tools {
namespace {

struct Marker {
    std::string_view function;
    std::string_view beginning;
};

bool Meets(const TraceFields& fields, const Marker& marker) {
    return fields.function == marker.function && fields.message.starts_with(marker.beginning);
}

constexpr Marker kAnnounced{.function = "DialogScriptManager::ExecuteScript", .beginning = "Executing command: "};
constexpr Marker kRefused{.function = "DialogScriptManager::ExecuteScript", .beginning = "Invalid command: "};
constexpr Marker kThrown{.function = "DialogScriptManager::ExecuteCommand", .beginning = "Exception during "};
constexpr Marker kUnreadable{.function = "DialogScriptManager::ParseInt", .beginning = "Invalid "};
constexpr Marker kSearch{.function = "Window::Window", .beginning = "Initializing window search"};
constexpr Marker kSearchFailed{.function = "Window::Window", .beginning = "Window search failed"};

/// Lines of which each attempt at a control leaves exactly one.
constexpr std::array<Marker, 5> kAttempts = {
    {{.function = "Window::GetControlHandle", .beginning = "Standard dialog control handle"},
     {.function = "Window::FindChildControl::<lambda_1>::operator ()", .beginning = "Found matching"},
     {.function = "Window::FindChildControl", .beginning = "Child control not found"},
     {.function = "Window::FindControlByHierarchy", .beginning = "Starting to find"},
     {.function = "Window::FindControlByPosition", .beginning = "Starting position-based search"}}};

/// Commands on the window itself: their one line tells how it went.
constexpr std::array<std::string_view, 6> kOnWindow = {"Window::MinimizeWindow", "Window::MaximizeWindow",
                                                       "Window::RestoreWindow",  "Window::CloseWindow",
                                                       "Window::MoveWindow",     "Window::BringToFront"};

/// Lines behind which a command can only succeed. A click that ends the window leaves an error and has succeeded.
constexpr std::array<Marker, 3> kSuccesses = {{{.function = "Window::SimulateMouseClick", .beginning = ""},
                                               {.function = "Window::ClearTextHelper", .beginning = "Cleared text"},
                                               {.function = "Window::SetCheckState", .beginning = ""}}};

bool IsOnWindow(const TraceFields& fields) { return std::ranges::find(kOnWindow, fields.function) != kOnWindow.end(); }

bool IsProblem(const TraceFields& fields) { return fields.level && *fields.level >= TraceLevel::Warning; }

bool IsAttempt(const TraceFields& fields) {
    if (IsOnWindow(fields)) return fields.message.find("No valid window handle") == std::string_view::npos;
    return std::ranges::any_of(kAttempts, [&](const Marker& marker) { return Meets(fields, marker); });
}

CommandResult WhatItTells(const TraceFields& fields) {
    const bool goodLine = IsOnWindow(fields) ||
                          std::ranges::any_of(kSuccesses, [&](const Marker& marker) { return Meets(fields, marker); });
    const bool isClick = fields.function == kSuccesses[0].function;
    if (goodLine && (isClick || !IsProblem(fields))) return CommandResult::Succeeded;
    if (IsOnWindow(fields) || Meets(fields, kSearchFailed)) return CommandResult::Failed;
    return CommandResult::Unknown;
}

std::string_view FirstLine(std::string_view text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

/// The text behind a label of a message of several lines.
std::string_view Labelled(std::string_view message, std::string_view label) {
    const std::size_t at = message.find(label);
    if (at == std::string_view::npos) return {};
    const std::string_view behind = message.substr(at + label.size());
    return FirstLine(behind.substr((std::min)(behind.find_first_not_of(' '), behind.size())));
}

std::string WhatItLooksFor(const TraceFields& fields) {
    return "class \"" + std::string(Labelled(fields.message, " Class: ")) + "\" title \"" +
           std::string(Labelled(fields.message, " Title: ")) + "\"";
}

bool IsOf(const TraceFields& fields, std::string_view owner) { return fields.function.starts_with(owner); }

bool IsValidation(const TraceFields& fields) {
    return IsOf(fields, "DialogScriptManager::ValidateScript") ||
           fields.function == "DialogScriptManager::ValidateCommand";
}

}  // namespace

std::string_view NameOf(CommandResult result) {
    switch (result) {
        case CommandResult::Succeeded: return "ok";
        case CommandResult::Failed: return "failed";
        case CommandResult::Unknown: break;
    }
    return "unknown";
}

void CommandRows::Add(std::size_t source, const TraceFields& fields) {
    if (fields.function.empty()) return;
    Open& open = threads[{source, fields.process.value_or(0), fields.thread.value_or(0)}];
    if (IsValidation(fields)) {
        CloseAsTold(open);
    } else if (IsOf(fields, "DialogScriptManager::")) {
        AddOfManager(open, source, fields);
    } else if (IsOf(fields, "Window::")) {
        AddOfWindow(open, source, fields);
    }
}

void CommandRows::AddOfManager(Open& open, std::size_t source, const TraceFields& fields) {
    if (Meets(fields, kAnnounced)) {
        CloseAsTold(open);
        Begin(open, source, fields, std::string(FirstLine(fields.message.substr(kAnnounced.beginning.size()))))
            .fromScript = true;
        return;
    }
    const bool isEnd = Meets(fields, kRefused) || Meets(fields, kThrown);
    // All others are said before the window is looked for, so behind a search they are of the next command.
    if (!isEnd && open.hasSearched) CloseAsTold(open);
    if (!open.isOpen) Begin(open, source, fields, std::string(FirstLine(fields.message)));
    const bool fromScript = rows[open.row].fromScript;
    Note(open, fields);
    if (Meets(fields, kRefused) || (!fromScript && !Meets(fields, kUnreadable))) Close(open, CommandResult::Failed);
}

void CommandRows::AddOfWindow(Open& open, std::size_t source, const TraceFields& fields) {
    const bool isSearch = Meets(fields, kSearch);
    if (isSearch && open.hasSearched) CloseAsTold(open);
    if (!open.isOpen) Begin(open, source, fields, isSearch ? WhatItLooksFor(fields) : "(began before this trace)");
    open.hasSearched = true;
    Note(open, fields);
    if (IsAttempt(fields)) ++rows[open.row].attempts;
}

CommandRow& CommandRows::Begin(Open& open, std::size_t source, const TraceFields& fields, std::string command) {
    open = {.row = rows.size(), .isOpen = true, .begin = InstantOf(fields).value_or(0)};
    rows.push_back({.source = source,
                    .process = fields.process.value_or(0),
                    .thread = fields.thread.value_or(0),
                    .time = std::string(fields.time),
                    .command = std::move(command)});
    return rows.back();
}

void CommandRows::Note(Open& open, const TraceFields& fields) {
    CommandRow& row = rows[open.row];
    row.durationMicroseconds = (InstantOf(fields).value_or(open.begin) - open.begin) / 10;
    open.ifLast = WhatItTells(fields);
    open.lastIsProblem = IsProblem(fields);
    // That a script's command failed is the row's result; why it did was said before.
    if (!open.lastIsProblem || Meets(fields, kRefused)) return;
    row.problemLevel = fields.level.value_or(TraceLevel::Error);
    row.problem = std::string(fields.function) + ": " + std::string(fields.message);
}

void CommandRows::Close(Open& open, CommandResult result) {
    rows[open.row].result = result;
    open = {};
}

/// The thread has gone on to something else. A script says when a command failed; one that was called alone and
/// failed has a warning or an error as its last line.
void CommandRows::CloseAsTold(Open& open) {
    if (!open.isOpen) return;
    const bool failed = !rows[open.row].fromScript && open.lastIsProblem && open.ifLast != CommandResult::Succeeded;
    Close(open, failed ? CommandResult::Failed : CommandResult::Succeeded);
}

std::vector<CommandRow> CommandRows::Take() {
    for (auto& [thread, open] : threads) {
        if (open.isOpen) Close(open, open.ifLast);
    }
    return std::move(rows);
}

}  // namespace dialwright::tools
