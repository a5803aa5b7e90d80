#include "trace_reader/secret_search.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace dialwright::tools {
namespace {

using Places = std::vector<std::string>;

/// "line name" of all that is found when the text comes in pieces of this size.
Places Find(const std::vector<Secret>& secrets, std::string_view text, std::size_t piece) {
    Places places;
    SecretSearch search(secrets, [&](std::uint64_t line, const std::string& name) {
        places.push_back(std::to_string(line) + " " + name);
    });
    for (std::size_t at = 0; at < text.size(); at += piece) search.Feed(text.substr(at, piece));
    return places;
}

TEST(SecretSearch, FindsEveryLineInPiecesOfAnySize) {
    const std::vector<Secret> secrets = {{.name = "PIN", .value = "hunter22"}, {.name = "KEY", .value = "abab"}};
    constexpr std::string_view kText = "nothing\r\nhunter22 twice hunter22\r\n\r\nabababab\nx hunter22 abab\nhunter2";
    for (std::size_t piece = 1; piece <= kText.size(); ++piece) {
        EXPECT_EQ((Places{"2 PIN", "4 KEY", "5 PIN", "5 KEY"}), Find(secrets, kText, piece)) << piece;
    }
}

struct FormRow {
    std::string value;
    std::string text;
};

TEST(SecretSearch, FindsAValueInEveryForm) {
    const std::vector<FormRow> rows = {
        {.value = R"(a"b\c-d)", .text = R"(he typed a"b\c-d)"},
        {.value = R"(a"b\c-d)", .text = R"(he typed "a\"b\\c-d")"},
        {.value = "100%done!", .text = "he typed 100one!"},
        {.value = "50%% off", .text = "he typed 50% off"},
        {.value = "p\xC3\xA4ss", .text = "he typed p\xC3\xA4ss"},
    };
    for (const FormRow& row : rows) {
        EXPECT_EQ(Places{"1 x"}, Find({{.name = "x", .value = row.value}}, row.text, 1000)) << row.text;
    }
    EXPECT_EQ(Places{}, Find({{.name = "x", .value = "hunter22"}}, "Hunter22 hunter2 2", 1000));
}

TEST(SecretForms, AreNeverShorterThanASecretMayBe) {
    EXPECT_EQ(std::vector<std::string>{"%d%d%d%d"}, FormsOf("%d%d%d%d"));
    EXPECT_EQ(std::vector<std::string>{"plain"}, FormsOf("plain"));
}

TEST(SecretFile, IsReadLineByLine) {
    const SecretFile file = ReadSecretFile("\xEF\xBB\xBF# why\r\nPIN=12345\r\n\r\nKEY= a=b \nLAST=value");
    EXPECT_EQ("", file.problem);
    ASSERT_EQ(3U, file.secrets.size());
    EXPECT_EQ("PIN", file.secrets[0].name);
    EXPECT_EQ("12345", file.secrets[0].value);
    EXPECT_EQ("KEY", file.secrets[1].name);
    EXPECT_EQ(" a=b ", file.secrets[1].value);
    EXPECT_EQ("value", file.secrets[2].value);
}

TEST(SecretFile, IsRefusedWithoutTellingAValue) {
    EXPECT_EQ("it holds no NAME=VALUE", ReadSecretFile("").problem);
    EXPECT_EQ("it holds no NAME=VALUE", ReadSecretFile("# only this\n\n").problem);
    EXPECT_EQ("line 2 has no NAME=VALUE", ReadSecretFile("A=abcd\nhunter22").problem);
    EXPECT_EQ("line 1 has no NAME=VALUE", ReadSecretFile("=hunter22").problem);
    EXPECT_EQ("line 2: the value of PIN is shorter than 4 bytes and would be found everywhere by chance",
              WhatIsTooShort(ReadSecretFile("KEY=1234\nPIN=123").secrets));
}

}  // namespace
}  // namespace dialwright::tools
