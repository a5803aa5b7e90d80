#include "api/logging_setup.h"

#include <gtest/gtest.h>

namespace dialwright {
namespace {

TEST(LogFileName, IsTheHostsNameWithItsSession) {
    EXPECT_EQ("host.exe_1_Dialwright.log", LogFileName("C:\\Apps\\host.exe", 1).View());
    EXPECT_EQ("host.exe_2_Dialwright.log", LogFileName("C:\\Apps\\host.exe", 2).View());
    EXPECT_EQ("host_0_Dialwright.log", LogFileName("\\\\server\\share\\host", 0).View());
    EXPECT_EQ("h.exe_4294967295_Dialwright.log", LogFileName("C:\\h.exe", 4294967295UL).View());
}

TEST(LogFileName, IsTheWholePathWhereThatHasNoBackslash) {
    EXPECT_EQ("host.exe_1_Dialwright.log", LogFileName("host.exe", 1).View());
    EXPECT_EQ("C:/Apps/host.exe_1_Dialwright.log", LogFileName("C:/Apps/host.exe", 1).View());
    EXPECT_EQ("_1_Dialwright.log", LogFileName("C:\\Apps\\", 1).View());
}

}  // namespace
}  // namespace dialwright
