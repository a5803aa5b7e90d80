#pragma once

#include <chrono>
#include <string>

namespace dialwright::tools {

/// One line on standard error that tells what is waited for; nothing where that is no terminal. It is wiped out by the
/// destructor and before other output.
class ProgressLine {
public:
    ProgressLine();
    ~ProgressLine() { Wipe(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Show(const std::string& text, std::chrono::milliseconds waited);
    void Wipe();

private:
    bool isTerminal;
    bool isShown = false;
};

}  // namespace dialwright::tools
