// The code page of the profile file: that of a C-library locale.
#pragma once

#include <clocale>
#include <optional>
#include <string>
#include <string_view>

#include "model/text_codec.h"
#include "platform/unique_resource.h"

namespace kvn::model {

// Converts through a separate locale object: the host process's locale is never changed.
class LocaleCodec final : public TextCodec {
public:
    // A locale by its name in the C library; an empty or unknown name means the user's default. If the C library has
    // none for the user (UTF-8 as code page), it is the "C" locale, which holds the characters up to U+00FF.
    explicit LocaleCodec(const char* localeName);

    // The locale that the host program names in its own string 1007; normally there is none.
    static LocaleCodec OfHostProgram();

    std::optional<std::string> Encode(std::wstring_view text) const override;
    std::wstring Decode(std::string_view bytes) const override;

private:
    platform::Owned<_locale_t, &_free_locale> locale;
};

}  // namespace kvn::model
