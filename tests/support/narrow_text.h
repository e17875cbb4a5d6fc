// Wide text for the reports of failing tests, which are narrow.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace kvn::test {

inline std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    std::string narrow(text.size() * 3, '\0');  // no UTF-16 unit takes more than three bytes
    narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(),
                                                               static_cast<int>(narrow.size()), nullptr, nullptr)));
    return narrow;
}

}  // namespace kvn::test
