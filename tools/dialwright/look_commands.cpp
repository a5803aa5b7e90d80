#include <cstdio>
#include <cstdlib>
#include <memory>
#include <regex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "check/source_text.h"
#include "input.h"
#include "look_formats.h"
#include "look_picture.h"
#include "platform/dpi.h"
#include "redacted_look.h"
#include "run/secrets.h"
#include "subcommand.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    std::string className;
    std::string title;
    std::string handle;
    bool literal = false;
    bool unique = false;
    bool json = false;
    PictureFiles files;
    std::string way = "id";
    std::string secretFile;

    [[nodiscard]] WindowCriteria Criteria() const {
        return {.className = Wide(className), .title = Wide(title), .literal = literal};
    }
    [[nodiscard]] NamedBy Way() const {
        return way == "rectangle" ? NamedBy::Rectangle : way == "path" ? NamedBy::Path : NamedBy::Id;
    }
};

using SharedOptions = std::shared_ptr<Options>;

void AddCriteria(CLI::App& command, const SharedOptions& options, bool required) {
    command.add_option("class", options->className, "the window's class, as a command names it")->required(required);
    command.add_option("title", options->title, "the window's title, as a command names it")->required(required);
    command.add_flag("--literal", options->literal, "compare as a command with .NonRegex does");
}

void AddJson(CLI::App& command, const SharedOptions& options) {
    command.add_flag("--json", options->json, "print JSON");
}

/// The windows that a command with these criteria could take; the first of them is the one.
std::vector<WindowInfo> Matching(const Options& options) {
    const WindowMatcher matcher(options.Criteria());
    std::vector<WindowInfo> windows = ListTopLevelWindows();
    std::erase_if(windows, [&](const WindowInfo& window) { return !matcher.Takes(window); });
    return windows;
}

int ComplainOfExpression(const std::regex_error& error) {
    std::fprintf(stderr, "dialwright: class or title is no valid expression: %s\n", error.what());
    return kUsage;
}

int ShowWindows(const Options& options) {
    WriteOutput(FormatWindows(ListTopLevelWindows(), options.json));
    return kDone;
}

int Match(const Options& options) {
    try {
        const std::vector<WindowInfo> windows = Matching(options);
        WriteOutput(FormatMatches(windows, options.json));
        return windows.empty() || (options.unique && windows.size() > 1) ? kFound : kDone;
    } catch (const std::regex_error& error) {
        return ComplainOfExpression(error);
    }
}

WindowInfo WindowToInspect(const Options& options) {
    if (!options.handle.empty()) {
        const auto handle = reinterpret_cast<HWND>(std::strtoull(options.handle.c_str(), nullptr, 16));
        // No command finds a window within another.
        return ReadWindow(::GetAncestor(handle, GA_ROOT));
    }
    const std::vector<WindowInfo> windows = Matching(options);
    return windows.empty() ? WindowInfo() : windows.front();
}

/// Throws std::runtime_error for a file that cannot be read or holds no secrets.
Redactor ReadRedactor(const std::string& secretFile) {
    Redactor redactor;
    if (secretFile.empty()) return redactor;
    const auto bytes = ReadInput(secretFile);
    if (!bytes) throw std::runtime_error("it cannot be read");
    for (const auto& [name, value] : ReadSecretValues(*bytes)) redactor.Hide(value);
    return redactor;
}

int ShowControls(const Options& options, const RedactedLook& look) {
    const auto& [window, controls, blanked] = look;
    WriteOutput(options.json ? ControlsAsJson(window, controls, options.Way())
                             : ControlsAsText(window, controls, options.Way(), options.files.AreWanted()));
    if (!options.files.AreWanted()) return kDone;
    return WritePictures(options.files, window, controls, options.Way(), blanked);
}

int Inspect(const Options& options) {
    if (options.handle.empty() && (options.className.empty() || options.title.empty())) {
        std::fprintf(stderr, "dialwright: inspect wants a class and a title, or --handle\n");
        return kUsage;
    }
    try {
        const Redactor redactor = ReadRedactor(options.secretFile);
        WindowInfo window = WindowToInspect(options);
        if (window.handle == nullptr) {
            std::fprintf(stderr, "dialwright: there is no such window; dialwright windows lists all\n");
            return kFound;
        }
        return ShowControls(options, LookWithoutSecrets(std::move(window), redactor));
    } catch (const std::regex_error& error) {
        return ComplainOfExpression(error);
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "dialwright: %s: %s\n", options.secretFile.c_str(), error.what());
        return kUsage;
    }
}

/// Empty, or what is wrong.
std::string IsHexadecimal(const std::string& text) {
    const std::size_t begin = text.starts_with("0x") || text.starts_with("0X") ? 2 : 0;
    const bool right = text.size() > begin && text.size() <= begin + 16 &&
                       text.find_first_not_of("0123456789abcdefABCDEF", begin) == std::string::npos;
    return right ? "" : text + " is no hexadecimal number";
}

template <class Command>
Action Bind(const SharedOptions& options, Command command) {
    return [options, command] {
        // The rectangles of the library are physical pixels.
        RequestPerMonitorDpiAwareness();
        return command(*options);
    };
}

}  // namespace

Action DefineWindows(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    AddJson(command, options);
    command.footer("In the order in which the library looks at them: the first that matches a command is taken.");
    return Bind(options, &ShowWindows);
}

Action DefineMatch(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    AddCriteria(command, options, true);
    command.add_flag("--unique", options->unique, "several windows that match count as none");
    AddJson(command, options);
    command.footer("Exit codes: 0 a window matches, 1 none (or several, with --unique), 2 usage.");
    return Bind(options, &Match);
}

Action DefineInspect(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    AddCriteria(command, options, false);
    command
        .add_option("--handle", options->handle,
                    "a handle in hexadecimal, of the window or of a control in it, in place of class and title")
        ->check(IsHexadecimal);
    command
        .add_option("--by", options->way,
                    "what the lines name a control by; a path where that would find another control")
        ->check(CLI::IsMember({"id", "path", "rectangle"}));
    command.add_option("--picture", options->files.picture,
                       "a PNG to write: the window, with a number on each control");
    command.add_option("--html", options->files.page, "a page to write: point at a control, and click for its command");
    command.add_option("--secret-file", options->secretFile, "lines NAME=VALUE: no value is shown, nor in the picture");
    AddJson(command, options);
    command.footer(
        "  dialwright inspect Notepad \".*Notepad\"\n"
        "  dialwright inspect Notepad \".*Notepad\" --html notepad.html\n\n"
        "Exit codes: 0 shown, 1 there is no such window or no picture of it, 2 usage or a file that cannot be written.");
    return Bind(options, &Inspect);
}

}  // namespace dialwright::tools
