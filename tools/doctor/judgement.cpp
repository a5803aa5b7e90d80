#include "doctor/judgement.h"

#include <algorithm>

namespace dialwright::tools {
namespace {

constexpr std::uint32_t kUtf8 = 65001;
constexpr std::uint32_t kPlainDpi = 96;

/// The library cuts longer paths; behind the folder stand the host's name, the session and "_Dialwright_1_error.log".
constexpr std::size_t kMostFolderUnits = 259 - 60;

Row JudgeSession(const Facts& facts) {
    const std::string session = "session " + std::to_string(facts.session);
    if (facts.session == 0) {
        return {.name = "session",
                .state = State::Blocked,
                .found = session + ", where services run",
                .advice = "run in the session of the user whose windows are meant, not as a service"};
    }
    if (!facts.windowStationIsVisible) {
        return {.name = "session",
                .state = State::Blocked,
                .found = session + ", without a visible desktop",
                .advice = "run in the session of the user whose windows are meant, not as a task without one"};
    }
    if (facts.isRemote) {
        return {.name = "session",
                .state = State::Warning,
                .found = session + ", remote",
                .advice = "do not minimize or disconnect it while windows are brought to the front"};
    }
    return {.name = "session", .found = session};
}

Row JudgeDesktop(const Facts& facts) {
    const std::string advice = "messages still arrive, but no window comes to the front: unlock the session";
    if (facts.isLocked.value_or(false)) {
        return {.name = "desktop", .state = State::Warning, .found = "the session is locked", .advice = advice};
    }
    if (facts.inputDesktop.empty()) {
        return {.name = "desktop",
                .state = State::Warning,
                .found = "the desktop that has the input cannot be opened",
                .advice = advice};
    }
    if (facts.inputDesktop != facts.ownDesktop) {
        return {.name = "desktop",
                .state = State::Warning,
                .found = "the input belongs to " + facts.inputDesktop + ", and this is " + facts.ownDesktop,
                .advice = advice};
    }
    const char* const lock = facts.isLocked ? ", not locked" : ", whether it is locked is not told";
    return {.name = "desktop", .found = facts.ownDesktop + lock};
}

std::string NameOf(const std::optional<Integrity>& integrity) {
    return integrity ? std::string(tools::NameOf(*integrity)) : "not told";
}

Row JudgeElevation(const Facts& facts) {
    const std::string own = "integrity " + NameOf(facts.integrity);
    switch (facts.target) {
        case TargetState::Missing:
            return {.name = "elevation",
                    .state = State::Warning,
                    .found = own + "; there is no such target",
                    .advice = "dialwright windows lists all windows"};
        case TargetState::NoRight:
            return {.name = "elevation",
                    .state = State::Warning,
                    .found = own + "; that of the target may not be read",
                    .advice = "it most likely is higher, and messages are dropped then: run elevated"};
        case TargetState::Known: break;
        case TargetState::NotAsked: return {.name = "elevation", .found = own};
    }
    const std::string both = own + "; target " + NameOf(facts.targetIntegrity);
    if (facts.integrity && facts.targetIntegrity && *facts.integrity < *facts.targetIntegrity) {
        return {.name = "elevation",
                .state = State::Blocked,
                .found = both,
                .advice = "messages are dropped: run elevated"};
    }
    return {.name = "elevation", .found = both};
}

Row JudgeDpi(const Facts& facts) {
    const std::string scale = "scale " + std::to_string(facts.dpi * 100 / kPlainDpi) + " %";
    if (facts.isPerMonitorAware) return {.name = "dpi", .found = scale + ", aware of each monitor"};
    return {.name = "dpi",
            .state = State::Warning,
            .found = scale + ", not aware of each monitor",
            .advice = "rectangles may be told in other pixels than the library's"};
}

Row JudgeCodePage(const Facts& facts) {
    std::string found = "ANSI code page " + std::to_string(facts.codePage);
    if (facts.codePage == kUtf8) {
        if (facts.systemCodePage == kUtf8) found += ", as the system's";
        if (facts.systemCodePage != kUtf8 && facts.systemCodePage != 0) found += ", by this program's manifest";
    }
    if (facts.traceFolderCanBeSpelled) return {.name = "code page", .found = found};
    return {.name = "code page",
            .state = State::Warning,
            .found = found + " cannot spell the trace folder",
            .advice = "choose one with a plainer name by --work-folder, or there is no trace"};
}

Row JudgeTraceFolder(const Facts& facts) {
    if (!facts.traceFolderCanBeWritten) {
        return {.name = "trace folder",
                .state = State::Warning,
                .found = facts.traceFolder + " cannot be written",
                .advice = "choose another by --work-folder, or there is no trace"};
    }
    if (facts.traceFolderLength > kMostFolderUnits) {
        return {.name = "trace folder",
                .state = State::Warning,
                .found = facts.traceFolder + " has too long a path",
                .advice = "choose a shorter one by --work-folder, or there is no trace"};
    }
    return {.name = "trace folder", .found = facts.traceFolder + " can be written"};
}

Row JudgeLibrary(const Facts& facts, std::string_view version) {
    const auto blocked = [&](const std::string& what, const std::string& advice) {
        return Row{
            .name = "library", .state = State::Blocked, .found = facts.libraryPath + " " + what, .advice = advice};
    };
    if (!facts.library.exists) return blocked("is missing", "put it there, or name it with --library");
    if (facts.library.architecture == Architecture::None) return blocked("is no library", "copy it anew");
    const std::string kind(tools::NameOf(facts.library.architecture));
    if (facts.library.architecture != facts.program.architecture) {
        return blocked("is for " + kind, "take that for " + std::string(tools::NameOf(facts.program.architecture)));
    }
    const std::string found = facts.libraryPath + " " + facts.library.version + " " + kind;
    if (facts.library.version == version) return {.name = "library", .found = found};
    return {.name = "library",
            .state = State::Warning,
            .found = found,
            .advice = "this program is of version " + std::string(version) + ": take both from one release"};
}

}  // namespace

std::string_view NameOf(State state) {
    switch (state) {
        case State::Ok: return "ok";
        case State::Warning: return "warning";
        case State::Blocked: break;
    }
    return "blocked";
}

std::vector<Row> Judge(const Facts& facts, std::string_view version) {
    return {JudgeSession(facts),  JudgeDesktop(facts),     JudgeElevation(facts),       JudgeDpi(facts),
            JudgeCodePage(facts), JudgeTraceFolder(facts), JudgeLibrary(facts, version)};
}

State WorstOf(const std::vector<Row>& rows) { return std::ranges::max(rows, {}, &Row::state).state; }

}  // namespace dialwright::tools
