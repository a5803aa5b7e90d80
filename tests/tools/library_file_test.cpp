#include "doctor/library_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace dialwright::tools {
namespace {

using dialwright::testing::ProgramFolder;
using dialwright::testing::TemporaryFolder;
using dialwright::testing::WriteFile;

/// The first bytes of a program for this machine, whose header lies at this offset.
std::string Header(std::uint16_t machine, std::size_t offset = 0x80) {
    std::string bytes(offset + 32, '\0');
    bytes.replace(0, 2, "MZ");
    bytes[0x3C] = static_cast<char>(offset);
    bytes.replace(offset, 4, "PE\0\0", 4);
    bytes[offset + 4] = static_cast<char>(machine & 0xFFU);
    bytes[offset + 5] = static_cast<char>(machine >> 8U);
    return bytes;
}

struct Row {
    const char* what;
    std::string bytes;
    Architecture architecture;
};

TEST(ArchitectureOfAFile, IsReadFromItsHeader) {
    const Row rows[] = {
        {.what = "x64", .bytes = Header(0x8664), .architecture = Architecture::X64},
        {.what = "ARM64", .bytes = Header(0xAA64), .architecture = Architecture::Arm64},
        {.what = "x86", .bytes = Header(0x014C), .architecture = Architecture::X86},
        {.what = "another architecture", .bytes = Header(0x01C4), .architecture = Architecture::Other},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.architecture, ArchitectureOf(row.bytes)) << row.what;
        EXPECT_EQ(row.what, NameOf(row.architecture));
    }
}

TEST(ArchitectureOfAFile, IsNoneInAnythingElse) {
    const std::string whole = Header(0x8664);
    for (std::size_t length = 0; length < 0x84; ++length) {
        EXPECT_EQ(Architecture::None, ArchitectureOf(whole.substr(0, length))) << length;
    }
    EXPECT_EQ(Architecture::Other, ArchitectureOf(whole.substr(0, 0x85)));
    std::string other = whole;
    other[0] = 'X';
    EXPECT_EQ(Architecture::None, ArchitectureOf(other));
    other = whole;
    other.replace(0x3C, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(Architecture::None, ArchitectureOf(other));
}

TEST(AProgramFile, TellsVersionAndArchitectureWithoutBeingLoaded) {
    const ProgramFile library = ReadProgramFile(ProgramFolder() + L"Dialwright.dll");
    EXPECT_TRUE(library.exists);
    EXPECT_EQ(ReadProgramFile(ProgramFolder() + L"doctor_tests.exe").architecture, library.architecture);
    EXPECT_NE(Architecture::None, library.architecture);
    EXPECT_EQ(DIALWRIGHT_VERSION, library.version);
    EXPECT_EQ(nullptr, ::GetModuleHandleW(L"Dialwright.dll"));
}

TEST(AProgramFile, IsToldFromAnyOther) {
    const TemporaryFolder folder;
    WriteFile(folder.File(L"text.dll"), "text");
    const ProgramFile text = ReadProgramFile(folder.File(L"text.dll"));
    EXPECT_TRUE(text.exists);
    EXPECT_EQ(Architecture::None, text.architecture);
    EXPECT_EQ("", text.version);
    EXPECT_FALSE(ReadProgramFile(folder.File(L"nowhere.dll")).exists);
    EXPECT_FALSE(ReadProgramFile(folder.Path()).exists);
}

}  // namespace
}  // namespace dialwright::tools
