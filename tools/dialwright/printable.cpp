#include "printable.h"

#include "check/source_text.h"
#include "platform/text_encoding.h"

namespace dialwright::tools {

std::string Printable(std::wstring_view text) {
    std::wstring clean(text);
    for (wchar_t& unit : clean) {
        if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0)) unit = L'\xFFFD';
    }
    return ToUtf8(clean);
}

std::string Printable(std::string_view utf8) { return Printable(std::wstring_view(Wide(utf8))); }

}  // namespace dialwright::tools
