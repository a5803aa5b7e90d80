#pragma once

#include <random>
#include <string>
#include <string_view>

namespace dialwright::fuzz {

/// Makes up command lines and scripts: right ones, nearly right ones, and texts of any units but zero.
class Lines {
public:
    explicit Lines(std::uint32_t seed) : random(seed) {}

    [[nodiscard]] std::size_t Below(std::size_t end) { return random() % end; }
    [[nodiscard]] bool OneIn(std::size_t count) { return Below(count) == 0; }

    /// A valid line that no window meets, with the shortest timeout.
    [[nodiscard]] std::wstring Right();
    /// A valid line whose first own argument is no number, so that it fails before a window is looked for.
    [[nodiscard]] std::wstring Unreadable();
    /// A valid line with a few changes, which may leave it valid.
    [[nodiscard]] std::wstring Changed();
    /// Any units but zero; seldom very many.
    [[nodiscard]] std::wstring Junk();
    [[nodiscard]] std::wstring Script();
    /// A path at which there is no program.
    [[nodiscard]] std::wstring NoProgram();

private:
    template <class List>
    const auto& OneOf(const List& list) {
        return list[Below(std::size(list))];
    }
    std::wstring Build(bool readable);
    std::wstring Argument();
    void Change(std::wstring& line);

    std::mt19937 random;
};

}  // namespace dialwright::fuzz
