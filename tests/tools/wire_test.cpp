#include "run/wire.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "look/unique_handle.h"
#include "support/wait.h"

#include <psapi.h>

namespace dialwright::tools {
namespace {

struct Pipe {
    UniqueHandle read;
    UniqueHandle write;
};

Pipe MakePipe() {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    EXPECT_TRUE(::CreatePipe(&read, &write, nullptr, 0));
    return {.read = UniqueHandle(read), .write = UniqueHandle(write)};
}

std::int64_t MemoryTaken() {
    PROCESS_MEMORY_COUNTERS counters{};
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<std::int64_t>(counters.PagefileUsage);
}

void Send(const Pipe& pipe, std::string_view bytes) {
    DWORD written = 0;
    EXPECT_TRUE(::WriteFile(pipe.write.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
}

bool IsEmpty(const Pipe& pipe) {
    DWORD waiting = 0;
    return ::PeekNamedPipe(pipe.read.get(), nullptr, 0, nullptr, &waiting, nullptr) && waiting == 0;
}

TEST(Wire, CarriesRequestsOfAnyLength) {
    for (const std::size_t units : {std::size_t{0}, std::size_t{1}, std::size_t{65536}, std::size_t{200'000}}) {
        const Pipe pipe = MakePipe();
        const Request request{.kind = RequestKind::Launch,
                              .first = std::wstring(units, L'\x3042'),
                              .second = std::wstring(units / 2, L'b')};
        std::thread writer([&] { EXPECT_TRUE(WriteRequest(pipe.write.get(), request)); });
        const Request read = ReadRequest(pipe.read.get()).value_or(Request{});
        writer.join();
        EXPECT_EQ(request.kind, read.kind);
        EXPECT_TRUE(request.first == read.first && request.second == read.second) << units << " units";
    }
}

TEST(Wire, TakesNoMemoryForALengthThatNobodySends) {
    Pipe pipe = MakePipe();
    constexpr std::uint32_t kUnits = 1U << 28U;
    const std::array<std::uint32_t, 3> head = {1, kUnits, kUnits};
    const std::int64_t before = MemoryTaken();
    std::optional<Request> read;
    std::thread reader([&] { read = ReadRequest(pipe.read.get()); });
    Send(pipe, {reinterpret_cast<const char*>(head.data()), sizeof head});
    Send(pipe, "a beginning");
    // When the reader has taken it, it has a place for the text.
    EXPECT_TRUE(dialwright::testing::WaitUntil([&] { return IsEmpty(pipe); }));
    const std::int64_t taken = MemoryTaken() - before;
    pipe.write.reset();
    reader.join();
    EXPECT_FALSE(read.has_value());
    EXPECT_LT(taken, std::int64_t{16} << 20U);
}

}  // namespace
}  // namespace dialwright::tools
