// Scale: what the library makes of a host that has not declared itself, and that rectangles mean physical pixels.

#include <string>

#include "platform/text_encoding.h"
#include "verify/checks.h"
#include "verify/library.h"
#include "verify/outside.h"
#include "verify/plain_output.h"

namespace dialwright::verify {
namespace {

constexpr const char* kUnaware = "0";
constexpr const char* kPerMonitor = "2";

std::string Told(const PlainOutput& output, const std::string& name) {
    const auto found = output.find(name);
    return found == output.end() ? "not told" : found->second;
}

Verdict JudgeChange(const PlainOutput& output) {
    const std::string before = Told(output, "awareness before");
    const std::string after = Told(output, "awareness after");
    const std::string found = "before the first search " + before + ", after it " + after + "; 2 is per monitor";
    if (after != kPerMonitor) return Failed(found);
    return before == kUnaware ? Passed(found) : Skipped(found + ": the host was aware from the start");
}

/// This process is aware by its manifest, so what it reads are physical pixels.
Verdict JudgeAgreement(const PlainOutput& output, const Practice& target) {
    const std::string own = ToUtf8(Argument(ScreenRectangleOf(target.Handle())));
    const std::string told = Told(output, "rectangle");
    return PassedIf(own == told, "we see " + own + ", the host sees " + told);
}

Verdict JudgeSize(const TimedCall& call, const Practice& target) {
    // A target that is not aware of the scale rounds.
    constexpr int kRounding = 2;
    const Rectangle place = ScreenRectangleOf(target.Handle());
    const bool good = call.result == 1 &&
                      EdgesWithinTolerance(place, {.left = 60, .top = 50, .right = 601, .bottom = 433}, kRounding);
    return PassedIf(good, Shown(call) + ", the window is at " + Shown(place) + ", which should be [60,50]-[601,433]");
}

}  // namespace

void CheckDpi(const Setting& setting, Journal& journal) {
    const Library library(setting);
    const Practice target(setting);
    journal.Do("this program sees physical pixels", [] {
        const DPI_AWARENESS own = ::GetAwarenessFromDpiAwarenessContext(::GetThreadDpiAwarenessContext());
        return PassedIf(
            own == DPI_AWARENESS_PER_MONITOR_AWARE,
            "awareness " + std::to_string(own) + ", scale " + std::to_string(::GetDpiForSystem() * 100 / 96) + " %");
    });
    journal.Do("a window is moved to physical pixels",
               [&] { return JudgeSize(Execute(library, target.Line(L"Window.Move", L"60,50 541,383 5000")), target); });
    PlainOutput output;
    journal.Do("a host without a manifest carries a line out", [&] {
        output = RunPlainHost(setting, target.Line(L"Window.SetCheckbox", L"31 1 5000"), target);
        return PassedIf(Told(output, "result") == "1",
                        "result " + Told(output, "result") + ", ANSI code page " + Told(output, "codepage"));
    });
    if (output.empty()) return;
    journal.Do("the first search makes that host aware of each monitor", [&] { return JudgeChange(output); });
    journal.Do("both see the same rectangle", [&] { return JudgeAgreement(output, target); });
}

}  // namespace dialwright::verify
