// What the window search and the lookup by position cost, and what their enumerations cost by themselves.

#include <regex>
#include <string>

#include "arguments.h"
#include "bare_commands.h"
#include "redirected_output.h"
#include "target_names.h"
#include "target_process.h"
#include "trace/logger.h"
#include "turns.h"
#include "window/window.h"

using namespace dialwright;

namespace {

constexpr int kTextUnits = 256;
constexpr unsigned int kTimeoutMs = 60'000;

/// The window of the target that a search sees last.
std::wstring LastTitle(int windows) {
    struct Search {
        std::wstring wanted;
        std::wstring last;
    } search{.wanted = bench::TargetProcess::Title(L"window"), .last = {}};
    ::EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& context = *reinterpret_cast<Search*>(parameter);
            wchar_t title[kTextUnits] = {};
            ::GetWindowTextW(window, title, kTextUnits);
            if (std::wstring(title).starts_with(context.wanted)) context.last = title;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    bench::Require(windows > 0 && !search.last.empty(), "the target's windows are not there");
    return search.last;
}

struct PatternSearch {
    std::wregex title;
    const wchar_t* className;
    HWND found;
};

HWND BareSearch(PatternSearch& search) {
    search.found = nullptr;
    ::EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& context = *reinterpret_cast<PatternSearch*>(parameter);
            wchar_t title[kTextUnits] = {};
            wchar_t className[kTextUnits] = {};
            ::GetWindowTextW(window, title, kTextUnits);
            ::GetClassNameW(window, className, kTextUnits);
            if (!std::regex_match(title, context.title)) return TRUE;
            context.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void MeasureSearch(bench::Report& report, int windows, int pairs) {
    const std::wstring title = LastTitle(windows);
    const auto ours = [&](bool useRegex) {
        const Window window(bench::kTargetClass, title, kTimeoutMs, useRegex);
        bench::Require(window.hwndWindow != nullptr, "a search finds nothing");
    };
    const auto literal = [&] {
        bench::BareDpiCall();
        bench::Require(bench::BareWindow(bench::kTargetClass, title.c_str()) != nullptr, "a bare search finds nothing");
    };
    PatternSearch search = {
        .title = std::wregex(title, std::regex_constants::icase), .className = bench::kTargetClass, .found = nullptr};
    const auto pattern = [&] {
        bench::BareDpiCall();
        bench::Require(BareSearch(search) != nullptr, "a bare search finds nothing");
    };
    report.Add("search_literal", bench::TakeTurns(pairs, [&] { ours(false); }, literal));
    report.Add("search_regex", bench::TakeTurns(pairs, [&] { ours(true); }, pattern));
}

struct RectangleSearch {
    HWND root;
    int visited;
};

/// The recursion and the two rectangles of each visit, for a place where no window is.
BOOL CALLBACK VisitRectangle(HWND child, LPARAM parameter) {
    auto& search = *reinterpret_cast<RectangleSearch*>(parameter);
    ++search.visited;
    RECT absolute;
    RECT parent;
    if (!::GetWindowRect(child, &absolute) || !::GetWindowRect(search.root, &parent)) return FALSE;
    if (absolute.left - parent.left == -1 && absolute.top - parent.top == -1) return FALSE;
    ::EnumChildWindows(child, &VisitRectangle, parameter);
    return TRUE;
}

void MeasurePosition(bench::Report& report, const char* row, const std::wstring& name, int pairs) {
    const Window window(bench::kTargetClass, bench::TargetProcess::Title(name), kTimeoutMs, false);
    const auto ours = [&] {
        bench::Require(window.FindControlByPosition(-1, -1, -1, -1, 0) == nullptr, "a window lies where none should");
    };
    const auto bare = [&] {
        RectangleSearch search = {.root = window.hwndWindow, .visited = 0};
        ::EnumChildWindows(search.root, &VisitRectangle, reinterpret_cast<LPARAM>(&search));
        bench::Require(search.visited > 0, "the target has no children");
    };
    report.Add(row, bench::TakeTurns(pairs, ours, bare));
}

/// The last of the siblings by its ID and by its place, and the end of the chain by its path.
void MeasureLookups(bench::Report& report, int children, int depth, int times) {
    const auto measure = [&](const char* row, const wchar_t* name, auto lookUp) {
        const Window window(bench::kTargetClass, bench::TargetProcess::Title(name), kTimeoutMs, false);
        report.Add(row, bench::MicrosecondsOf(
                            times, [&] { bench::Require(lookUp(window) != nullptr, "a lookup finds nothing"); }));
    };
    std::wstring path = L"1";
    for (int i = 1; i < depth; ++i) path += L".1";
    const std::wstring place = std::to_wstring(children);
    const int lastId = bench::kFirstChildId + children - 1;
    measure("id_flat", bench::kFlatWindow, [&](const Window& window) { return window.GetControlHandle(lastId); });
    measure("path_flat", bench::kFlatWindow,
            [&](const Window& window) { return window.FindControlByHierarchy(place); });
    measure("path_deep", bench::kDeepWindow, [&](const Window& window) { return window.FindControlByHierarchy(path); });
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments(
        count, values,
        "usage: bench_parts --windows N --children N --depth N --pairs N --folder FOLDER\n\n"
        "Searches among so many windows, and looks where no control is among so many siblings and in so deep a chain,\n"
        "in turns with the bare calls. Logs into the folder, whose name ends in a backslash. Prints one line of JSON.\n",
        {"--windows", "--children", "--depth", "--pairs", "--folder"});
    const std::string folder = arguments.Text("--folder");
    const int pairs = arguments.Number("--pairs");
    const int windows = arguments.Number("--windows");
    const int children = arguments.Number("--children");
    const int depth = arguments.Number("--depth");
    bench::Report report;
    {
        const bench::RedirectedOutput redirected(folder + "output.txt");
        bench::Require(redirected.IsThere() && TraceStart(folder.c_str(), "trace.log", "Dialwright") != 0,
                       "the log cannot be opened");
        const bench::TargetProcess target({.windows = windows, .children = children, .depth = depth});
        MeasureSearch(report, windows, pairs);
        MeasurePosition(report, "position_flat", bench::kFlatWindow, pairs);
        MeasurePosition(report, "position_deep", bench::kDeepWindow, pairs);
        MeasureLookups(report, children, depth, pairs);
        TraceStop();
    }
    report.Print();
    return 0;
}
