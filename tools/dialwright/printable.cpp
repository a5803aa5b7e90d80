#include "printable.h"

#include <algorithm>

#include "check/source_text.h"
#include "platform/text_encoding.h"

namespace dialwright::tools {

std::string Printable(std::wstring_view text) {
    std::wstring clean(text);
    std::ranges::replace_if(clean, &IsControl, L'\xFFFD');
    return ToUtf8(clean);
}

std::string Printable(std::string_view utf8) { return Printable(std::wstring_view(Wide(utf8))); }

}  // namespace dialwright::tools
