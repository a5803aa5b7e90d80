#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "dialwright/dialwright_loader.h"
#include "platform/windows.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace dialwright::testing {
namespace {

#ifdef _M_ARM64
constexpr const wchar_t* kOwnMachine = L"ARM64";
#else
constexpr const wchar_t* kOwnMachine = L"x64";
#endif

/// Loads and says why not; empty where it was loaded. What was loaded is freed again.
std::wstring Load(const wchar_t* path) {
    DialwrightLibrary library;
    std::wstring why(DIALWRIGHT_LOADER_MESSAGE_UNITS, L'?');
    const int loaded = DialwrightLoad(&library, path, why.data(), why.size());
    why.resize(why.find(L'\0'));
    EXPECT_EQ(loaded == 1, library.module != nullptr);
    EXPECT_EQ(loaded == 1, library.executeScript != nullptr);
    if (loaded != 1) return why.empty() ? L"(no reason)" : why;
    EXPECT_EQ(1, library.validateCommand(L"Window.Close Cls Title"));
    EXPECT_EQ(1, library.validateScript(L"Window.Close Cls Title"));
    EXPECT_EQ(0, library.executeCommand(L"Window.Close NoSuchClass none 1"));
    EXPECT_EQ(0, library.executeScript(L"Window.Close NoSuchClass none 1"));
    EXPECT_EQ(0, library.programLaunch(L"no-such-program.exe", L"", nullptr));
    DialwrightFree(&library);
    EXPECT_EQ(nullptr, library.module);
    EXPECT_EQ(nullptr, library.validateCommand);
    return L"";
}

/// The library with another machine in its header.
void WriteForMachine(const std::wstring& path, unsigned machine) {
    std::string bytes = ReadFile(ProgramFolder() + L"Dialwright.dll");
    const std::size_t header =
        static_cast<unsigned char>(bytes.at(60)) + 256U * static_cast<unsigned char>(bytes.at(61));
    bytes.at(header + 4) = static_cast<char>(machine & 0xFFU);
    bytes.at(header + 5) = static_cast<char>(machine >> 8U);
    std::ofstream(path.c_str(), std::ios::binary) << bytes;
}

TEST(Loader, LoadsTheLibraryBesideTheProgramAndFromAnyFullPath) {
    EXPECT_EQ(L"", Load(nullptr));
    EXPECT_EQ(L"", Load((ProgramFolder() + L"Dialwright.dll").c_str()));
    std::wstring slashes = ProgramFolder() + L"Dialwright.dll";
    std::ranges::replace(slashes, L'\\', L'/');
    EXPECT_EQ(L"", Load(slashes.c_str()));
}

TEST(Loader, SaysWhatIsWrongWithAPath) {
    const TemporaryFolder folder;
    std::ofstream(folder.File(L"text.dll").c_str()) << "MZ, but no more";
    std::ofstream(folder.File(L"empty.dll").c_str()) << "";
    std::ofstream(folder.File(L"odd.dll").c_str(), std::ios::binary) << "MZ" << std::string(4094, '\xFF');
    for (const wchar_t* path :
         {L"Dialwright.dll", L".\\Dialwright.dll", L"\\Dialwright.dll", L"c:Dialwright.dll", L""}) {
        EXPECT_EQ(L"this is not a full path: " + std::wstring(path), Load(path));
    }
    const std::wstring missing = folder.File(L"none.dll");
    EXPECT_EQ(L"there is no such file: " + missing, Load(missing.c_str()));
    for (const wchar_t* name : {L"text.dll", L"empty.dll", L"odd.dll", L""}) {
        const std::wstring path = folder.File(name);
        EXPECT_EQ(L"this is not a library, or it cannot be read: " + path, Load(path.c_str()));
    }
}

TEST(Loader, NamesTheArchitecturesWhereTheyDiffer) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"Dialwright.dll");
    const auto expected = [&](const std::wstring& machine) {
        return L"this library is for " + machine + L", and this program is " + kOwnMachine + L": " + path;
    };
    const bool isArm64 = kOwnMachine == std::wstring(L"ARM64");
    WriteForMachine(path, isArm64 ? IMAGE_FILE_MACHINE_AMD64 : IMAGE_FILE_MACHINE_ARM64);
    EXPECT_EQ(expected(isArm64 ? L"x64" : L"ARM64"), Load(path.c_str()));
    WriteForMachine(path, IMAGE_FILE_MACHINE_I386);
    EXPECT_EQ(expected(L"x86"), Load(path.c_str()));
    WriteForMachine(path, IMAGE_FILE_MACHINE_ARMNT);
    EXPECT_EQ(expected(L"another architecture"), Load(path.c_str()));
}

TEST(Loader, RefusesALibraryThatIsNotOurs) {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(::GetSystemDirectoryW(path.data(), MAX_PATH));
    path += L"\\version.dll";
    EXPECT_EQ(L"this library has no function ProgramLaunch: " + path, Load(path.c_str()));
}

TEST(Loader, GivesTheSystemsReasonForABrokenLibrary) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"Dialwright.dll");
    const std::string whole = ReadFile(ProgramFolder() + L"Dialwright.dll");
    std::ofstream(path.c_str(), std::ios::binary) << whole.substr(0, 4096);
    const std::wstring why = Load(path.c_str());
    EXPECT_TRUE(why.ends_with(L": " + path)) << ::testing::PrintToString(why);
    EXPECT_LT(path.size() + 10, why.size()) << ::testing::PrintToString(why);
}

TEST(Loader, CutsAMessageThatDoesNotFitAndNeedsNone) {
    DialwrightLibrary library;
    wchar_t why[] = L"................";
    EXPECT_EQ(0, DialwrightLoad(&library, L"relative", why, 8));
    EXPECT_STREQ(L"this is", why);
    EXPECT_EQ(L'.', why[8]);
    EXPECT_EQ(0, DialwrightLoad(&library, L"relative", nullptr, 0));
    EXPECT_EQ(0, DialwrightLoad(&library, L"relative", why, 0));
    EXPECT_STREQ(L"this is", why);
    DialwrightFree(&library);
}

}  // namespace
}  // namespace dialwright::testing
