#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"

namespace dialwright::tools {

/// Values by name.
using SecretValues = std::map<std::wstring, std::wstring, std::less<>>;

/// What a secret file holds. Throws std::runtime_error, which names the line but no value.
[[nodiscard]] SecretValues ReadSecretValues(std::string_view utf8);

/// Where a script takes the texts that it must not hold.
struct SecretSources {
    SecretValues secrets;
    /// Also from the environment of this process.
    [[nodiscard]] std::optional<std::wstring> Find(std::wstring_view kind, const std::wstring& name) const;
};

/// A line with its secrets in place.
struct FilledLine {
    std::wstring text;
    /// The values that were filled in.
    std::vector<std::wstring> used;
    /// The variable that one of them came from; empty where none did.
    std::wstring variable = {};
    /// What is wrong, without any value; empty where nothing is.
    std::wstring problem;
    /// Where, in UTF-16 units from the line's begin.
    std::size_t offset = 0;
};

/// Puts values for ${env:NAME} and ${secret:NAME}, which must be the whole text of a SetText command; $${ stands for ${
/// there. A line with a value gets a timeout behind it, as the library would show a text of digits otherwise.
[[nodiscard]] FilledLine FillSecrets(const std::wstring& line, const SecretSources& sources);

/// Shorter values stand everywhere by chance: hiding them would spoil what we print, and so tell them.
inline constexpr std::size_t kLeastHiddenUnits = 4;

/// Hides values in all that we print.
class Redactor {
public:
    /// A value that is too short is not hidden.
    void Hide(const std::wstring& value);

    /// The UTF-8 text with ***** for each value, also for one as it stands inside a quoted token.
    [[nodiscard]] std::string Clean(std::string text) const;
    [[nodiscard]] std::string Clean(std::wstring_view text) const;
    /// The same of a text that may end within a value, as it was cut or is being typed.
    [[nodiscard]] std::string CleanPart(std::wstring_view text) const;

    [[nodiscard]] static std::string Mask() { return "*****"; }

private:
    /// Longest first, so that a value that holds another is hidden whole.
    std::vector<std::string> hidden;
};

}  // namespace dialwright::tools
