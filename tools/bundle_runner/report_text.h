// Texts of Windows and of the report.
#pragma once

#include <string>
#include <string_view>

namespace kvn::bundle {

std::string ToUtf8(std::wstring_view text);

// What a program printed, in whatever encoding, as HTML: bytes that are no UTF-8 and control characters become question
// marks.
std::string ToHtml(std::string_view printed);
std::string ToBase64(std::string_view bytes);

}  // namespace kvn::bundle
