#ifndef DIALWRIGHT_DIALWRIGHT_HPP
#define DIALWRIGHT_DIALWRIGHT_HPP

/*
 * Dialwright for C++17, header only: loads Dialwright.dll at run time and throws where a call fails.
 *
 *     dialwright::Library library;
 *     const unsigned long process = library.Launch(L"notepad.exe");
 *     library.Execute(dialwright::Line(L"Window.SetText.Path", L"Notepad", L".*", {L"1", L"typed"}, 5000));
 *
 * Every call blocks its thread until it is done, and handles no messages meanwhile: do not call from the thread of a
 * user interface. Nothing here touches standard output; the library itself copies its log there.
 */

#include <string>
#include <utility>
#include <vector>

#include "dialwright_errors.h"
#include "dialwright_line.hpp"
#include "dialwright_loader.h"

namespace dialwright {

/// A call of the library that failed.
class CallError : public Error {
public:
    CallError(const std::wstring& command, std::vector<std::wstring> lines)
        : Error(Sentence(command, lines)), command(command), lines(std::move(lines)) {}

    /// The line or the script, with its typed texts hidden; of a launch the program alone.
    [[nodiscard]] const std::wstring& Command() const noexcept { return command; }

    /// What the library wrote into its error file meanwhile, "function: message"; empty where that cannot be read.
    [[nodiscard]] const std::vector<std::wstring>& Lines() const noexcept { return lines; }

private:
    static std::wstring Sentence(const std::wstring& command, const std::vector<std::wstring>& lines) {
        std::wstring sentence = L"failed: " + command;
        for (const std::wstring& line : lines) sentence += L"\n    " + line;
        return sentence;
    }

    std::wstring command;
    std::vector<std::wstring> lines;
};

/// The library, loaded for as long as this object lives. Its functions may be called from several threads at once. A
/// text that holds a zero character, at which the library would stop reading, is refused with an Error.
class Library {
public:
    /// Loads from this full path; without one, Dialwright.dll beside the program. Throws Error with the reason.
    explicit Library(const std::wstring& path = L"") {
        wchar_t why[DIALWRIGHT_LOADER_MESSAGE_UNITS];
        RefuseZero(path);
        if (::DialwrightLoad(&library, path.empty() ? nullptr : path.c_str(), why, DIALWRIGHT_LOADER_MESSAGE_UNITS) ==
            0) {
            throw Error(why);
        }
    }
    /// Blocks a little more than 100 ms. No call may run.
    ~Library() { ::DialwrightFree(&library); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Whether the shape of a line, or of every line of a script, is right. Touches no window.
    [[nodiscard]] bool Validate(const std::wstring& line) const { return library.validateCommand(Text(line)) == 1; }
    [[nodiscard]] bool ValidateScript(const std::wstring& script) const {
        return library.validateScript(Text(script)) == 1;
    }

    /// Carries out one line. Throws CallError where it fails.
    void Execute(const std::wstring& line) const {
        std::vector<std::wstring> texts;
        detail::AddHiddenTexts(line, texts);
        Call(detail::MaskLine(line), texts, [&] { return library.executeCommand(Text(line)); });
    }

    /// Carries out a script up to the first line that fails. Throws CallError there.
    void ExecuteScript(const std::wstring& script) const {
        std::vector<std::wstring> texts;
        detail::ForEachLine(script, [&](const std::wstring& line) { detail::AddHiddenTexts(line, texts); });
        Call(Mask(script), texts, [&] { return library.executeScript(Text(script)); });
    }

    /// Starts a program, without waiting for it. Its process ID. Throws CallError.
    // NOLINTNEXTLINE(modernize-use-nodiscard): not everybody needs the process ID.
    unsigned long Launch(const std::wstring& program, const std::wstring& arguments = L"") const {
        unsigned long processId = 0;
        Call(program, {}, [&] { return library.programLaunch(Text(program), Text(arguments), &processId); });
        return processId;
    }

private:
    static void RefuseZero(const std::wstring& text) {
        if (text.find(L'\0') != std::wstring::npos) throw Error(L"the text holds a zero character");
    }

    static const wchar_t* Text(const std::wstring& text) {
        RefuseZero(text);
        return text.c_str();
    }

    static std::vector<std::wstring> LinesSince(const DialwrightErrorMark& mark,
                                                const std::vector<std::wstring>& texts) {
        std::wstring text(::DialwrightErrorsSince(&mark, nullptr, 0), L'\0');
        ::DialwrightErrorsSince(&mark, text.data(), text.size());
        text.resize(text.find(L'\0'));
        std::vector<std::wstring> lines;
        detail::ForEachLine(text, [&](const std::wstring& line) {
            if (line.compare(0, 4, L"    ") == 0 && !lines.empty()) {
                lines.back() += L"\n" + line.substr(4);
            } else if (!line.empty()) {
                lines.push_back(line);
            }
        });
        for (std::wstring& line : lines) line = detail::Hide(texts, std::move(line));
        return lines;
    }

    template <class Function>
    static void Call(const std::wstring& command, const std::vector<std::wstring>& texts, Function&& function) {
        DialwrightErrorMark mark;
        ::DialwrightMarkErrors(&mark);
        if (function() != 1) throw CallError(command, LinesSince(mark, texts));
    }

    DialwrightLibrary library;
};

}  // namespace dialwright

#endif
