#pragma once
#include "platform/db/tokenizer.h"

#include <string>
#include <string_view>

namespace quorvel {

/// "yyyy-mm-dd" of a date literal with its marks, written behind the buffer's end. @return false: no date
bool append_iso(std::string_view date_literal, std::string& buffer);
/// The text of a literal without its quotes, doubled ones made single, written behind the buffer's end.
void append_text(std::string_view text_literal, std::string& buffer);

} // namespace quorvel
