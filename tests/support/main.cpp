#include <gtest/gtest.h>

#include <cstdio>

namespace {

/// A failure within a LogCapture would end in the captured output, so failures are told on standard error too.
class FailurePrinter : public ::testing::EmptyTestEventListener {
    void OnTestPartResult(const ::testing::TestPartResult& result) override {
        if (!result.failed()) return;
        std::fprintf(stderr, "%s:%d: %s\n", result.file_name() != nullptr ? result.file_name() : "?",
                     result.line_number(), result.message());
    }
};

}  // namespace

int main(int count, char** values) {
    ::testing::InitGoogleTest(&count, values);
    ::testing::UnitTest::GetInstance()->listeners().Append(new FailurePrinter);
    return RUN_ALL_TESTS();
}
