#include <gtest/gtest.h>

#include "support/child_process.h"
#include "support/wait.h"

namespace dialwright {
namespace {

class StandardOutput : public ::testing::TestWithParam<const wchar_t*> {};

TEST_P(StandardOutput, NeverHarmsTheHost) {
    testing::ChildProcess host(L"output_host.exe", {GetParam()});
    EXPECT_EQ(7U, host.WaitForExit(testing::kPatienceMs));
}

INSTANTIATE_TEST_SUITE_P(InABadWay, StandardOutput,
                         ::testing::Values(L"sound", L"closed-descriptor", L"closed-stream", L"wide-mode", L"utf8-mode",
                                           L"read-only", L"full", L"broken-pipe", L"own-handler"),
                         [](const auto& info) {
                             std::string name;
                             for (const wchar_t* c = info.param; *c != 0; ++c) {
                                 if (*c != L'-') name.push_back(static_cast<char>(*c));
                             }
                             return name;
                         });

TEST(StandardOutputCopy, ReachesThePipeOfAHostAtOnce) {
    testing::ChildProcess host(L"output_host.exe", {L"waiting"});
    EXPECT_EQ("Host: even \xE3\x81\x82", host.ReadLine(testing::kPatienceMs));
}

}  // namespace
}  // namespace dialwright
