#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_tool.h"
#include "support/temporary_folder.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

using Lines = std::vector<std::string>;

class TraceAudit : public ::testing::Test {
protected:
    [[nodiscard]] Ended Audit(std::vector<std::wstring> options) const {
        options.insert(options.begin(), {L"trace", L"audit", L"--secret-file", folder.File(L"secrets.txt")});
        return RunTool(options);
    }

    [[nodiscard]] std::string Place(const wchar_t* file, const std::string& behind) const {
        return ToUtf8(folder.File(file)) + behind;
    }

    const TemporaryFolder folder;
};

TEST_F(TraceAudit, TellsPlaceAndNameInAllFilesOfTheHost) {
    WriteFile(folder.File(L"secrets.txt"), "PIN=hunter22\nQUOTED=a\"b\\c\nUNUSED=nowhere\n");
    WriteFile(folder.File(L"x_1.log"), "fine\r\n");
    WriteFile(folder.File(L"x_2.log"), "fine\r\nf: \"hunter22\"\r\n");
    WriteFile(folder.File(L"x_1_error.log"), "f: a\\\"b\\\\c\r\n");
    WriteFile(folder.File(L"y_1.log"), "another host: hunter22\r\n");
    const Lines ofHost = {Place(L"x_2.log", ":2: PIN"), Place(L"x_1_error.log", ":1: QUOTED")};
    const Ended ended = Audit({folder.File(L"x_1.log")});
    EXPECT_EQ(1U, ended.code);
    EXPECT_EQ(ofHost, ended.lines);
    const Ended all = Audit({folder.Path() + L"."});
    EXPECT_EQ(1U, all.code);
    EXPECT_EQ(3U, all.lines.size());
    const auto json = nlohmann::json::parse(Audit({folder.File(L"y_1.log"), L"--json"}).Text());
    EXPECT_EQ(
        (nlohmann::json{{"schema", 1}, {"leaks", {{{"file", Place(L"y_1.log", "")}, {"line", 1}, {"name", "PIN"}}}}}),
        json);
}

TEST_F(TraceAudit, EndsWith0WhereNothingLeaks) {
    WriteFile(folder.File(L"secrets.txt"), "PIN=hunter22\n");
    WriteFile(folder.File(L"x_1.log"), "hunter2 2\r\n");
    const Ended ended = Audit({folder.File(L"x_2.log")});
    EXPECT_EQ(0U, ended.code);
    EXPECT_EQ(Lines{}, ended.lines);
}

TEST_F(TraceAudit, RefusesWhatItCannotVouchForAndNeverPrintsAValue) {
    WriteFile(folder.File(L"x_1.log"), "fine\r\n");
    EXPECT_EQ(2U, Audit({folder.File(L"x_1.log")}).code);
    for (const char* secrets : {"", "# none\n", "A=abcd\nhunter22\n", "=hunter22\n", "PIN=unt\n"}) {
        WriteFile(folder.File(L"secrets.txt"), secrets);
        const Ended ended = Audit({folder.File(L"x_1.log")});
        EXPECT_EQ(2U, ended.code) << secrets;
        EXPECT_EQ(std::string::npos, ended.Text().find("unt")) << ended.Text();
    }
    WriteFile(folder.File(L"secrets.txt"), "PIN=hunter22\n");
    EXPECT_EQ(2U, Audit({folder.File(L"nowhere_1.log")}).code);
    EXPECT_EQ(2U, Audit({}).code);
}

}  // namespace
}  // namespace dialwright::testing
