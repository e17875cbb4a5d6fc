#include "tools/bundle_runner/report_text.h"

#include <windows.h>

#include <cstdint>

namespace kvn::bundle {
namespace {

constexpr char kBase64Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool IsUtf8(std::string_view text) {
    return text.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                               static_cast<int>(text.size()), nullptr, 0) > 0;
}

void AppendHtml(std::string& html, char character) {
    const auto code = static_cast<unsigned char>(character);
    if (character == '&') {
        html += "&amp;";
    } else if (character == '<') {
        html += "&lt;";
    } else if (character == '"') {
        html += "&quot;";
    } else if (code < 0x20 && character != '\n' && character != '\t') {
        if (character != '\r') html += '?';
    } else {
        html += character;
    }
}

std::string LineToHtml(std::string_view line) {
    const bool isUtf8 = IsUtf8(line);
    std::string html;
    for (const char character : line) {
        AppendHtml(html, isUtf8 || static_cast<unsigned char>(character) < 0x80 ? character : '?');
    }
    return html;
}

std::uint32_t ByteAt(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string bytes(text.size() * 3, '\0');  // no UTF-16 unit takes more than three bytes
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

std::string ToHtml(std::string_view printed) {
    std::string html;
    while (!printed.empty()) {
        const std::size_t end = printed.find('\n');
        const std::size_t length = end == std::string_view::npos ? printed.size() : end + 1;
        html += LineToHtml(printed.substr(0, length));
        printed.remove_prefix(length);
    }
    return html;
}

std::string ToBase64(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() / 3 * 4 + 4);
    for (std::size_t place = 0; place < bytes.size(); place += 3) {
        const std::uint32_t group =
            ByteAt(bytes, place) << 16 | ByteAt(bytes, place + 1) << 8 | ByteAt(bytes, place + 2);
        text += kBase64Digits[group >> 18];
        text += kBase64Digits[group >> 12 & 63];
        text += place + 1 < bytes.size() ? kBase64Digits[group >> 6 & 63] : '=';
        text += place + 2 < bytes.size() ? kBase64Digits[group & 63] : '=';
    }
    return text;
}

}  // namespace kvn::bundle
