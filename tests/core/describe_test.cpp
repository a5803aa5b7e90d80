#include "window/describe.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace dialwright {
namespace {

HWND Handle(std::uintptr_t value) { return reinterpret_cast<HWND>(value); }

TEST(FormatHandleHex, PrintsUpperCaseWithoutPrefixOrLeadingZeros) {
    EXPECT_EQ(L"0", FormatHandleHex(nullptr));
    EXPECT_EQ(L"1A2B", FormatHandleHex(Handle(0x1A2B)));
    EXPECT_EQ(L"FFFFFFFFFFFFFFFF", FormatHandleHex(Handle(~std::uintptr_t{0})));
    EXPECT_EQ(L"1a2b", FormatHandleLowerHex(Handle(0x1A2B)));
}

TEST(FormatRect, PrintsCornersInBrackets) { EXPECT_EQ(L"[10,20]-[110,45]", FormatRect({10, 20, 110, 45})); }

}  // namespace
}  // namespace dialwright
