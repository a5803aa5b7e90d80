#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <string>
#include <string_view>

namespace dialwright::fuzz {

/// The bytes of one try as texts and numbers. Texts are taken from the front, numbers from the back.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : bytes(data, size) {}

    template <class Number>
    Number Any() {
        return bytes.ConsumeIntegral<Number>();
    }
    template <class Number>
    Number Between(Number least, Number most) {
        return bytes.ConsumeIntegralInRange(least, most);
    }
    bool Flag() { return bytes.ConsumeBool(); }
    [[nodiscard]] bool IsEmpty() { return bytes.remaining_bytes() == 0; }

    template <class List>
    const auto& OneOf(const List& list) {
        return list[Between<std::size_t>(0, std::size(list) - 1)];
    }

    std::string Bytes(std::size_t most) { return bytes.ConsumeRandomLengthString(most); }
    std::string RestAsBytes() { return bytes.ConsumeRemainingBytesAsString(); }

    std::wstring Text(std::size_t most) { return Widened(Bytes(most)); }
    std::wstring RestAsText() { return Widened(RestAsBytes()); }

private:
    /// ASCII stays what it is, so that a corpus can be read; other bytes stand for units that matter to somebody.
    static std::wstring Widened(std::string_view narrow) {
        static constexpr std::wstring_view kOthers =
            L"\x00A0\x0085\x00E4\x00DF\x0130\x0131\x1680\x2003\x2028\x2029\x3000\x3042\xD83D\xDE00\xFEFF\xFFFD";
        std::wstring wide;
        wide.reserve(narrow.size());
        for (const char c : narrow) {
            const auto byte = static_cast<unsigned char>(c);
            wide.push_back(byte < 0x80 ? static_cast<wchar_t>(byte) : kOthers[byte % kOthers.size()]);
        }
        return wide;
    }

    FuzzedDataProvider bytes;
};

}  // namespace dialwright::fuzz
