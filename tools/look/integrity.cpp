#include "look/integrity.h"

#include <cstddef>
#include <vector>

#include "look/unique_handle.h"

namespace dialwright::tools {

std::optional<std::uint32_t> IntegrityOf(HANDLE process) {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(process, TOKEN_QUERY, &opened)) return {};
    const UniqueHandle token(opened);
    DWORD size = 0;
    ::GetTokenInformation(token.get(), TokenIntegrityLevel, nullptr, 0, &size);
    std::vector<std::byte> area(size);
    if (size == 0 || !::GetTokenInformation(token.get(), TokenIntegrityLevel, area.data(), size, &size)) return {};
    const auto* const label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(area.data());
    const DWORD last = *::GetSidSubAuthorityCount(label->Label.Sid) - 1UL;
    return *::GetSidSubAuthority(label->Label.Sid, last);
}

}  // namespace dialwright::tools
