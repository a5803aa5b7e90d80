#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

#include "library.h"
#include "platform/windows.h"
#include "support/log_capture.h"
#include "support/other_program.h"
#include "support/practice_window.h"

// Programs that nobody here wrote.
namespace dialwright::testing {
namespace {

std::wstring TemporaryFile(const std::string& content) {
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    const std::wstring path = std::wstring(folder.data()) + UniqueTitle() + L".txt";
    std::FILE* file = ::_wfopen(path.c_str(), L"wb");
    std::fwrite(content.data(), 1, content.size(), file);
    std::fclose(file);
    return path;
}

std::string ContentOf(const std::wstring& path) {
    std::string content;
    std::FILE* file = ::_wfopen(path.c_str(), L"rb");
    if (file == nullptr) return content;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) content.push_back(static_cast<char>(c));
    std::fclose(file);
    return content;
}

TEST(Notepad, IsTypedIntoMovedClosedAndSaved) {
    // A byte-order mark makes Notepad keep the file in UTF-8.
    const std::wstring path = TemporaryFile("\xEF\xBB\xBF");
    const std::wstring title = path.substr(path.rfind(L'\\') + 1, path.rfind(L'.') - path.rfind(L'\\') - 1);
    const OtherProgram notepad(L"notepad.exe \"" + path + L"\"");
    const std::wstring window = L" Notepad \".*" + title + L".*\" ";
    const LogCapture log;
    EXPECT_EQ(1, ExecuteScript(L"Window.Move" + window + L"30,40 500,300 30000\n" +                            //
                               L"Window.SetText.Path" + window + L"1 \"\x65E5\x672C \xD83D\xDE00\" 30000\n" +  //
                               L"Window.Close" + window + L"30000\n" +                                         //
                               L"Window.ClickButton #32770 Notepad 6 30000"));
    EXPECT_TRUE(notepad.HasEnded());
    EXPECT_EQ("\xEF\xBB\xBF\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80", ContentOf(path));
    ::DeleteFileW(path.c_str());
}

}  // namespace
}  // namespace dialwright::testing
