// Processes of different rights: one with more drives one with less, the other way the system drops the messages.

#include <optional>
#include <string>

#include "look/integrity.h"
#include "look/unique_handle.h"
#include "platform/windows.h"
#include "verify/checks.h"
#include "verify/library.h"
#include "verify/outside.h"
#include "verify/plain_output.h"

namespace dialwright::verify {
namespace {

using tools::IntegrityOf;
using tools::UniqueHandle;

/// A copy of our own rights at the low level.
UniqueHandle LowToken() {
    HANDLE own = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_DUPLICATE | TOKEN_QUERY, &own)) return nullptr;
    const UniqueHandle closed(own);
    HANDLE copied = nullptr;
    constexpr DWORD kRights = TOKEN_QUERY | TOKEN_DUPLICATE | TOKEN_ASSIGN_PRIMARY | TOKEN_ADJUST_DEFAULT;
    if (!::DuplicateTokenEx(own, kRights, nullptr, SecurityImpersonation, TokenPrimary, &copied)) return nullptr;
    UniqueHandle low(copied);
    // The well-known SID of the low level.
    struct LowSid {
        BYTE revision = SID_REVISION;
        BYTE count = 1;
        SID_IDENTIFIER_AUTHORITY authority = SECURITY_MANDATORY_LABEL_AUTHORITY;
        DWORD level = SECURITY_MANDATORY_LOW_RID;
    } sid;
    TOKEN_MANDATORY_LABEL label{};
    label.Label.Attributes = SE_GROUP_INTEGRITY;
    label.Label.Sid = &sid;
    if (!::SetTokenInformation(low.get(), TokenIntegrityLevel, &label, sizeof label + sizeof sid)) return nullptr;
    return low;
}

std::string Shown(std::optional<std::uint32_t> level) { return level ? std::to_string(*level) : "not told"; }

Verdict DriveTheLower(const Setting& setting, HANDLE low) {
    const Library library(setting);
    const Practice target(setting, low);
    const auto own = IntegrityOf(::GetCurrentProcess());
    const auto targets = IntegrityOf(target.Process());
    const std::string levels = "integrity " + Shown(own) + ", the target's " + Shown(targets);
    if (!own || !targets || *targets >= *own) return Skipped(levels + ": this system keeps no levels apart");
    const TimedCall call = Execute(library, target.Line(L"Window.SetText", L"12 \"down\" 5000"));
    return PassedIf(call.result == 1 && TextOf(target.Control(12)) == L"down", levels + ", " + Shown(call));
}

/// What the host says of it is not judged: the system tells it nothing.
Verdict IsHeldOffByTheHigher(const Setting& setting, HANDLE low) {
    const Practice target(setting);
    const auto targets = IntegrityOf(target.Process());
    if (!targets || *targets <= SECURITY_MANDATORY_LOW_RID) return Skipped("the target has no more than the low level");
    const PlainOutput output = RunPlainHost(setting, target.Line(L"Window.SetText", L"12 \"up\" 2000"), target, low);
    const std::string found = "the library's result was " + output.at("result") + ", and the text ";
    if (TextOf(target.Control(12)).empty()) return Passed(found + "did not arrive, as the system drops such messages");
    return Skipped(found + "arrived: this system keeps no levels apart");
}

bool KeepsLevelsApart(HANDLE low) {
    DWORD size = 0;
    alignas(TOKEN_MANDATORY_LABEL) std::byte area[128];
    if (!::GetTokenInformation(low, TokenIntegrityLevel, area, sizeof area, &size)) return false;
    const auto* const label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(area);
    return *::GetSidSubAuthority(label->Label.Sid, 0) == SECURITY_MANDATORY_LOW_RID;
}

}  // namespace

void CheckElevation(const Setting& setting, Journal& journal) {
    const UniqueHandle low = LowToken();
    const bool canLower = low != nullptr && KeepsLevelsApart(low.get());
    const auto ifLowered = [&](Verdict (*step)(const Setting&, HANDLE)) {
        if (!canLower) return Skipped("this system starts no program with fewer rights");
        try {
            return step(setting, low.get());
        } catch (const StartError& error) {
            return Skipped(std::string("with fewer rights, ") + error.what());
        }
    };
    journal.Do("a window of lower integrity is driven", [&] { return ifLowered(&DriveTheLower); });
    journal.Do("a host of lower integrity cannot type into ours", [&] { return ifLowered(&IsHeldOffByTheHigher); });
    journal.Do("a window of higher integrity than ours", [] {
        return Skipped("it takes a window that was started elevated by hand; messages to it are dropped");
    });
}

}  // namespace dialwright::verify
