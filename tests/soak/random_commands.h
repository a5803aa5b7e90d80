#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "model.h"

namespace dialwright::testing {

/// So many records of one function in a row; of those of the position search, whose number depends on the window, any
/// number above 0.
struct FunctionRun {
    std::string_view function;
    int count;
};

inline constexpr int kAnyCount = -1;
inline constexpr std::string_view kEnumeration = "the enumeration of a position search";

struct RandomCommand {
    std::wstring line;
    int result = 1;
    /// Stands in its first record of the trace, and in no other command's of its thread.
    std::string mark;
    /// Its records. A command that fails by its timeout may leave more of them.
    std::vector<FunctionRun> trace;
    bool mayLeaveMore = false;
    /// The control, where there is one.
    std::optional<std::size_t> control;
    /// Leaves a click behind that has to be handled before the next command.
    bool clicks = false;
    /// Takes the focus from another window, or gives it to one, and with it a click that is under way there.
    bool movesFocus = false;
};

/// Commands that the fixture can show, always the same ones from one seed, and what the fixture holds after them.
class RandomCommands {
public:
    RandomCommands(const Fixture& fixture, std::uint64_t seed) : fixture(fixture), model(fixture), random(seed) {}

    /// The next command; the model is then what must be once it was carried out.
    [[nodiscard]] RandomCommand Next();

    [[nodiscard]] Model& Expected() { return model; }

private:
    /// A control, the command's words that address it, and what this leaves in the trace.
    struct Address {
        std::size_t control;
        int way;
        std::wstring argument;
    };
    enum Way { kById, kByPath, kByPosition };

    int Below(int bound) { return static_cast<int>(random() % static_cast<std::uint64_t>(bound)); }
    template <class... Kinds>
    std::size_t PickControl(Kinds... kinds);
    Address PickAddress(std::size_t index);
    std::wstring PickText(std::size_t length);
    [[nodiscard]] std::wstring PathText(const FixtureControl& control) const;

    RandomCommand Begin(const std::wstring& name);
    RandomCommand BeginAt(const Address& address, const std::wstring& stem, const std::wstring& stemByPlace);
    void End(RandomCommand& command) const;
    void NoteLookup(RandomCommand& command, const Address& address) const;
    void ExpectClick(const FixtureControl& control);

    RandomCommand MakeEdit();
    RandomCommand MakeClick();
    RandomCommand MakeCheck();
    RandomCommand MakeRadio();
    RandomCommand MakeDropdown();
    RandomCommand MakeWindow();
    RandomCommand MakeMove();
    RandomCommand MakeClose();
    RandomCommand MakeRefused();
    RandomCommand MakeUnreadablePath();
    RandomCommand MakeLateFailure();

    const Fixture& fixture;
    Model model;
    std::mt19937_64 random;
    int number = 0;
};

}  // namespace dialwright::testing
