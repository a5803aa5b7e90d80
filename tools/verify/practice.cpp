#include "verify/practice.h"

#include <atomic>
#include <cstdint>
#include <stdexcept>

namespace dialwright::verify {
namespace {

constexpr DWORD kPatienceMs = 20000;

std::wstring NewTitle() {
    static std::atomic<int> count{0};
    return L"Dialwright verify " + std::to_wstring(::GetCurrentProcessId()) + L" " + std::to_wstring(++count);
}

ChildStart StartOf(const Setting& setting, const std::wstring& title, HANDLE token) {
    return {.program = setting.PracticeTarget(), .arguments = {L"--commands", L"--title", title}, .token = token};
}

std::string Expect(ChildProgram& program) {
    auto line = program.ReadLine(kPatienceMs);
    if (!line) throw std::runtime_error("the practice target does not answer");
    return std::move(*line);
}

}  // namespace

Practice::Practice(const Setting& setting, HANDLE token) : title(NewTitle()), program(StartOf(setting, title, token)) {
    constexpr std::string_view kReady = "ready ";
    std::string line = Expect(program);
    while (!line.starts_with(kReady)) line = Expect(program);
    window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(std::stoull(line.substr(kReady.size()))));
    (void)TakeEvents();
}

std::wstring Practice::Line(const std::wstring& name, const std::wstring& rest) const {
    return name + L" \"#32770\" \"" + title + L"\" " + rest;
}

std::vector<std::string> Practice::TakeEvents() {
    const std::string mark = "mark " + std::to_string(++marks);
    program.WriteLine(mark);
    std::vector<std::string> events;
    for (std::string line = Expect(program); line != mark; line = Expect(program)) events.push_back(std::move(line));
    return events;
}

}  // namespace dialwright::verify
