#include "look/window_picture.h"

#include <gtest/gtest.h>

#include "look/control_tree.h"
#include "support/practice_window.h"

namespace dialwright::tools {
namespace {

constexpr Colour kInk = 0x123456;

LRESULT CALLBACK InkProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        RECT all{};
        ::GetClientRect(hwnd, &all);
        const HBRUSH brush = ::CreateSolidBrush(RGB(0x12, 0x34, 0x56));
        ::FillRect(reinterpret_cast<HDC>(wParam), &all, brush);
        ::DeleteObject(brush);
        return 1;
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

/// A window of this process, which draws itself when it is asked to, screen or no screen.
class OwnWindow {
public:
    OwnWindow() {
        WNDCLASSW definition{};
        definition.lpfnWndProc = &InkProc;
        definition.hInstance = ::GetModuleHandleW(nullptr);
        definition.lpszClassName = L"PictureOfInk";
        ::RegisterClassW(&definition);
        window = ::CreateWindowExW(0, definition.lpszClassName, testing::UniqueTitle().c_str(),
                                   WS_OVERLAPPEDWINDOW | WS_VISIBLE, 30, 40, 300, 200, nullptr, nullptr,
                                   definition.hInstance, nullptr);
    }
    ~OwnWindow() { ::DestroyWindow(window); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    [[nodiscard]] HWND Handle() const { return window; }

private:
    HWND window = nullptr;
};

TEST(WindowPicture, ComesFromTheWindowItselfWhereThatDraws) {
    const OwnWindow own;
    const WindowPicture taken = TakeWindowPicture(own.Handle());
    ASSERT_EQ(nullptr, taken.trouble);
    EXPECT_FALSE(taken.fromScreen);
    EXPECT_EQ(300, taken.picture.width);
    EXPECT_EQ(200, taken.picture.height);
    EXPECT_EQ(kInk, taken.picture.At(150, 100));
}

TEST(WindowPicture, LeavesOutWhatIsToBeBlank) {
    const OwnWindow own;
    ::CreateWindowExW(0, L"EDIT", L"secret", WS_CHILD | WS_VISIBLE | ES_PASSWORD, 20, 20, 100, 20, own.Handle(),
                      nullptr, nullptr, nullptr);
    POINT client{};
    ::ClientToScreen(own.Handle(), &client);
    const int left = static_cast<int>(client.x) - 30 + 20;
    const int top = static_cast<int>(client.y) - 40 + 20;
    const Rectangle told{.left = 200, .top = 150, .right = 220, .bottom = 160};
    const Picture picture = TakeWindowPicture(own.Handle(), {told}).picture;
    const Colour blank = picture.At(210, 155);
    EXPECT_NE(kInk, blank);
    EXPECT_EQ(kInk, picture.At(221, 155));
    for (int x = left; x < left + 100; ++x) EXPECT_EQ(blank, picture.At(x, top + 10)) << x;
    EXPECT_EQ(kInk, picture.At(left - 1, top + 10));
}

TEST(WindowPicture, SaysThatThereIsNone) {
    const OwnWindow own;
    ::ShowWindow(own.Handle(), SW_HIDE);
    EXPECT_STREQ("there is no picture: the window is hidden", TakeWindowPicture(own.Handle()).trouble);
    EXPECT_STREQ("there is no picture: the window is gone", TakeWindowPicture(nullptr).trouble);
}

TEST(PasswordRectangles, KnowPasswordFieldsByOtherNames) {
    WNDCLASSW definition{};
    ::GetClassInfoW(nullptr, L"EDIT", &definition);
    definition.hInstance = ::GetModuleHandleW(nullptr);
    definition.lpszClassName = L"Forms.EDIT.app";
    ::RegisterClassW(&definition);
    const OwnWindow own;
    const HWND named = ::CreateWindowExW(0, definition.lpszClassName, L"secret", WS_CHILD | WS_VISIBLE | ES_PASSWORD,
                                         20, 20, 100, 20, own.Handle(), nullptr, definition.hInstance, nullptr);
    ASSERT_NE(nullptr, named);
    EXPECT_EQ(1U, PasswordRectangles(own.Handle()).size());
    const auto controls = ReadControls(own.Handle());
    ASSERT_EQ(1U, controls.size());
    EXPECT_EQ(ControlKind::Password, controls[0].kind);
    EXPECT_EQ(L"", controls[0].text);
}

}  // namespace
}  // namespace dialwright::tools
