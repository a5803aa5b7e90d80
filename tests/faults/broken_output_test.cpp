#include <gtest/gtest.h>

#include <array>
#include <string>

#include "library.h"
#include "platform/windows.h"
#include "support/diverted_output.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"

#include <fcntl.h>
#include <io.h>

// A host whose standard output takes nothing: its commands are carried out all the same.
namespace dialwright::testing {
namespace {

/// Standard output as the way says, until it is destroyed.
class SpoiltOutput {
public:
    explicit SpoiltOutput(const std::string& way) : descriptor(Open(way)), output(descriptor) {
        if (descriptor >= 0) ::_close(descriptor);
    }

private:
    static int Open(const std::string& way) {
        if (way == "Closed") return -1;
        if (way == "AFullDisk") {
            const int disk = ::_open("Z:\\dev\\full", _O_WRONLY | _O_BINARY);
            EXPECT_GE(disk, 0);
            return disk;
        }
        std::array<int, 2> ends{};
        EXPECT_EQ(0, ::_pipe(ends.data(), 4096, _O_BINARY));
        ::_close(ends[0]);
        return ends[1];
    }

    int descriptor;
    DivertedOutput output;
};

class BrokenOutput : public ::testing::TestWithParam<const char*> {};

TEST_P(BrokenOutput, KeepsNoCommandFromBeingCarriedOut) {
    const PracticeWindow target(kPlainClass);
    int succeeded = 0;
    int failed = -1;
    {
        const SpoiltOutput output(GetParam());
        for (int i = 0; i < 50; ++i) {
            succeeded += ExecuteCommand(target.Line(L"Window.SelectDropdown.Index", L"51 " + std::to_wstring(i % 3)));
        }
        succeeded += ExecuteCommand(target.Line(L"Window.SetText", L"12 typed"));
        failed = ExecuteCommand(target.Line(L"Window.ClickButton", L"4711 150"));
    }
    EXPECT_EQ(51, succeeded);
    EXPECT_EQ(0, failed);
    EXPECT_EQ(1, SelectionOf(target.Control(51)));
    EXPECT_EQ(L"typed", TextOf(target.Control(12)));
}

INSTANTIATE_TEST_SUITE_P(Is, BrokenOutput, ::testing::Values("Closed", "ABrokenPipe", "AFullDisk"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace dialwright::testing
