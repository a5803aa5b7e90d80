#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "support/diverted_output.h"

namespace dialwright::testing {

/// Stands in for this process's standard output, where the library copies its log, as a pipe that holds next to
/// nothing. Whoever logs waits until we have read: what `action` does happens after the first message that contains
/// `itsWords`, and before the library goes on.
class OutputGate {
public:
    OutputGate(std::string itsWords, std::function<void()> action);
    ~OutputGate();
    OutputGate(const OutputGate&) = delete;
    OutputGate& operator=(const OutputGate&) = delete;

    /// Gives standard output back; all that was logged.
    [[nodiscard]] const std::string& Close();
    [[nodiscard]] bool WasReached() const { return reached; }

private:
    void Read();

    std::string words;
    std::function<void()> then;
    std::array<int, 2> ends;
    DivertedOutput output;
    std::string text;
    std::atomic<bool> reached = false;
    std::thread reader;
};

}  // namespace dialwright::testing
