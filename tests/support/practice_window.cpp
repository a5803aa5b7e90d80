#include "support/practice_window.h"

#include <atomic>
#include <stdexcept>

#include "platform/text_encoding.h"
#include "support/wait.h"

namespace dialwright::testing {
namespace {

std::vector<std::wstring> Options(const std::wstring& windowClass, const std::wstring& title,
                                  const std::vector<std::wstring>& more) {
    std::vector<std::wstring> options = {L"--commands", L"--class", windowClass, L"--title", title};
    options.insert(options.end(), more.begin(), more.end());
    return options;
}

struct IdSearch {
    int id;
    HWND found;
};

BOOL CALLBACK VisitChild(HWND child, LPARAM parameter) {
    auto& search = *reinterpret_cast<IdSearch*>(parameter);
    if (::GetDlgCtrlID(child) != search.id) return TRUE;
    search.found = child;
    return FALSE;
}

std::string Expect(ChildProcess& process) {
    auto line = process.ReadLine(kPatienceMs);
    if (!line) throw std::runtime_error("the practice target does not answer");
    return std::move(*line);
}

}  // namespace

std::wstring UniqueTitle() {
    static std::atomic<int> count{0};
    return L"Practice " + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count) + L" end";
}

PracticeWindow::PracticeWindow(const std::wstring& windowClass, const std::vector<std::wstring>& moreOptions,
                               const std::wstring& windowTitle)
    : windowClass(windowClass),
      title(windowTitle),
      process(L"" PRACTICE_TARGET, Options(windowClass, windowTitle, moreOptions)) {
    constexpr std::string_view kReady = "ready ";
    for (;;) {
        const std::string line = Expect(process);
        if (!line.starts_with(kReady)) continue;
        window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(std::stoull(line.substr(kReady.size()))));
        break;
    }
    (void)TakeAllEvents();
}

HWND PracticeWindow::Control(int id) const {
    IdSearch search{.id = id, .found = nullptr};
    ::EnumChildWindows(window, &VisitChild, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring PracticeWindow::Line(const std::wstring& name, const std::wstring& rest) const {
    return name + L" \"" + windowClass + L"\" \"" + title + L"\"" + (rest.empty() ? L"" : L" " + rest);
}

std::wstring PracticeWindow::BriefLine(const std::wstring& name, const std::wstring& rest) const {
    return Line(name, rest) + L" " + std::to_wstring(kBriefMs);
}

void PracticeWindow::Do(const std::wstring& command) {
    process.WriteLine(ToUtf8(command));
    const std::string mark = "mark " + std::to_string(++marks);
    process.WriteLine(mark);
    for (;;) {
        std::string line = Expect(process);
        if (line == mark) return;
        if (line.starts_with("error")) throw std::runtime_error(line);
        events.push_back(std::move(line));
    }
}

void PracticeWindow::DoAfter(DWORD milliseconds, const std::wstring& command) {
    process.WriteLine(ToUtf8(L"after " + std::to_wstring(milliseconds) + L" " + command));
}

std::vector<std::string> PracticeWindow::TakeAllEvents() {
    Do(L"mark events");
    std::vector<std::string> taken;
    for (std::string& event : events) {
        if (event != "mark events") taken.push_back(std::move(event));
    }
    events.clear();
    return taken;
}

std::vector<std::string> PracticeWindow::TakeEvents() {
    std::vector<std::string> direct = TakeAllEvents();
    std::erase_if(direct, [](const std::string& event) { return event.starts_with("inner "); });
    return direct;
}

}  // namespace dialwright::testing
