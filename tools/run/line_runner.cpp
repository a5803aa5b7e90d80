#include "run/line_runner.h"

#include <regex>
#include <span>

#include "run/target.h"

namespace dialwright::tools {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kLook{50};

/// A window command acts as soon as it has its window.
bool ActsOnWindow(const CommandLine& line) {
    if (line.command == nullptr) return false;
    const auto kinds = line.command->Arguments();
    return kinds.empty() || kinds[0] == ArgumentKind::Position;
}

/// A target that answers again was only slow.
Reason NoAnswer(const CommandLine& line, HWND window) {
    const char* const rest =
        line.HasText() ? "; the text may be typed in part" : "; what was asked of it may happen later";
    if (DoesNotAnswer(window))
        return {.code = "target_hung", .sentence = std::string("the target did not answer") + rest};
    return {.code = "line_timeout", .sentence = std::string("the target was not done within the limit") + rest};
}

Reason AccessDenied() {
    return {.code = "access_denied",
            .sentence = "the target runs with more rights than this program, and the system drops messages to it"};
}

/// The target where it is there already, or null.
HWND TargetOf(const CommandLine& line) {
    try {
        return line.command == nullptr ? nullptr : WindowMatcher(line.Criteria()).FirstMatch();
    } catch (const std::regex_error&) {
        return nullptr;  // the library tells better what is wrong
    }
}

bool CannotReachTarget(const CommandLine& line) {
    return OthersMayHaveMoreRights() && HasMoreRightsThanWe(TargetOf(line));
}

/// Only a click is watched for dialogs, so only a click is worth the look.
HWND DialogBefore(const CommandLine& line) {
    const bool clicks = line.command != nullptr && line.command->name.starts_with(L"Window.ClickButton");
    return clicks ? OpenDialogOf(TargetOf(line)) : nullptr;
}

}  // namespace

milliseconds LimitOf(const CommandLine& line) {
    constexpr milliseconds kGrace{5000};
    constexpr milliseconds kPerCharacter{10};
    const auto typed = line.HasText() ? line.tokens[line.textToken].text.size() : 0;
    return milliseconds(line.TimeoutMs()) + kGrace + kPerCharacter * static_cast<milliseconds::rep>(typed);
}

/// One line on its way.
class LineRunner::Attempt {
public:
    Attempt(const Settings& lineSettings, Worker& lineWorker, const std::wstring& text)
        : settings(lineSettings), worker(lineWorker), line(ReadCommandLine(text)), watch(DialogBefore(line)) {
        if (CannotReachTarget(line)) {
            result.ending = Ending::Failed;
            result.reason = AccessDenied();
            return;
        }
        worker.Send({.kind = RequestKind::Execute, .first = text, .second = {}});
        WaitForEnd();
        course.Follow(collected.All());
        Judge();
        result.window = course.Window();
        result.control = course.Control();
        result.messages = collected.All();
    }

    [[nodiscard]] LineResult Take() { return std::move(result); }

private:
    void WaitForEnd() {
        for (Clock::time_point nextLook = begin + kLook; !isOver;) {
            const auto text = worker.NextLine(static_cast<DWORD>(kLook.count()));
            if (text) Read(*text);
            if (isOver || Clock::now() < nextLook) continue;
            nextLook = Clock::now() + kLook;
            Look(!text);
        }
    }

    void Read(const std::string& text) {
        const auto answer = ReadAnswer(worker.Word(), text);
        if (!answer) return collected.Add(text);
        constexpr double kMicrosecondsPerMillisecond = 1000;
        result.milliseconds = static_cast<double>(answer->microseconds) / kMicrosecondsPerMillisecond;
        End(answer->result == 1 ? Ending::Done : Ending::Failed);
    }

    void End(Ending ending) {
        result.ending = ending;
        isOver = true;
    }

    /// `settled`: nothing more has come for a while, so that the last message is whole.
    void Look(bool settled) {
        const auto& all = collected.All();
        course.Follow(std::span(all).first(all.size() - (settled || all.empty() ? 0 : 1)));
        const auto waited = std::chrono::duration_cast<milliseconds>(Clock::now() - begin);
        result.milliseconds = static_cast<double>(waited.count());
        if (settings.isInterrupted && settings.isInterrupted()) return End(Ending::Interrupted);
        if (worker.HasEnded()) return End(Ending::WorkerEnded);
        if (!LooksAtDialog(waited)) LooksAtLimit(waited);
        if (!isOver && settings.waiting) settings.waiting(waited);
    }

    /// Whether a dialog holds the line up, so that no limit counts.
    bool LooksAtDialog(milliseconds waited) {
        if (!course.IsClicking()) return false;
        const auto dialog = watch.Look(course.Window());
        if (!dialog) return false;
        if (settings.onModal == OnModal::Wait) return !settings.limit || waited < *settings.limit;
        result.dialog = *dialog;
        End(Ending::DialogOpened);
        return true;
    }

    void LooksAtLimit(milliseconds waited) {
        const bool acts = course.IsActing() || (course.Window() != nullptr && ActsOnWindow(line));
        const bool over = settings.limit ? waited >= *settings.limit : acts && waited >= LimitOf(line);
        if (over) End(acts ? Ending::NoAnswer : Ending::TimedOut);
    }

    void Judge() {
        const HWND window = course.Window();
        if (result.ending == Ending::Done && window != nullptr && HasMoreRightsThanWe(window)) {
            result.ending = Ending::Failed;
            result.reason = AccessDenied();
        } else if (result.ending == Ending::Failed || result.ending == Ending::TimedOut) {
            result.reason = course.WhyItFailed();
            const bool missed = result.reason.code == "control_not_found" || result.reason.code == "action_failed";
            if (missed && !::IsWindow(window)) {
                result.reason = {.code = "window_gone", .sentence = "the window closed while the line ran"};
            }
        } else if (result.ending == Ending::NoAnswer) {
            result.reason = NoAnswer(line, window);
        } else if (result.ending == Ending::DialogOpened && settings.onModal == OnModal::Fail) {
            result.reason = {.code = "dialog_opened", .sentence = "the click opened a dialog that waits for an answer"};
        } else if (result.ending == Ending::WorkerEnded) {
            result.reason = {.code = "worker_ended", .sentence = "the process that carries the lines out has ended"};
        } else if (result.ending == Ending::Interrupted) {
            result.reason = {.code = "interrupted", .sentence = "the run was interrupted"};
        }
    }

    const Settings& settings;
    Worker& worker;
    CommandLine line;
    Clock::time_point begin = Clock::now();
    MessageCollector collected;
    Course course;
    DialogWatch watch;
    LineResult result;
    bool isOver = false;
};

LineResult LineRunner::Run(Worker& worker, const std::wstring& text) const {
    return Attempt(settings, worker, text).Take();
}

}  // namespace dialwright::tools
