#include "look/inspect_page.h"

#include <gtest/gtest.h>

#include <string>

namespace dialwright::tools {
namespace {

std::size_t CountOf(const std::string& text, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(piece, at)) != std::string::npos; ++at) ++count;
    return count;
}

TEST(Base64, IsAsEverybodyElseWritesIt) {
    EXPECT_EQ("", Base64(""));
    EXPECT_EQ("Zg==", Base64("f"));
    EXPECT_EQ("Zm8=", Base64("fo"));
    EXPECT_EQ("Zm9v", Base64("foo"));
    EXPECT_EQ("Zm9vYg==", Base64("foob"));
    EXPECT_EQ("+/8A", Base64(std::string("\xFB\xFF\0", 3)));
}

TEST(EscapeForScript, LeavesNothingThatEndsTheElement) {
    EXPECT_EQ(R"({"a": "\u003c/script\u003e\u003c!-- \u0026amp; \" ' {{js}}"})",
              EscapeForScript(R"({"a": "</script><!-- &amp; \" ' {{js}}"})"));
}

TEST(InspectPage, KeepsHostileTextInItsPlace) {
    const std::string page = InspectPage(R"({"title": "</script><script>alert(1)</script>{{css}}{{picture}}"})", "png");
    const std::string plain = InspectPage("{}", "png");
    EXPECT_EQ(CountOf(plain, "<script"), CountOf(page, "<script"));
    EXPECT_EQ(CountOf(plain, "</script"), CountOf(page, "</script"));
    EXPECT_EQ(1U, CountOf(page, "{{css}}{{picture}}"));
    EXPECT_EQ(1U, CountOf(page, "src=\"data:image/png;base64,cG5n\""));
}

TEST(InspectPage, NeedsNothingFromElsewhere) {
    const std::string page = InspectPage("{}", "");
    EXPECT_EQ(0U, CountOf(page, "://"));
    EXPECT_EQ(1U, CountOf(page, "default-src 'none'"));
    EXPECT_EQ(0U, CountOf(page, "{{"));
    EXPECT_EQ(1U, CountOf(page, "src=\"\""));
}

}  // namespace
}  // namespace dialwright::tools
