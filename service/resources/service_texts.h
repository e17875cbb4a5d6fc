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

// To the standard output as UTF-8 when there is one, else to the console that the program was started from. If there is
// neither, the line is lost.
void Print(std::wstring_view text);

}  // namespace kvn::service
