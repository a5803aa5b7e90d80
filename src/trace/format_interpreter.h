#pragma once

#include "trace/bounded_text.h"
#include "trace/format_arg.h"

namespace dialwright {

/// Writes the format with its arguments. A conversion whose argument is missing or of another kind writes nothing, as
/// does an unknown one; the text around it stays. Allocates only for wide strings of 1,024 units or more, and writes
/// nothing for one that there is no memory for.
///
/// `%[0| ][width|*|-width][l|ll]conversion`, where the conversion is one of d i u x X p c s S ws %.
void InterpretFormat(BoundedText& target, const char* format, FormatArgs arguments) noexcept;

}  // namespace dialwright
