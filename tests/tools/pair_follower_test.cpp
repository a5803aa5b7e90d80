#include "trace_reader/pair_follower.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace dialwright::tools {
namespace {

using dialwright::testing::ReadFile;
using dialwright::testing::TemporaryFolder;
using dialwright::testing::WriteFile;

using Records = std::vector<std::string>;

constexpr std::uint64_t kAll = UINT64_MAX;

class PairFollowing : public ::testing::Test {
protected:
    void Write(const wchar_t* name, const std::string& text) const { WriteFile(folder.File(name), text); }
    void Append(const wchar_t* name, const std::string& text) const {
        WriteFile(folder.File(name), ReadFile(folder.File(name)) + text);
    }
    [[nodiscard]] PairFollower Follow(std::uint64_t lastBytes = kAll) const {
        return {PairOf(folder.File(L"x_1.log")), lastBytes};
    }
    static Records Poll(PairFollower& follower) {
        Records records;
        follower.Poll([&](const std::string& record) { records.push_back(record); });
        return records;
    }

    const TemporaryFolder folder;
};

TEST_F(PairFollowing, HandsOnEachRecordOnceAndTheLastWhenNothingIsAdded) {
    Write(L"x_1.log", "a\r\nb\r\n");
    PairFollower follower = Follow();
    EXPECT_EQ(Records{"a"}, Poll(follower));
    EXPECT_EQ(Records{"b"}, Poll(follower));
    EXPECT_EQ(Records{}, Poll(follower));
    Append(L"x_1.log", "c\r\nto");
    EXPECT_EQ(Records{"c"}, Poll(follower));
    EXPECT_EQ(Records{}, Poll(follower));
    Append(L"x_1.log", "rn\r\n");
    EXPECT_EQ(Records{}, Poll(follower));
    EXPECT_EQ(Records{"torn"}, Poll(follower));
    EXPECT_EQ(0, follower.Losses());
}

TEST_F(PairFollowing, WaitsForAFileAndBeginsWithItsFirstLine) {
    PairFollower follower = Follow(0);
    EXPECT_EQ(Records{}, Poll(follower));
    Write(L"x_2.log", "a\r\nb\r\n");
    EXPECT_EQ(Records{"a"}, Poll(follower));
    EXPECT_EQ(Records{"b"}, Poll(follower));
}

TEST_F(PairFollowing, BeginsInTheNewerFileWithWholeLines) {
    Write(L"x_1.log", "old\r\n");
    Write(L"x_2.log", "first\r\nsecond\r\nthird\r\n");
    PairFollower follower = Follow(16);
    EXPECT_EQ(Records{}, Poll(follower));
    EXPECT_EQ(Records{"third"}, Poll(follower));
}

TEST_F(PairFollowing, GoesToAndFroWithTheHost) {
    Write(L"x_1.log", "a\r\n");
    PairFollower follower = Follow();
    EXPECT_EQ(Records{}, Poll(follower));
    Append(L"x_1.log", "b\r\nhalf");
    Write(L"x_2.log", "c\r\n");
    EXPECT_EQ((Records{"a", "b", "half"}), Poll(follower));
    EXPECT_EQ(Records{"c"}, Poll(follower));
    ::DeleteFileW(folder.File(L"x_1.log").c_str());
    EXPECT_EQ(Records{}, Poll(follower));
    Write(L"x_1.log", "d\r\n");
    EXPECT_EQ(Records{}, Poll(follower));
    EXPECT_EQ(Records{"d"}, Poll(follower));
    EXPECT_EQ(0, follower.Losses());
}

TEST_F(PairFollowing, TellsWhenAFileWentBeforeItWasRead) {
    Write(L"x_1.log", "first\r\n");
    PairFollower follower = Follow();
    EXPECT_EQ(Records{}, Poll(follower));
    // The host fills both files before the next look; "first" was read, and what came behind it is gone.
    Write(L"x_2.log", "second\r\n");
    Write(L"x_1.log", "third, longer than the first\r\n");
    EXPECT_EQ((Records{"first", "second"}), Poll(follower));
    EXPECT_EQ(1, follower.Losses());
    EXPECT_EQ(Records{"third, longer than the first"}, Poll(follower));
}

TEST_F(PairFollowing, FollowsAFileThatIsNoneOfAPair) {
    Write(L"notes.log", "a\r\n");
    PairFollower follower(PairOf(folder.File(L"notes.log")), kAll);
    EXPECT_EQ(Records{}, Poll(follower));
    Append(L"notes.log", "b\r\n");
    EXPECT_EQ(Records{"a"}, Poll(follower));
    EXPECT_EQ(Records{"b"}, Poll(follower));
}

}  // namespace
}  // namespace dialwright::tools
