#include <gtest/gtest.h>

#include <charconv>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "trace/line_writer.h"
#include "trace/logger_state.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

constexpr int kThreads = 16;
constexpr int kLines = 50'000;
constexpr int kErrorEvery = 100;

bool IsError(int line) { return line % kErrorEvery == 0; }

void LogFromAllThreads() {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread] {
            for (int line = 1; line <= kLines; ++line) {
                if (IsError(line)) {
                    TraceLine(nullptr, 0, 43, "  error", "thread %d line %d end", thread, line);
                } else {
                    TraceLine(nullptr, 0, 40, "   info", "thread %d line %d end", thread, line);
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
}

/// Takes "thread 3 line 17 end" apart; false for any other line.
bool ReadNumbers(std::string_view line, int& thread, int& number) {
    const std::size_t message = line.find("] thread ");
    if (!line.starts_with("[20") || message == std::string_view::npos) return false;
    const char* const end = line.data() + line.size();
    const auto first = std::from_chars(line.data() + message + 9, end, thread);
    if (first.ec != std::errc() || !std::string_view(first.ptr, end).starts_with(" line ")) return false;
    const auto second = std::from_chars(first.ptr + 6, end, number);
    return second.ec == std::errc() && std::string_view(second.ptr, end) == " end";
}

struct Contents {
    std::vector<std::vector<int>> linesOfThread{kThreads};
    int others = 0;
    int damaged = 0;
};

/// The line numbers of each thread in the order of the files.
Contents Sort(const std::vector<std::string>& lines) {
    Contents contents;
    for (const std::string& line : lines) {
        int thread = -1;
        int number = 0;
        if (ReadNumbers(line, thread, number) && thread >= 0 && thread < kThreads) {
            contents.linesOfThread[static_cast<std::size_t>(thread)].push_back(number);
        } else if (line.starts_with("(Time Zone: ") || line.ends_with("trace stopped") ||
                   line.find("] (Time Zone: ") != std::string::npos) {
            ++contents.others;
        } else {
            ++contents.damaged;
        }
    }
    return contents;
}

class ManyThreads : public TraceFixture {
protected:
    [[nodiscard]] std::vector<std::string> Lines(const wchar_t* name) const { return testing::ReadTrace(File(name)); }

    /// Both files of a pair, the one that was begun later behind the other.
    [[nodiscard]] std::vector<std::string> LinesOfPair(const wchar_t* older, const wchar_t* newer) const {
        std::vector<std::string> lines = Lines(older);
        const std::vector<std::string> rest = Lines(newer);
        lines.insert(lines.end(), rest.begin(), rest.end());
        return lines;
    }
};

TEST_F(ManyThreads, LoseNoLineAndMixNone) {
    Start();
    LogFromAllThreads();
    StopAndRelease();
    const Contents main = Sort(Lines(L"x_1.log"));
    const Contents error = Sort(Lines(L"x_1_error.log"));
    EXPECT_EQ(2, main.others);
    EXPECT_EQ(0, main.damaged);
    EXPECT_EQ(0, error.others + error.damaged);
    for (const auto& lines : main.linesOfThread) {
        ASSERT_EQ(static_cast<std::size_t>(kLines), lines.size());
        for (int i = 0; i < kLines; ++i) ASSERT_EQ(i + 1, lines[static_cast<std::size_t>(i)]);
    }
    for (const auto& lines : error.linesOfThread) {
        ASSERT_EQ(static_cast<std::size_t>(kLines / kErrorEvery), lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) ASSERT_EQ(static_cast<int>(i + 1) * kErrorEvery, lines[i]);
    }
}

TEST_F(ManyThreads, KeepAGapFreeEndWhereRotationDeletes) {
    Start();
    {
        const std::lock_guard lock(Logger().lock);
        Logger().sizeLimitMiB = 1;
    }
    LogFromAllThreads();
    const bool firstIsNewer = Logger().main.current.View() == Logger().main.first.View();
    StopAndRelease();
    const Contents main =
        Sort(firstIsNewer ? LinesOfPair(L"x_2.log", L"x_1.log") : LinesOfPair(L"x_1.log", L"x_2.log"));
    EXPECT_EQ(0, main.damaged);
    EXPECT_EQ(3, main.others);  // one "log rotated at" a file, and "trace stopped"
    std::size_t sum = 0;
    for (const auto& lines : main.linesOfThread) {
        sum += lines.size();
        // A thread may have ended before the older file began.
        if (lines.empty()) continue;
        EXPECT_EQ(kLines, lines.back());
        for (std::size_t i = 1; i < lines.size(); ++i) ASSERT_EQ(lines[i - 1] + 1, lines[i]);
    }
    EXPECT_GT(sum, 5000U);
}

}  // namespace
}  // namespace dialwright
