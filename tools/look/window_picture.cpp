#include "look/window_picture.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <type_traits>

#include "look/control_tree.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

constexpr Colour kBlank = 0xB4BBC6;
constexpr UINT kAnswerMs = 500;
/// Draws also what the compositor alone knows of; missing in older headers.
constexpr UINT kRenderFullContent = 2;

struct ContextDeleter {
    void operator()(HDC context) const noexcept { ::DeleteDC(context); }
};
struct BitmapDeleter {
    void operator()(HBITMAP bitmap) const noexcept { ::DeleteObject(bitmap); }
};
using UniqueContext = std::unique_ptr<std::remove_pointer_t<HDC>, ContextDeleter>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

/// The screen's own context, given back at the end.
class ScreenContext {
public:
    ScreenContext() : context(::GetDC(nullptr)) {}
    ~ScreenContext() { ::ReleaseDC(nullptr, context); }
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;

    [[nodiscard]] HDC Get() const { return context; }

private:
    HDC context;
};

/// Lets `draw` draw on a black canvas and returns it; without pixels where that fails.
Picture Drawn(Size size, const std::function<bool(HDC)>& draw) {
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = size.width;
    format.bmiHeader.biHeight = -size.height;  // rows from the top
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const UniqueContext context(::CreateCompatibleDC(nullptr));
    const UniqueBitmap bitmap(::CreateDIBSection(context.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (context == nullptr || bitmap == nullptr) return {};
    const HGDIOBJ before = ::SelectObject(context.get(), bitmap.get());
    const bool drawn = draw(context.get());
    ::GdiFlush();
    ::SelectObject(context.get(), before);
    if (!drawn) return {};
    Picture picture(size.width, size.height);
    const auto* const source = static_cast<const std::uint32_t*>(bits);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) picture.pixels[i] = source[i] & 0xFFFFFFU;
    return picture;
}

bool Answers(HWND window) {
    DWORD_PTR ignored = 0;
    return ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG | SMTO_BLOCK, kAnswerMs, &ignored) != 0;
}

Picture FromWindow(HWND window, Size size, UINT how) {
    return Drawn(size, [&](HDC canvas) { return ::PrintWindow(window, canvas, how) != FALSE; });
}

Picture FromScreen(const RECT& frame, Size size) {
    const ScreenContext screen;
    return Drawn(size, [&](HDC canvas) {
        return ::BitBlt(canvas, 0, 0, size.width, size.height, screen.Get(), frame.left, frame.top, SRCCOPY) != FALSE;
    });
}

/// The first way that shows anything.
WindowPicture Take(HWND root, const RECT& frame, Size size) {
    if (Answers(root)) {
        for (const UINT how : {kRenderFullContent, UINT{0}}) {
            Picture picture = FromWindow(root, size, how);
            if (!IsOneColour(picture)) return {.picture = std::move(picture)};
        }
    }
    Picture picture = FromScreen(frame, size);
    if (!IsOneColour(picture)) return {.picture = std::move(picture), .fromScreen = true};
    return {.picture = {},
            .trouble = "there is no picture: all of it has one colour; is there a screen, and is it unlocked?"};
}

const char* TroubleBefore(HWND root, Size size) {
    constexpr std::int64_t kMostPixels = 100'000'000;
    if (!::IsWindow(root)) return "there is no picture: the window is gone";
    if (::IsIconic(root)) return "there is no picture: the window is minimized; Window.Restore brings it back";
    if (!::IsWindowVisible(root)) return "there is no picture: the window is hidden";
    if (size.width <= 0 || size.height <= 0) return "there is no picture: the window has no size";
    if (std::int64_t{size.width} * size.height > kMostPixels) return "there is no picture: the window is too large";
    return nullptr;
}

void Append(std::vector<Rectangle>& all, const std::vector<Rectangle>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

WindowPicture TakeWindowPicture(HWND window, std::vector<Rectangle> blanked) {
    const HWND root = ::GetAncestor(window, GA_ROOT);
    RECT frame{};
    ::GetWindowRect(root, &frame);
    const Size size{.width = static_cast<int>(frame.right - frame.left),
                    .height = static_cast<int>(frame.bottom - frame.top)};
    if (const char* const trouble = TroubleBefore(root, size)) return {.picture = {}, .trouble = trouble};
    // Before and after, as the window may change in between.
    Append(blanked, PasswordRectangles(root));
    WindowPicture taken = Take(root, frame, size);
    Append(blanked, PasswordRectangles(root));
    for (const Rectangle& rectangle : blanked) FillRectangle(taken.picture, rectangle, kBlank);
    return taken;
}

}  // namespace dialwright::tools
