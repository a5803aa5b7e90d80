#include "trace/memory_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

namespace dialwright {
namespace {

constexpr char kUntouched = '\x5A';

struct Freed {
    void operator()(TraceMemLog* log) const { FreeMemoryLog(log); }
};

class MemoryLog : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(nullptr, log);
        for (auto& slot : log->slots) slot.fill(kUntouched);
    }

    void Store(std::string_view line) { StoreInMemoryLog(*log, line); }
    [[nodiscard]] const char* Slot(std::size_t index) const { return log->slots[index].data(); }
    [[nodiscard]] bool IsUntouched(std::size_t index) const {
        const auto& slot = log->slots[index];
        return std::all_of(slot.begin(), slot.end(), [](char byte) { return byte == kUntouched; });
    }

    std::unique_ptr<TraceMemLog, Freed> log{AllocateMemoryLog()};
};

TEST_F(MemoryLog, BeginsWithItsLabelAndNoLines) {
    EXPECT_EQ(0, std::memcmp(log.get(), "TraceMemLogHead\0", 16));
    EXPECT_EQ(0U, log->counter);
}

TEST_F(MemoryLog, LiesInMemoryAsADumpIsRead) {
    Store("first");
    Store("second");
    const auto* const bytes = reinterpret_cast<const char*>(log.get());
    EXPECT_STREQ("TraceMemLogHead", bytes);
    EXPECT_EQ(0, std::memcmp(bytes + 16, "\x02\0\0\0\0\0\0\0", 8));
    EXPECT_STREQ("first", bytes + 24);
    EXPECT_STREQ("second", bytes + 24 + 1024);
    EXPECT_EQ(1'048'600U, sizeof(TraceMemLog));
}

TEST_F(MemoryLog, PutsEachLineIntoTheNextSlot) {
    for (const char* line : {"one", "two", "three"}) Store(line);
    EXPECT_EQ(3U, log->counter);
    EXPECT_STREQ("one", Slot(0));
    EXPECT_STREQ("two", Slot(1));
    EXPECT_STREQ("three", Slot(2));
    EXPECT_TRUE(IsUntouched(3));
    EXPECT_TRUE(IsUntouched(1023));
}

TEST_F(MemoryLog, BeginsAnewAtTheFirstSlotAfter1024Lines) {
    for (int line = 1; line <= 1024; ++line) Store(std::to_string(line));
    EXPECT_EQ(1024U, log->counter);
    EXPECT_STREQ("1", Slot(0));
    EXPECT_STREQ("1024", Slot(1023));
    Store("1025");
    EXPECT_EQ(1025U, log->counter);
    EXPECT_STREQ("1025", Slot(0));
    for (std::size_t slot = 1; slot < kMemoryLogSlots; ++slot) EXPECT_EQ(std::to_string(slot + 1), Slot(slot));
}

TEST_F(MemoryLog, KeepsTheLast1024LinesHoweverManyThereWere) {
    for (int line = 1; line <= 5000; ++line) Store("line " + std::to_string(line));
    EXPECT_EQ(5000U, log->counter);
    for (std::size_t slot = 0; slot < kMemoryLogSlots; ++slot) {
        const std::size_t line = slot + 1 + (slot < 5000 % 1024 ? 4096 : 3072);
        EXPECT_EQ("line " + std::to_string(line), Slot(slot));
    }
    EXPECT_STREQ("TraceMemLogHead", log->label.data());
}

TEST_F(MemoryLog, CountsBeyond32Bits) {
    log->counter = 0xFFFFFFFF;
    Store("in the last slot");
    Store("in the first slot");
    EXPECT_EQ(0x100000001U, log->counter);
    EXPECT_STREQ("in the last slot", Slot(1023));
    EXPECT_STREQ("in the first slot", Slot(0));
}

TEST_F(MemoryLog, CutsALineTo1023Characters) {
    std::string text(5000, ' ');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>('a' + i % 23);
    std::size_t slot = 0;
    for (const std::size_t length : {0U, 1U, 2U, 1021U, 1022U, 1023U, 1024U, 1025U, 2048U, 5000U}) {
        SCOPED_TRACE(length);
        const std::size_t kept = (std::min)(length, std::size_t{1023});
        Store(std::string_view(text).substr(0, length));
        EXPECT_EQ(text.substr(0, kept), Slot(slot));
        EXPECT_TRUE(IsUntouched(slot + 1));
        ++slot;
        EXPECT_EQ(slot, log->counter);
    }
}

TEST_F(MemoryLog, StaysWithinItsBlockWhenTheLastSlotIsFilled) {
    log->counter = 1023;
    Store(std::string(5000, 'x'));
    EXPECT_EQ(std::string(1023, 'x'), Slot(1023));
    EXPECT_TRUE(IsUntouched(0));
    EXPECT_TRUE(IsUntouched(1022));
    EXPECT_EQ(1024U, log->counter);
}

TEST_F(MemoryLog, EndsAShortLineWhereALongOneStood) {
    Store(std::string(1000, 'x'));
    log->counter = 0;
    Store("short");
    EXPECT_STREQ("short", Slot(0));
    log->counter = 0;
    Store("");
    EXPECT_STREQ("", Slot(0));
}

TEST_F(MemoryLog, TakesALineByItsLength) {
    using namespace std::string_view_literals;
    Store("a\0b\r\n\xFF"sv);
    EXPECT_EQ(0, std::memcmp("a\0b\r\n\xFF\0", Slot(0), 7));
    Store("not all of this"sv.substr(0, 7));
    EXPECT_STREQ("not all", Slot(1));
}

TEST(FreeMemoryLogOfNothing, DoesNothing) { FreeMemoryLog(nullptr); }

}  // namespace
}  // namespace dialwright
