#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "dialwright/dialwright.hpp"

#include <nlohmann/json.hpp>

// The table of lines that all bindings share, against the C and C++ ones.
namespace dialwright::testing {
namespace {

using Json = nlohmann::json;

/// JSON may name half a character, which no UTF-8 can; it is put back in its place here.
constexpr const char* kHalf = "\\ud83d";
constexpr const char* kStandIn = "<half>";

std::wstring FromUtf8(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    const auto size = static_cast<int>(text.size());
    wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
    return wide;
}

Json Table() {
    std::ifstream file(LINE_TABLE, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::string half = std::string(kHalf) + "b";
    for (std::size_t at = text.find(half); at != std::string::npos; at = text.find(half)) {
        text.replace(at, half.size() - 1, kStandIn);
    }
    return Json::parse(text);
}

std::wstring Wide(const Json& json) {
    std::wstring text = FromUtf8(json.get<std::string>());
    const std::size_t at = text.find(FromUtf8(kStandIn));
    if (at != std::wstring::npos) text.replace(at, std::string(kStandIn).size(), 1, L'\xD83D');
    return text;
}

/// Nothing for a value that the compiler refuses: a fraction, null, a list with a text in it.
std::optional<Argument> ArgumentOf(const Json& value) {
    if (value.is_boolean()) return Argument(value.get<bool>());
    if (value.is_number_integer()) return Argument(value.get<int>());
    if (value.is_string()) return Argument(Wide(value));
    if (value.is_object() && value.contains("secret")) return Secret(Wide(value["secret"]));
    if (value.is_object()) return Environment(Wide(value.at("environment")));
    if (!value.is_array()) return std::nullopt;
    for (const Json& number : value) {
        if (!number.is_number_integer()) return std::nullopt;
    }
    return Numbers(value.get<std::vector<int>>());
}

std::optional<std::vector<Argument>> ArgumentsOf(const Json& row) {
    std::vector<Argument> arguments;
    for (const Json& value : row["arguments"]) {
        auto argument = ArgumentOf(value);
        if (!argument) return std::nullopt;
        arguments.push_back(std::move(*argument));
    }
    return arguments;
}

/// The line, or "refused: " and why.
std::wstring Written(const Json& row, const std::vector<Argument>& arguments) {
    const std::wstring suffix = row.value("nonRegex", false) ? DIALWRIGHT_NON_REGEX : L"";
    const auto timeout = row.value("timeoutMs", static_cast<long long>(DIALWRIGHT_DEFAULT_TIMEOUT));
    try {
        return Line(Wide(row["command"]) + suffix, Wide(row["class"]), Wide(row["title"]), arguments, timeout);
    } catch (const LineError& error) {
        return L"refused: " + FromUtf8(error.what());
    }
}

TEST(LineTable, IsWrittenAndRefusedAsInEveryLanguage) {
    int compared = 0;
    const Json table = Table();
    for (const Json& row : table["lines"]) {
        const auto arguments = ArgumentsOf(row);
        if (!arguments) {
            EXPECT_EQ("is neither a text nor a whole number", row["refused"]);
            continue;
        }
        const std::wstring written = Written(row, *arguments);
        if (row.contains("line")) {
            EXPECT_EQ(Wide(row["line"]), written) << row["name"];
        } else {
            EXPECT_EQ(0U, written.find(L"refused: ")) << row["name"] << ::testing::PrintToString(written);
            EXPECT_NE(std::wstring::npos, written.find(Wide(row["refused"])))
                << row["name"] << ::testing::PrintToString(written);
        }
        ++compared;
    }
    EXPECT_LT(60, compared);
}

TEST(LineTable, HasTheCommandsOfTheHeader) {
    const Json commands = Table()["commands"];
    EXPECT_EQ(27U, commands.size());
    for (const auto& [name, count] : commands.items())
        EXPECT_EQ(count, ::DialwrightArgumentsOf(FromUtf8(name).c_str()));
}

TEST(LineTable, HasThePatternsThatMatchOneText) {
    const Json table = Table();
    for (const Json& row : table["patterns"]) EXPECT_EQ(Wide(row["pattern"]), Literal(Wide(row["text"])));
}

TEST(LineTable, HasTheMasksOfTypedTexts) {
    const Json table = Table();
    for (const Json& row : table["masked"]) EXPECT_EQ(Wide(row["masked"]), Mask(Wide(row["line"])));
}

}  // namespace
}  // namespace dialwright::testing
