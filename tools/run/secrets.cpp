#include "run/secrets.h"

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <stdexcept>

#include "check/source_text.h"
#include "look/command_text.h"
#include "platform/text_encoding.h"
#include "platform/windows.h"
#include "run/command_line.h"
#include "secret_file/secret_file.h"

namespace dialwright::tools {
namespace {

constexpr std::wstring_view kKinds[] = {L"env", L"secret"};

struct Reference {
    std::wstring_view kind;
    std::wstring name;
};

bool StartsWithAnyCase(std::wstring_view text, std::wstring_view beginning) {
    return std::ranges::equal(text.substr(0, beginning.size()), beginning, {},
                              [](wchar_t unit) { return std::towlower(unit); });
}

/// Where "${env:" or "${secret:" begins, in any letters, that is not written "$${"; npos where nowhere.
std::size_t FindReference(std::wstring_view text) {
    for (std::size_t at = text.find(L"${"); at != std::wstring_view::npos; at = text.find(L"${", at + 1)) {
        if (at > 0 && text[at - 1] == L'$') continue;
        const std::wstring_view behind = text.substr(at + 2);
        for (const std::wstring_view kind : kKinds) {
            if (StartsWithAnyCase(behind, kind) && behind.substr(kind.size()).starts_with(L":")) return at;
        }
    }
    return std::wstring_view::npos;
}

/// The reference that this text is from end to end.
std::optional<Reference> WholeReference(std::wstring_view text) {
    if (FindReference(text) != 0 || text.find(L'}') != text.size() - 1) return std::nullopt;
    const std::wstring_view inside = text.substr(2, text.size() - 3);
    const std::size_t colon = inside.find(L':');
    const std::wstring_view kind = inside.substr(0, colon);
    if (std::ranges::find(kKinds, kind) == std::end(kKinds)) return std::nullopt;
    return Reference{.kind = kind, .name = std::wstring(inside.substr(colon + 1))};
}

std::wstring WithoutDoubledDollar(std::wstring text) {
    for (std::size_t at = text.find(L"$${"); at != std::wstring::npos; at = text.find(L"$${", at + 1))
        text.erase(at, 1);
    return text;
}

/// What may not be typed, as a word for people; empty where all is right.
std::wstring WhatIsWrongWith(const std::wstring& value) {
    if (value.empty()) return L"is empty";
    constexpr std::wstring_view kRefused(L"\r\n\0", 3);
    return value.find_first_of(kRefused) != std::wstring::npos ? L"holds a line end or a zero character" : L"";
}

/// As it stands between the quotes of a token, and of a JSON text.
std::wstring AsInQuotes(const std::wstring& value) {
    const std::wstring quoted = QuoteToken(value);
    return quoted.size() > value.size() ? quoted.substr(1, quoted.size() - 2) : value;
}

/// As our output shows it.
std::wstring WithoutControls(std::wstring value) {
    std::ranges::replace_if(value, &IsControl, L'\xFFFD');
    return value;
}

FilledLine Problem(const std::wstring& line, std::wstring text, std::size_t offset) {
    return {.text = line, .used = {}, .problem = std::move(text), .offset = offset};
}

/// The line anew, with another text and always a timeout.
std::wstring Rebuild(const CommandLine& command, const std::wstring& text) {
    std::wstring line = command.tokens[0].text;
    for (std::size_t i = 1; i < command.tokens.size(); ++i) {
        line += L" " + QuoteToken(i == command.textToken ? text : command.tokens[i].text);
    }
    if (!command.HasTimeout()) line += L" " + std::to_wstring(kDefaultTimeoutMs);
    return line;
}

}  // namespace

SecretValues ReadSecretValues(std::string_view utf8) {
    const SecretFile file = ReadSecretFile(utf8);
    if (!file.problem.empty()) throw std::runtime_error(file.problem);
    SecretValues values;
    for (const Secret& secret : file.secrets) values[Wide(secret.name)] = Wide(secret.value);
    return values;
}

std::optional<std::wstring> SecretSources::Find(std::wstring_view kind, const std::wstring& name) const {
    if (kind == L"secret") {
        const auto found = secrets.find(name);
        return found == secrets.end() ? std::nullopt : std::optional(found->second);
    }
    const DWORD size = ::GetEnvironmentVariableW(name.c_str(), nullptr, 0);
    if (size == 0) return std::nullopt;
    std::wstring value(size, L'\0');
    value.resize(::GetEnvironmentVariableW(name.c_str(), value.data(), size));
    return value;
}

FilledLine FillSecrets(const std::wstring& line, const SecretSources& sources) {
    const bool hasReference = FindReference(line) != std::wstring::npos;
    if (!hasReference && line.find(L"$${") == std::wstring::npos) return {.text = line, .used = {}, .problem = {}};
    const CommandLine command = ReadCommandLine(line);
    for (std::size_t i = 0; i < command.tokens.size(); ++i) {
        const bool isText = i == command.textToken;
        const bool misplaced = FindReference(command.tokens[i].text) != std::wstring::npos &&
                               !(isText && WholeReference(command.tokens[i].text));
        if (!misplaced) continue;
        return Problem(
            line,
            L"${env:NAME} and ${secret:NAME}, in small letters, must be the whole text of a Window.SetText command",
            command.tokens[i].offset);
    }
    if (!command.HasText()) return {.text = line, .used = {}, .problem = {}};
    const Token& token = command.tokens[command.textToken];
    const auto reference = WholeReference(token.text);
    if (!reference) {
        return {.text = Rebuild(command, WithoutDoubledDollar(token.text)), .used = {}, .problem = {}};
    }
    const auto value = sources.Find(reference->kind, reference->name);
    if (!value) return Problem(line, L"there is no value for " + token.text, token.offset);
    const std::wstring wrong = WhatIsWrongWith(*value);
    if (!wrong.empty()) return Problem(line, L"the value of " + token.text + L" " + wrong, token.offset);
    return {.text = Rebuild(command, *value),
            .used = {*value},
            .variable = reference->kind == L"env" ? reference->name : L"",
            .problem = {}};
}

void Redactor::Hide(const std::wstring& value) {
    if (value.size() < kLeastHiddenUnits) return;
    const std::wstring printable = WithoutControls(value);
    for (const std::wstring& form : {value, AsInQuotes(value), printable, AsInQuotes(printable)}) {
        const std::string utf8 = ToUtf8(form);
        if (std::ranges::find(hidden, utf8) != hidden.end()) continue;
        const auto isShorter = [&](const std::string& other) { return other.size() < utf8.size(); };
        hidden.insert(std::ranges::find_if(hidden, isShorter), utf8);
    }
}

std::string Redactor::Clean(std::string text) const {
    const std::string mask = Mask();
    for (const std::string& value : hidden) {
        for (std::size_t at = text.find(value); at != std::string::npos; at = text.find(value, at + mask.size())) {
            text.replace(at, value.size(), mask);
        }
    }
    return text;
}

std::string Redactor::Clean(std::wstring_view text) const { return Clean(ToUtf8(text)); }

std::string Redactor::CleanPart(std::wstring_view text) const {
    std::string clean = Clean(text);
    for (const std::string& value : hidden) {
        for (std::size_t length = (std::min)(value.size() - 1, clean.size()); length >= kLeastHiddenUnits; --length) {
            if (!clean.ends_with(std::string_view(value).substr(0, length))) continue;
            clean.replace(clean.size() - length, length, Mask());
            break;
        }
    }
    return clean;
}

}  // namespace dialwright::tools
