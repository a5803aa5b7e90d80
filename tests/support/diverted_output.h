#pragma once

namespace dialwright::testing {

/// Puts something else in the place of this process's standard output, where the library copies its log, and gives it
/// back when destroyed.
class DivertedOutput {
public:
    /// A descriptor, which may be closed then; a negative one leaves standard output closed.
    explicit DivertedOutput(int descriptor);
    ~DivertedOutput();
    DivertedOutput(const DivertedOutput&) = delete;
    DivertedOutput& operator=(const DivertedOutput&) = delete;

    /// Before the end of its life.
    void GiveBack();

private:
    int saved;
};

}  // namespace dialwright::testing
