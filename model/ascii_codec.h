// ASCII, which all code pages share: text written in it means the same on every machine.
#pragma once

#include <algorithm>

#include "model/text_codec.h"

namespace kvn::model {

class AsciiCodec final : public TextCodec {
public:
    std::optional<std::string> Encode(std::wstring_view text) const override {
        if (!std::all_of(text.begin(), text.end(), [](wchar_t character) { return character > 0 && character < 0x80; }))
            return std::nullopt;
        return std::string(text.begin(), text.end());
    }

    std::wstring Decode(std::string_view bytes) const override {
        std::wstring text;
        for (const char byte : bytes) text += byte > 0 ? static_cast<wchar_t>(byte) : L'\xFFFD';
        return text;
    }
};

}  // namespace kvn::model
