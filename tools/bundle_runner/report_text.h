// Texts of Windows and of the report.
#pragma once

#include <string>
#include <string_view>

namespace kvn::bundle {

std::string ToUtf8(std::wstring_view text);

// The output of a program, in any encoding, as HTML: control characters and bytes that are not UTF-8 become question
// marks.
std::string ToHtml(std::string_view printed);
std::string ToBase64(std::string_view bytes);

}  // namespace kvn::bundle
