#include "trace_reader/file_pairs.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temporary_folder.h"
#include "trace_reader/record_source.h"

namespace dialwright::tools {
namespace {

using dialwright::testing::TemporaryFolder;
using dialwright::testing::WriteFile;

struct PairRow {
    std::wstring path;
    std::wstring name;
    std::wstring first;
    std::wstring second;
    bool isError;
};

TEST(TracePairs, AreToldByEitherName) {
    const std::vector<PairRow> rows = {
        {L"C:\\t\\h.exe_1_D_1.log", L"h.exe_1_D.log", L"C:\\t\\h.exe_1_D_1.log", L"C:\\t\\h.exe_1_D_2.log", false},
        {L"C:/t/h.exe_1_D_2.log", L"h.exe_1_D.log", L"C:/t/h.exe_1_D_1.log", L"C:/t/h.exe_1_D_2.log", false},
        {L"x_2_error.log", L"x_error.log", L"x_1_error.log", L"x_2_error.log", true},
        {L"x_1_pid_42.log", L"x_pid_42.log", L"x_1_pid_42.log", L"x_2_pid_42.log", false},
        {L"x_1_error_pid_42.log", L"x_error_pid_42.log", L"x_1_error_pid_42.log", L"x_2_error_pid_42.log", true},
        {L"x_1_2.log", L"x_1.log", L"x_1_1.log", L"x_1_2.log", false},
        {L"x_3.log", L"x_3.log", L"x_3.log", L"", false},
        {L"x_1_pid_.log", L"x_1_pid_.log", L"x_1_pid_.log", L"", false},
        {L"notes.txt", L"notes.txt", L"notes.txt", L"", false},
    };
    for (const PairRow& row : rows) {
        const TracePair pair = PairOf(row.path);
        EXPECT_EQ(row.name, pair.name);
        EXPECT_EQ(row.first, pair.first);
        EXPECT_EQ(row.second, pair.second);
        EXPECT_EQ(row.isError, pair.isError);
    }
}

TEST(TracePairs, AreToldWhateverTheProcessIdLooksLike) {
    for (const std::wstring id : {L"1", L"2", L"12", L"1234", L"21648", L"31"}) {
        for (const std::wstring error : {L"", L"_error"}) {
            const std::wstring rest = error + L"_pid_" + id + L".log";
            for (const wchar_t* number : {L"_1", L"_2"}) {
                const TracePair pair = PairOf(L"h.exe_1_D" + std::wstring(number) + rest);
                EXPECT_EQ(L"h.exe_1_D" + rest, pair.name);
                EXPECT_EQ(L"h.exe_1_D_1" + rest, pair.first);
                EXPECT_EQ(L"h.exe_1_D_2" + rest, pair.second);
            }
        }
    }
}

TEST(TracePairs, HaveMainAndErrorFiles) {
    const std::vector<std::wstring> all = {L"t\\x_1_pid_4.log", L"t\\x_2_pid_4.log", L"t\\x_1_error_pid_4.log",
                                           L"t\\x_2_error_pid_4.log"};
    EXPECT_EQ(all, MainAndErrorFiles(PairOf(all[0])));
    EXPECT_EQ(all, MainAndErrorFiles(PairOf(all[3])));
    EXPECT_EQ(std::vector<std::wstring>{L"notes.txt"}, MainAndErrorFiles(PairOf(L"notes.txt")));
}

TEST(TracePairs, OfAFolderAreFoundOnce) {
    const TemporaryFolder folder;
    for (const wchar_t* name : {L"b_2.log", L"a_1.log", L"a_2.log", L"a_1_error.log", L"other.log", L"a_1.txt"}) {
        WriteFile(folder.File(name), "x");
    }
    std::vector<std::wstring> names;
    for (const TracePair& pair : PairsIn(folder.Path())) names.push_back(pair.name);
    EXPECT_EQ((std::vector<std::wstring>{L"a.log", L"a_error.log", L"b.log"}), names);
    EXPECT_TRUE(PairsIn(folder.File(L"nowhere")).empty());
    EXPECT_TRUE(IsFolder(folder.Path()));
    EXPECT_FALSE(IsFolder(folder.File(L"other.log")));
}

class JoinedTraces : public ::testing::Test {
protected:
    /// A line of this second.
    static std::string Line(const std::string& second, const std::string& message) {
        return "[2025-09-08 14:05:" + second + ".0000000 UTC+00:00] [1:1] [D  40    info] f: " + message;
    }
    void Write(const wchar_t* name, const std::string& text) const { WriteFile(folder.File(name), text); }
    [[nodiscard]] std::string Joined(const std::vector<std::wstring>& names) const {
        std::vector<TracePair> pairs;
        for (const std::wstring& name : names) pairs.push_back(PairOf(folder.File(name)));
        JoinedRecords records(pairs);
        std::string text;
        for (auto record = records.Next(); record; record = records.Next()) {
            text += record->text.substr(record->text.find_last_of(' ') + 1);
        }
        EXPECT_TRUE(records.Broken().empty());
        return text;
    }

    const TemporaryFolder folder;
};

TEST_F(JoinedTraces, BeginWithTheOlderFile) {
    Write(L"x_1.log", "(Time Zone: X) log rotated at x\r\n" + Line("20", "c") + "\r\n" + Line("30", "d") + "\r\n");
    Write(L"x_2.log", Line("10", "a") + "\r\n" + Line("15", "b") + "\r\n");
    EXPECT_EQ("abxcd", Joined({L"x_1.log"}));
    EXPECT_EQ("abxcd", Joined({L"x_2.log"}));
}

TEST_F(JoinedTraces, OfOneFileArePossible) {
    Write(L"x_2.log", Line("10", "a") + "\r\n" + Line("05", "b") + "\r\ntorn");
    EXPECT_EQ("abtorn", Joined({L"x_1.log"}));
    EXPECT_EQ("", Joined({L"nothing_1.log"}));
}

TEST_F(JoinedTraces, OfSeveralHostsAreInTheOrderOfTime) {
    Write(L"x_1.log", Line("10", "a") + "\r\ntorn\r\n" + Line("30", "c") + "\r\n" + Line("40", "e") + "\r\n");
    Write(L"y_1.log", Line("20", "b") + "\r\n" + Line("40", "f") + "\r\n");
    EXPECT_EQ("atornbcef", Joined({L"x_1.log", L"y_1.log"}));
    EXPECT_EQ("atornbcfe", Joined({L"y_1.log", L"x_1.log"}));
}

}  // namespace
}  // namespace dialwright::tools
