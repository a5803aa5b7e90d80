#include "script/dialog_script_manager.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "script/exception_boundary.h"
#include "support/log_capture.h"

namespace dialwright {
namespace {

using testing::LogCapture;

TEST(DialogScriptManager, HoldsNothingButItsCommandTable) {
    EXPECT_EQ(sizeof(std::map<std::wstring, TokenCounts>), sizeof(DialogScriptManager));
    EXPECT_FALSE(std::is_polymorphic_v<DialogScriptManager>);
}

TEST(ExceptionBoundary, TurnsAStandardExceptionIntoALineAndZero) {
    const LogCapture log;
    EXPECT_EQ(0, WithExceptionBoundary("tag", "command execution", []() -> int { throw std::bad_alloc(); }));
    EXPECT_EQ(0, WithExceptionBoundary("tag", "script validation", []() -> int { throw std::logic_error("50% %s"); }));
    EXPECT_EQ("tag: Exception during command execution: " + std::string(std::bad_alloc().what()) +
                  "\ntag: Exception during script validation: 50% %s\n",
              log.Text());
}

TEST(ExceptionBoundary, LetsWhatIsNoStandardExceptionPass) {
    EXPECT_THROW((void)WithExceptionBoundary("tag", "command execution", []() -> int { throw 42; }), int);
}

TEST(ExceptionBoundary, PassesTheResultOn) {
    EXPECT_EQ(1, WithExceptionBoundary("tag", "command execution", [] { return 1; }));
}

}  // namespace
}  // namespace dialwright
