#include <gtest/gtest.h>

#include <string>

#include "library.h"
#include "output_gate.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

// Controls that go, or go and come again, between two steps of one command.
namespace dialwright::testing {
namespace {

TEST(VanishingControl, BetweenLookupAndTypingIsNotNoticed) {
    PracticeWindow target(kPlainClass);
    OutputGate gate("Setting text on control", [&] { target.Do(L"destroy 12"); });
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.SetText", L"12 text 20000")));
    const std::string& log = gate.Close();
    EXPECT_TRUE(log.ends_with("Window::SimulateMouseClick: Failed to get control rect - Error: 1400\n")) << log;
    EXPECT_TRUE(::IsWindow(target.Handle()));
}

class RecreatedCheckBox : public ::testing::TestWithParam<const char*> {
protected:
    /// Another control with the ID, the place and, as the first child, the path of the one that goes.
    static void Recreate(PracticeWindow& target) {
        target.Do(L"destroy 77");
        target.Do(L"create check 77 500,20,100,18 0 another");
    }
};

TEST_P(RecreatedCheckBox, IsSetByTheNextAttempt) {
    PracticeWindow target(kPlainClass);
    target.Do(L"create check 77 500,20,100,18 0 one");
    const HWND first = target.Control(77);
    const std::string way = GetParam();
    std::wstring line = target.Line(L"Window.SetCheckbox", L"77 1 20000");
    if (way == "ByPath") line = target.Line(L"Window.SetCheckbox.ByPath", L"27 1 20000");
    if (way == "ByPosition") {
        const std::wstring place = RectangleArgument(RelativeRectOf(first));
        line = target.Line(L"Window.SetCheckbox.ByPosition", place + L" 0 1 20000");
    }
    const std::string words = way == "ByPath"       ? "Final control HWND found:"
                              : way == "ByPosition" ? "Position search successful:"
                                                    : "Found matching";
    OutputGate gate(words, [&] { Recreate(target); });
    EXPECT_EQ(1, ExecuteCommand(line));
    const std::string& log = gate.Close();
    EXPECT_NE(std::string::npos, log.find("Control (0x" + Hex(first) + ") is not a checkbox/radio button")) << log;
    EXPECT_NE(first, target.Control(77));
    EXPECT_EQ(1, CheckStateOf(target.Control(77)));
}

INSTANTIATE_TEST_SUITE_P(Found, RecreatedCheckBox, ::testing::Values("ById", "ByPath", "ByPosition"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace dialwright::testing
