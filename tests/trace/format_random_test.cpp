#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "trace/format_interpreter.h"

// Random formats with random arguments: what is written stays in its area, and plain formats come out as a reference
// that leaves the work to the C runtime says.
namespace dialwright {
namespace {

using Arguments = std::vector<FormatArg>;
using namespace std::string_view_literals;

constexpr int kRoundsPerSeed = 50'000;

class Dice {
public:
    explicit Dice(unsigned seed) : random(seed) {}

    std::size_t Below(std::size_t end) { return random() % end; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    template <typename List>
    const auto& OneOf(const List& list) {
        return list[Below(std::size(list))];
    }
    std::uint64_t Bits() { return std::uint64_t{random()} << 32U | random(); }
    /// Small, at a limit, or anything.
    std::uint64_t Number() {
        static constexpr std::uint64_t kLimits[] = {0,          1,           0x7FFFFFFF,         0x80000000,
                                                    0xFFFFFFFF, 0x100000000, 0x7FFFFFFFFFFFFFFF, 0x8000000000000000};
        switch (Below(4)) {
            case 0: return Below(200);
            case 1: return OneOf(kLimits);
            case 2: return 0 - Below(200);
            default: return Bits();
        }
    }

private:
    std::mt19937 random;
};

/// An area of any size with guards on both sides.
class GuardedArea {
public:
    explicit GuardedArea(std::size_t most) : all(most + 2 * kGuardBytes) {}

    std::span<char> WithSize(std::size_t size) {
        length = size;
        std::fill_n(all.begin(), kGuardBytes, kGuard);
        std::fill_n(all.begin() + static_cast<std::ptrdiff_t>(kGuardBytes + size), kGuardBytes, kGuard);
        return std::span(all).subspan(kGuardBytes, size);
    }
    [[nodiscard]] bool IsIntact() const {
        const std::string_view bytes(all.data(), all.size());
        return bytes.substr(0, kGuardBytes).find_first_not_of(kGuard) == std::string_view::npos &&
               bytes.substr(kGuardBytes + length, kGuardBytes).find_first_not_of(kGuard) == std::string_view::npos;
    }

private:
    static constexpr std::size_t kGuardBytes = 64;
    static constexpr char kGuard = '\xA5';

    std::vector<char> all;
    std::size_t length = 0;
};

std::string RandomWidth(Dice& dice) {
    static constexpr std::string_view kLimits[] = {"4096", "100001", "4294967297", "18446744073709551617",
                                                   "99999999999999999999999999"};
    switch (dice.Below(8)) {
        case 0:
        case 1: return "";
        case 2: return "*";
        case 3: return std::string(dice.OneOf(kLimits));
        case 4: return std::to_string(dice.Below(5000));
        default: return std::to_string(dice.Below(40));
    }
}

std::string RandomSequence(Dice& dice) {
    static constexpr std::string_view kFlags[] = {"", "", "0", " ", "-", "0-", " -", "--"};
    static constexpr std::string_view kLengths[] = {"", "", "l", "ll", "lll"};
    static constexpr std::string_view kConversions[] = {"d", "i", "u", "x", "X", "p", "c", "s", "S", "ws", "w", "%"};
    std::string sequence = "%";
    sequence += dice.OneOf(kFlags);
    sequence += RandomWidth(dice);
    sequence += dice.OneOf(kLengths);
    if (dice.OneIn(10)) return sequence + static_cast<char>(dice.Below(255) + 1);
    return sequence + std::string(dice.OneOf(kConversions));
}

std::string RandomFormat(Dice& dice) {
    std::string format;
    for (std::size_t pieces = dice.Below(7); pieces != 0; --pieces) {
        if (dice.Below(5) < 3) {
            format += RandomSequence(dice);
        } else {
            for (std::size_t bytes = dice.Below(6); bytes != 0; --bytes) {
                format += static_cast<char>(dice.Below(255) + 1);
            }
        }
    }
    if (dice.OneIn(4)) format.resize(dice.Below(format.size() + 1));
    return format;
}

class Pool {
public:
    FormatArg RandomArgument(Dice& dice) const {
        switch (dice.Below(6)) {
            case 0: return RandomNarrow(dice);
            case 1: return RandomWide(dice);
            case 2: return reinterpret_cast<const void*>(dice.Number());
            default: return dice.Number();
        }
    }
    const char* RandomNarrow(Dice& dice) const { return dice.OneIn(8) ? nullptr : dice.OneOf(narrow).c_str(); }
    const wchar_t* RandomWide(Dice& dice) const {
        if (dice.OneIn(8)) return nullptr;
        return dice.OneIn(20) ? dice.OneOf(longWide).c_str() : dice.OneOf(wide).c_str();
    }

private:
    std::vector<std::string> narrow = {
        "", "a", "text", "%d%s%%", "\xC3\xA9\xFF", std::string(70, 'n'), std::string(5000, 'N')};
    std::vector<std::wstring> wide = {L"",       L"a",           L"wide",           L"%d%ws",
                                      L"\xD83D", L"\xDE00 x",    L"\xD83D\xDE00",   L"\x3042\x00E9",
                                      L"\xFFFF", L"\x7F\x80\xB", L"\xDFFF\xD800..", std::wstring(70, L'\x7FF')};
    std::vector<std::wstring> longWide = {std::wstring(1023, L'\x3042'), std::wstring(1024, L'\x3042'),
                                          std::wstring(1025, L'w'), std::wstring(5000, L'\xD800')};
};

std::size_t RandomRoom(Dice& dice) {
    switch (dice.Below(8)) {
        case 0: return dice.Below(4);
        case 1: return dice.Below(4097);
        case 2: return 4096;
        default: return dice.Below(80);
    }
}

class RandomFormats : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomFormats, StayWithinTheirAreaAndFillItInOrder) {
    Dice dice(GetParam());
    const Pool pool;
    GuardedArea area(4096);
    GuardedArea larger(8192);
    for (int round = 0; round < kRoundsPerSeed; ++round) {
        const std::string format = RandomFormat(dice);
        Arguments arguments;
        for (std::size_t count = dice.Below(7); count != 0; --count) arguments.push_back(pool.RandomArgument(dice));
        const std::size_t room = RandomRoom(dice);

        BoundedText text(area.WithSize(room));
        InterpretFormat(text, format.c_str(), FormatArgs(arguments));
        BoundedText more(larger.WithSize(room + dice.Below(4096)));
        InterpretFormat(more, format.c_str(), FormatArgs(arguments));

        ASSERT_TRUE(area.IsIntact() && larger.IsIntact()) << ::testing::PrintToString(format);
        ASSERT_LE(text.Size(), room) << ::testing::PrintToString(format);
        ASSERT_EQ(more.View().substr(0, room), text.View()) << ::testing::PrintToString(format);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomFormats, ::testing::Values(1U, 2U, 3U, 4U));

/// What the C runtime's formatting makes of it.
template <typename... Values>
std::string ByRuntime(const char* format, Values... values) {
    std::array<char, 256> area{};
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wformat-nonliteral"
    const int length = std::snprintf(area.data(), area.size(), format, values...);
#pragma clang diagnostic pop
    return {area.data(), static_cast<std::size_t>(length)};
}

std::string Utf8ByHand(std::wstring_view text) {
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned code = text[i];
        const unsigned next = i + 1 < text.size() ? text[i + 1] : 0;
        if (code / 0x400 == 0x36 && next / 0x400 == 0x37) {
            code = 0x10000 + (code - 0xD800) * 0x400 + (next - 0xDC00);
            ++i;
        } else if (code / 0x800 == 0x1B) {
            code = 0xFFFD;
        }
        if (code < 0x80) {
            utf8 += static_cast<char>(code);
            continue;
        }
        const int tails = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        static constexpr std::array<unsigned, 4> kLeads = {0, 0xC0, 0xE0, 0xF0};
        utf8 += static_cast<char>(kLeads[static_cast<std::size_t>(tails)] | code >> (6 * tails));
        for (int tail = tails - 1; tail >= 0; --tail) utf8 += static_cast<char>(0x80 | (code >> (6 * tail) & 0x3F));
    }
    return utf8;
}

/// A format of known parts, its arguments, and what it has to say.
struct Composition {
    std::string format;
    Arguments arguments;
    std::string expected;
};

enum class Justified { Right, Zeros, Left };

struct Field {
    Justified justified;
    int width;
    bool is64Bit;
};

std::string ExpectedInteger(char conversion, const Field& field, std::uint64_t bits) {
    const auto index = static_cast<std::size_t>(field.justified);
    static constexpr std::array<const char*, 3> kSigned = {"%*lld", "%0*lld", "%-*lld"};
    static constexpr std::array<const char*, 3> kUnsigned = {"%*llu", "%0*llu", "%-*llu"};
    static constexpr std::array<const char*, 3> kLower = {"%llx", "%0*llx", "%-*llx"};
    static constexpr std::array<const char*, 3> kUpper = {"%llX", "%0*llX", "%-*llX"};
    const unsigned long long value = field.is64Bit ? bits : bits & 0xFFFFFFFF;
    if (conversion == 'u') return ByRuntime(kUnsigned[index], field.width, value);
    if (conversion != 'x' && conversion != 'X') {
        const auto number = field.is64Bit ? static_cast<std::int64_t>(bits) : static_cast<std::int32_t>(value);
        return ByRuntime(kSigned[index], field.width, static_cast<long long>(number));
    }
    const char* const format = (conversion == 'x' ? kLower : kUpper)[index];
    if (field.justified != Justified::Right) return "0x" + ByRuntime(format, field.width, value);
    return ByRuntime("%*s", field.width + 2, ("0x" + ByRuntime(format, value)).c_str());
}

void AddField(Dice& dice, const Pool& pool, Composition& whole) {
    static constexpr std::array<std::array<const char*, 2>, 3> kFlags = {{{"", " "}, {"0", "0"}, {"-", "0-"}}};
    static constexpr std::string_view kConversions = "diuxXcspSw";
    const Field field{.justified = static_cast<Justified>(dice.Below(3)),
                      .width = static_cast<int>(dice.Below(30)),
                      .is64Bit = dice.OneIn(2)};
    const char conversion = dice.OneOf(kConversions);
    // A width of an argument cannot be justified to the left.
    const bool byArgument = field.justified != Justified::Left && dice.OneIn(4);
    whole.format += '%';
    whole.format += dice.OneOf(kFlags[static_cast<std::size_t>(field.justified)]);
    whole.format += byArgument ? "*" : std::to_string(field.width);
    whole.format += field.is64Bit ? "ll" : dice.OneIn(2) ? "l" : "";
    whole.format += conversion;
    if (conversion == 'w') whole.format += 's';
    if (byArgument) whole.arguments.emplace_back(field.width);

    if (dice.OneIn(8) && conversion != 'p') {
        whole.arguments.emplace_back(static_cast<const void*>(nullptr));
        return;
    }
    const std::uint64_t bits = dice.Number();
    const char* const narrow = pool.RandomNarrow(dice);
    const wchar_t* const wide = pool.RandomWide(dice);
    switch (conversion) {
        case 'c':
            whole.arguments.emplace_back(bits | 1U);
            whole.expected += ByRuntime("%*c", field.width, static_cast<int>(bits & 0xFF) | 1);
            break;
        case 's':
            whole.arguments.emplace_back(narrow);
            if (narrow == nullptr) break;
            whole.expected += std::string_view(narrow).size() < 100 ? ByRuntime("%*s", field.width, narrow) : narrow;
            break;
        case 'S':
        case 'w':
            whole.arguments.emplace_back(wide);
            if (wide != nullptr) whole.expected += Utf8ByHand(wide);
            break;
        case 'p':
            whole.arguments.emplace_back(reinterpret_cast<const void*>(bits));
            whole.expected += ByRuntime("0x%016llX", static_cast<unsigned long long>(bits));
            break;
        default: whole.arguments.emplace_back(bits); whole.expected += ExpectedInteger(conversion, field, bits);
    }
}

void AddText(Dice& dice, Composition& whole) {
    static constexpr std::string_view kTexts[] = {"", "a", "0", "-5d", " *", "ll", "ws", "\xC3\xA9", "\r\n"};
    const std::string_view text = dice.OneOf(kTexts);
    whole.format += text;
    whole.expected += text;
    if (!dice.OneIn(4)) return;
    whole.format += "%%";
    whole.expected += '%';
}

Composition RandomComposition(Dice& dice, const Pool& pool) {
    Composition whole;
    for (std::size_t fields = dice.Below(5) + 1; fields != 0; --fields) {
        AddText(dice, whole);
        AddField(dice, pool, whole);
    }
    AddText(dice, whole);
    // Conversions whose arguments are missing write nothing.
    if (dice.OneIn(4)) {
        AddText(dice, whole);
        whole.format += "%5d|%-5x|%*u|%p|%c|%5s|%S|%ws";
        whole.expected += "|||||||";
    }
    return whole;
}

class ComposedFormats : public ::testing::TestWithParam<unsigned> {};

TEST_P(ComposedFormats, ComeOutAsTheReferenceSays) {
    Dice dice(GetParam());
    const Pool pool;
    GuardedArea area(32768);
    for (int round = 0; round < kRoundsPerSeed / 2; ++round) {
        const Composition whole = RandomComposition(dice, pool);
        const std::size_t room = dice.OneIn(4) ? dice.Below(whole.expected.size() + 1) : 32768;
        BoundedText text(area.WithSize(room));
        InterpretFormat(text, whole.format.c_str(), FormatArgs(whole.arguments));
        ASSERT_EQ(std::string_view(whole.expected).substr(0, room), text.View())
            << ::testing::PrintToString(whole.format);
        ASSERT_TRUE(area.IsIntact()) << ::testing::PrintToString(whole.format);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ComposedFormats, ::testing::Values(11U, 12U, 13U, 14U));

}  // namespace
}  // namespace dialwright
