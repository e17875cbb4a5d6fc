// The service's texts, and their output.
#pragma once

#include <string>
#include <string_view>

namespace kvn::service {

// The text with this number; `first` and `second` replace %1 and %2.
std::wstring Text(unsigned textId);
std::wstring Text(unsigned textId, std::wstring_view first, std::wstring_view second = {});

// Control characters become blanks: a name from a file would break a line, a menu item or a tip in two.
std::wstring OnOneLine(std::wstring text);

std::string Utf8(std::wstring_view text);

// Prints to the standard output, as UTF-8, or else to the console from which the program was started. If there is
// neither, the text is lost.
void Print(std::wstring_view text);

}  // namespace kvn::service
