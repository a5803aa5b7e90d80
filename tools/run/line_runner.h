#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "run/command_line.h"
#include "run/reason.h"
#include "run/worker.h"

namespace dialwright::tools {

/// What to do when a click opens a dialog that somebody has to answer before the call can go on.
enum class OnModal : std::uint8_t {
    Continue,  ///< the line is done; the next one can answer the dialog
    Wait,      ///< until somebody else answers it
    Fail,
};

enum class Ending : std::uint8_t {
    Done,
    Failed,
    DialogOpened,  ///< done, and the worker still waits for the dialog: it must be replaced
    NoAnswer,      ///< the worker waits for a target that hangs: it must be replaced
    TimedOut,      ///< over the limit before the library acted: the worker must be replaced
    WorkerEnded,
    Interrupted,
};

struct LineResult {
    Ending ending = Ending::Done;
    double milliseconds = 0;
    Reason reason;
    /// The dialog's title.
    std::wstring dialog;
    /// The target, where it was found.
    HWND window = nullptr;
    HWND control = nullptr;
    std::vector<LogMessage> messages;
};

/// How long a line may take when it acts on a target that does not answer: what the library waits, 5 seconds, and 10 ms
/// for each character that is typed.
[[nodiscard]] std::chrono::milliseconds LimitOf(const CommandLine& line);

/// Hands one line after another to a worker and watches over it.
class LineRunner {
public:
    struct Settings {
        OnModal onModal = OnModal::Continue;
        /// In place of the line's own limit.
        std::optional<std::chrono::milliseconds> limit;
        /// Asked some times a second: whether the line is to end.
        std::function<bool()> isInterrupted;
        /// Called some times a second while a line waits.
        std::function<void(std::chrono::milliseconds waited)> waiting;
    };

    explicit LineRunner(Settings lineSettings) : settings(std::move(lineSettings)) {}

    [[nodiscard]] LineResult Run(Worker& worker, const std::wstring& text) const;

private:
    class Attempt;

    Settings settings;
};

}  // namespace dialwright::tools
