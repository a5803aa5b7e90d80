#include "trace/file_names.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace dialwright {
namespace {

struct SplitRow {
    std::string_view name;
    std::string_view base;
    std::string_view extension;
};

TEST(SplitFileName, PartsTheNameAtItsLastPoint) {
    const SplitRow rows[] = {
        {"x.log", "x", ".log"},
        {"x", "x", ""},
        {".log", "", ".log"},
        {"a.b.c", "a.b", ".c"},
        {"x.", "x", "."},
        {"", "", ""},
        {".", "", "."},
        {"..", ".", "."},
        {"x..log", "x.", ".log"},
        {".a.b", ".a", ".b"},
        {" .log ", " ", ".log "},
        {"host.exe_1_Dialwright.log", "host.exe_1_Dialwright", ".log"},
        {"host.exe", "host", ".exe"},
        {"\xC3\xA9.\xC3\xA8", "\xC3\xA9", ".\xC3\xA8"},
    };
    for (const SplitRow& row : rows) {
        const FileNameParts parts = SplitFileName(row.name);
        EXPECT_EQ(row.base, parts.base) << "name: " << row.name;
        EXPECT_EQ(row.extension, parts.extension) << "name: " << row.name;
    }
    static_assert(SplitFileName("x.log").extension == ".log");
}

struct NamesRow {
    const char* directory;
    const char* fileName;
    const char* suffix;
    const char* main;
    const char* error;
    const char* first;
    const char* firstError;
    const char* second;
    const char* secondError;
};

TEST(ComposeFileNames, PutsNumberErrorAndProcessBeforeTheExtension) {
    const NamesRow rows[] = {
        {R"(C:\Logs\)", "host.exe_1_Dialwright.log", "", R"(C:\Logs\host.exe_1_Dialwright.log)",
         R"(C:\Logs\host.exe_1_Dialwright_error.log)", R"(C:\Logs\host.exe_1_Dialwright_1.log)",
         R"(C:\Logs\host.exe_1_Dialwright_1_error.log)", R"(C:\Logs\host.exe_1_Dialwright_2.log)",
         R"(C:\Logs\host.exe_1_Dialwright_2_error.log)"},
        {R"(C:\Logs\)", "host.exe_1_Dialwright.log", "_pid_4312", R"(C:\Logs\host.exe_1_Dialwright_pid_4312.log)",
         R"(C:\Logs\host.exe_1_Dialwright_error_pid_4312.log)", R"(C:\Logs\host.exe_1_Dialwright_1_pid_4312.log)",
         R"(C:\Logs\host.exe_1_Dialwright_1_error_pid_4312.log)", R"(C:\Logs\host.exe_1_Dialwright_2_pid_4312.log)",
         R"(C:\Logs\host.exe_1_Dialwright_2_error_pid_4312.log)"},
        {R"(\)", "x", "", R"(\x)", R"(\x_error)", R"(\x_1)", R"(\x_1_error)", R"(\x_2)", R"(\x_2_error)"},
        {R"(\)", "x", "_pid_1", R"(\x_pid_1)", R"(\x_error_pid_1)", R"(\x_1_pid_1)", R"(\x_1_error_pid_1)",
         R"(\x_2_pid_1)", R"(\x_2_error_pid_1)"},
        {R"(D:\)", ".log", "", R"(D:\.log)", R"(D:\_error.log)", R"(D:\_1.log)", R"(D:\_1_error.log)", R"(D:\_2.log)",
         R"(D:\_2_error.log)"},
        {R"(D:\a.b\)", "c", "", R"(D:\a.b\c)", R"(D:\a.b\c_error)", R"(D:\a.b\c_1)", R"(D:\a.b\c_1_error)",
         R"(D:\a.b\c_2)", R"(D:\a.b\c_2_error)"},
        {R"(D:\)", "x.", "", R"(D:\x.)", R"(D:\x_error.)", R"(D:\x_1.)", R"(D:\x_1_error.)", R"(D:\x_2.)",
         R"(D:\x_2_error.)"},
    };
    for (const NamesRow& row : rows) {
        SCOPED_TRACE(std::string(row.directory) + " " + row.fileName + " " + row.suffix);
        const TraceFileNames names = ComposeFileNames(row.directory, row.fileName, row.suffix);
        EXPECT_STREQ(row.main, names.main.CStr());
        EXPECT_STREQ(row.error, names.error.CStr());
        EXPECT_STREQ(row.first, names.first.CStr());
        EXPECT_STREQ(row.firstError, names.firstError.CStr());
        EXPECT_STREQ(row.second, names.second.CStr());
        EXPECT_STREQ(row.secondError, names.secondError.CStr());
    }
}

/// Each name beside what it would be without a limit.
void ExpectCutNames(const std::string& directory, const std::string& base, const std::string& suffix,
                    const std::string& extension) {
    SCOPED_TRACE(directory.size());
    const TraceFileNames names = ComposeFileNames(directory, base + extension, suffix);
    const auto cut = [&](const char* part) { return (directory + base + part + suffix + extension).substr(0, 259); };
    EXPECT_EQ(cut(""), names.main.CStr());
    EXPECT_EQ(cut("_error"), names.error.CStr());
    EXPECT_EQ(cut("_1"), names.first.CStr());
    EXPECT_EQ(cut("_1_error"), names.firstError.CStr());
    EXPECT_EQ(cut("_2"), names.second.CStr());
    EXPECT_EQ(cut("_2_error"), names.secondError.CStr());
}

TEST(ComposeFileNames, CutsEachPathTo259Characters) {
    // "x.log" alone fills a path whose directory has 254 characters; every part is cut somewhere on the way.
    for (std::size_t length = 225; length <= 265; ++length) {
        const std::string directory = "C:\\" + std::string(length - 4, 'd') + "\\";
        ExpectCutNames(directory, "x", "", ".log");
        ExpectCutNames(directory, "x", "_pid_4312", ".log");
    }
    ExpectCutNames("C:\\", std::string(300, 'n'), "", ".log");
    ExpectCutNames("C:\\", "n", "", "." + std::string(300, 'e'));
    ExpectCutNames("C:\\", "n", std::string(300, 's'), ".log");
    ExpectCutNames(std::string(1000, 'd') + "\\", "n", "", ".log");
}

}  // namespace
}  // namespace dialwright
