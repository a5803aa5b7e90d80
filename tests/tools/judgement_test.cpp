#include "doctor/judgement.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace dialwright::tools {
namespace {

/// A machine on which all is well.
Facts Healthy() {
    Facts facts;
    facts.session = 1;
    facts.windowStationIsVisible = true;
    facts.isLocked = false;
    facts.inputDesktop = "Default";
    facts.ownDesktop = "Default";
    facts.integrity = Integrity::Medium;
    facts.isPerMonitorAware = true;
    facts.dpi = 144;
    facts.codePage = 65001;
    facts.systemCodePage = 1252;
    facts.traceFolder = "C:\\host\\logs\\trace\\";
    facts.traceFolderLength = 19;
    facts.traceFolderCanBeSpelled = true;
    facts.traceFolderCanBeWritten = true;
    facts.libraryPath = "C:\\host\\Dialwright.dll";
    facts.library = {.exists = true, .architecture = Architecture::X64, .version = "1.2.3"};
    facts.program = {.exists = true, .architecture = Architecture::X64, .version = ""};
    return facts;
}

std::string Told(const Facts& facts) {
    std::string text;
    for (const Row& row : Judge(facts, "1.2.3")) {
        text += std::string(NameOf(row.state)) + " " + row.name + ": " + row.found + "\n";
    }
    return text;
}

TEST(DoctorsJudgement, FindsNothingWhereAllIsWell) {
    EXPECT_EQ(
        "ok session: session 1\n"
        "ok desktop: Default, not locked\n"
        "ok elevation: integrity medium\n"
        "ok dpi: scale 150 %, aware of each monitor\n"
        "ok code page: ANSI code page 65001, by this program's manifest\n"
        "ok trace folder: C:\\host\\logs\\trace\\ can be written\n"
        "ok library: C:\\host\\Dialwright.dll 1.2.3 x64\n",
        Told(Healthy()));
    EXPECT_EQ(State::Ok, WorstOf(Judge(Healthy(), "1.2.3")));
}

struct Trouble {
    const char* told;
    std::function<void(Facts&)> make;
};

/// The row is there, advice stands beside it exactly where something is to be done, and the worst is what it says.
void ExpectToTell(const Trouble& trouble) {
    Facts facts = Healthy();
    trouble.make(facts);
    EXPECT_NE(std::string::npos, Told(facts).find(std::string(trouble.told) + "\n")) << trouble.told << "\n"
                                                                                     << Told(facts);
    const std::vector<Row> rows = Judge(facts, "1.2.3");
    for (const Row& row : rows) EXPECT_EQ(row.state == State::Ok, row.advice.empty()) << row.name;
    EXPECT_TRUE(std::string_view(trouble.told).starts_with(NameOf(WorstOf(rows)))) << trouble.told;
}

TEST(DoctorsJudgement, TellsWhatTheSessionForbids) {
    const Trouble troubles[] = {
        {"blocked session: session 0, where services run", [](Facts& facts) { facts.session = 0; }},
        {"blocked session: session 1, without a visible desktop",
         [](Facts& facts) { facts.windowStationIsVisible = false; }},
        {"warning session: session 1, remote", [](Facts& facts) { facts.isRemote = true; }},
        {"warning desktop: the session is locked", [](Facts& facts) { facts.isLocked = true; }},
        {"warning desktop: the desktop that has the input cannot be opened",
         [](Facts& facts) { facts.inputDesktop.clear(); }},
        {"warning desktop: the input belongs to Winlogon, and this is Default",
         [](Facts& facts) { facts.inputDesktop = "Winlogon"; }},
        {"ok desktop: Default, whether it is locked is not told", [](Facts& facts) { facts.isLocked = std::nullopt; }},
        {"warning dpi: scale 100 %, not aware of each monitor",
         [](Facts& facts) {
             facts.dpi = 96;
             facts.isPerMonitorAware = false;
         }},
    };
    for (const Trouble& trouble : troubles) ExpectToTell(trouble);
}

TEST(DoctorsJudgement, ComparesIntegrityWithTheTargets) {
    const auto target = [](TargetState state, std::optional<Integrity> integrity) {
        return [=](Facts& facts) {
            facts.target = state;
            facts.targetIntegrity = integrity;
        };
    };
    const Trouble troubles[] = {
        {"ok elevation: integrity medium; target medium", target(TargetState::Known, Integrity::Medium)},
        {"ok elevation: integrity medium; target low", target(TargetState::Known, Integrity::Low)},
        {"blocked elevation: integrity medium; target high", target(TargetState::Known, Integrity::High)},
        {"blocked elevation: integrity medium; target system", target(TargetState::Known, Integrity::System)},
        {"warning elevation: integrity medium; that of the target may not be read", target(TargetState::NoRight, {})},
        {"warning elevation: integrity medium; there is no such target", target(TargetState::Missing, {})},
        {"ok elevation: integrity not told", [](Facts& facts) { facts.integrity = std::nullopt; }},
    };
    for (const Trouble& trouble : troubles) ExpectToTell(trouble);
}

TEST(DoctorsJudgement, TellsWhereNoTraceCanBe) {
    const Trouble troubles[] = {
        {"ok code page: ANSI code page 65001, as the system's", [](Facts& facts) { facts.systemCodePage = 65001; }},
        {"ok code page: ANSI code page 65001", [](Facts& facts) { facts.systemCodePage = 0; }},
        {"ok code page: ANSI code page 1252", [](Facts& facts) { facts.codePage = 1252; }},
        {"warning code page: ANSI code page 1252 cannot spell the trace folder",
         [](Facts& facts) {
             facts.codePage = 1252;
             facts.traceFolderCanBeSpelled = false;
         }},
        {"warning trace folder: C:\\host\\logs\\trace\\ cannot be written",
         [](Facts& facts) { facts.traceFolderCanBeWritten = false; }},
        {"warning trace folder: C:\\host\\logs\\trace\\ has too long a path",
         [](Facts& facts) { facts.traceFolderLength = 200; }},
    };
    for (const Trouble& trouble : troubles) ExpectToTell(trouble);
}

TEST(DoctorsJudgement, TellsWhichLibraryCannotBeLoaded) {
    const Trouble troubles[] = {
        {"blocked library: C:\\host\\Dialwright.dll is missing", [](Facts& facts) { facts.library.exists = false; }},
        {"blocked library: C:\\host\\Dialwright.dll is no library",
         [](Facts& facts) { facts.library.architecture = Architecture::None; }},
        {"blocked library: C:\\host\\Dialwright.dll is for ARM64",
         [](Facts& facts) { facts.library.architecture = Architecture::Arm64; }},
        {"warning library: C:\\host\\Dialwright.dll 1.2.4 x64", [](Facts& facts) { facts.library.version = "1.2.4"; }},
    };
    for (const Trouble& trouble : troubles) ExpectToTell(trouble);
}

}  // namespace
}  // namespace dialwright::tools
