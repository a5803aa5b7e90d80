#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace dialwright::verify {

enum class Result : std::uint8_t { Passed, Failed, Skipped };

[[nodiscard]] const char* NameOf(Result result);

/// How one step went, and what was seen; of a step that was skipped, why.
struct Verdict {
    Result result = Result::Passed;
    std::string found;
};

[[nodiscard]] Verdict Passed(std::string found);
[[nodiscard]] Verdict Failed(std::string found);
[[nodiscard]] Verdict Skipped(std::string why);
[[nodiscard]] Verdict PassedIf(bool good, std::string found);

struct Step {
    std::string name;
    Verdict verdict;
    double milliseconds = 0;
};

/// What a check tells of its steps. It goes to a file step by step, so that those before a crash or a hang are known,
/// and in which step it was.
class Journal {
public:
    explicit Journal(const std::filesystem::path& path);

    /// Carries the step out; an exception out of it is a failure with the exception's text.
    void Do(const std::string& name, const std::function<Verdict()>& step);

private:
    void Write(const std::string& line);

    std::ofstream file;
};

/// What a journal tells when its check has ended, in whatever way.
struct JournalContent {
    std::vector<Step> steps;
    /// The step that had begun and not ended; empty where there is none.
    std::string unfinished;
};

[[nodiscard]] JournalContent ReadJournal(const std::filesystem::path& path);

}  // namespace dialwright::verify
