// The service's texts, and how they leave the program.
#pragma once

#include <string>
#include <string_view>

namespace kvn::service {

// The text with this number; `first` and `second` replace %1 and %2.
std::wstring Text(unsigned textId);
std::wstring Text(unsigned textId, std::wstring_view first, std::wstring_view second = {});

std::string Utf8(std::wstring_view text);

// To the standard output as UTF-8 when there is one, else to the console that the program was started from. A line that
// nobody can see is lost.
void Print(std::wstring_view text);

}  // namespace kvn::service
