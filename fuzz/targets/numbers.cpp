#include "language/numbers.h"

#include <cerrno>
#include <optional>
#include <stdexcept>

#include "language/by_hand.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

constexpr std::uint64_t kTwoTo31 = std::uint64_t{1} << 31U;
constexpr std::uint64_t kTwoTo63 = std::uint64_t{1} << 63U;
constexpr std::uint64_t kMostUnsigned = 0xFFFFFFFF;

enum class Outcome : std::uint8_t { Value, NoDigits, OutOfRange };

template <class Convert>
Outcome OutcomeOf(Convert convert, const char* noDigits, const char* outOfRange) {
    try {
        convert();
        return Outcome::Value;
    } catch (const std::invalid_argument& error) {
        Require(error.what() == std::string(noDigits), "the text of no digits is fixed");
        return Outcome::NoDigits;
    } catch (const std::out_of_range& error) {
        Require(error.what() == std::string(outOfRange), "the text of out of range is fixed");
        return Outcome::OutOfRange;
    }
}

Outcome Expected(const std::optional<testing::NumberByHand>& number, std::uint64_t below, std::uint64_t above) {
    if (!number) return Outcome::NoDigits;
    return number->IsWithin(below, above) ? Outcome::Value : Outcome::OutOfRange;
}

}  // namespace

void Try(Input input) {
    const std::wstring text = input.RestAsText();
    const auto byHand = testing::ReadNumberByHand(text);
    const auto signedBits = byHand ? (byHand->isNegative ? 0 - byHand->magnitude : byHand->magnitude) : 0;
    errno = EDOM;

    int value = 4711;
    const Outcome asInt = Expected(byHand, kTwoTo31, kTwoTo31 - 1);
    Require(TryParseInt(text, &value) == (asInt == Outcome::Value), "a number of 32 bits is one by hand, too");
    Require(value == (asInt == Outcome::Value ? static_cast<int>(signedBits) : 4711), "and has the same value");

    int converted = value;
    Require(OutcomeOf([&] { converted = ConvertToInt(text); }, "invalid stoi argument", "stoi argument out of range") ==
                asInt,
            "converting fails as it does by hand");
    Require(converted == value, "both ways give the same");

    std::uint32_t bits = 0;
    const Outcome asUnsigned = Expected(byHand, kMostUnsigned, kMostUnsigned);
    Require(OutcomeOf([&] { bits = ConvertToUnsigned(text); }, "invalid stoul argument",
                      "stoul argument out of range") == asUnsigned,
            "converting to unsigned fails as it does by hand");
    Require(asUnsigned != Outcome::Value || bits == static_cast<std::uint32_t>(signedBits), "a minus wraps around");

    Require(ReadsAsInteger(text) == (Expected(byHand, kTwoTo63, kTwoTo63 - 1) == Outcome::Value),
            "what reads as a number fits 64 bits");
    Require(errno == EDOM, "errno stays the host's");
}

}  // namespace dialwright::fuzz
