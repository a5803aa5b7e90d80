#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_tool.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {

using Json = nlohmann::json;

[[nodiscard]] inline bool Holds(const Ended& ended, const std::string& text) {
    return ended.Text().find(text) != std::string::npos;
}

[[nodiscard]] inline std::string TextOfFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs scripts on a practice window of its own.
class RunProgram : public ::testing::Test {
protected:
    [[nodiscard]] std::wstring Script(const std::string& text, const std::wstring& name = L"script.txt") const {
        WriteFile(folder.File(name), text);
        return folder.File(name);
    }

    /// A line for the target, in UTF-8.
    [[nodiscard]] std::string Line(const std::wstring& name, const std::wstring& rest) const {
        return ToUtf8(target.Line(name, rest)) + "\n";
    }
    [[nodiscard]] std::string BriefLine(const std::wstring& name, const std::wstring& rest) const {
        return ToUtf8(target.BriefLine(name, rest)) + "\n";
    }

    /// Quietly: --annotate none, so that the tests run the same under GitHub.
    [[nodiscard]] static Ended Run(std::vector<std::wstring> arguments, const std::string& input = "") {
        arguments.insert(arguments.begin(), L"run");
        arguments.emplace_back(L"--annotate");
        arguments.emplace_back(L"none");
        return RunTool(arguments, input);
    }

    /// The only JSON document among the lines, which also hold the sum from standard error.
    [[nodiscard]] static Json JsonOf(const Ended& ended) {
        const std::string text = ended.Text();
        const std::size_t end = text.rfind("\n}");
        return Json::parse(text.substr(text.find('{'), end + 2 - text.find('{')));
    }

    const TemporaryFolder folder;
    PracticeWindow target{kPlainClass};
};

}  // namespace dialwright::testing
