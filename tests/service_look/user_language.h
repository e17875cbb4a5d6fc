// The language in which this thread finds its texts.
#pragma once

#include <windows.h>

namespace kvn::service_test {

// Set while it lives. Windows uses the first, Wine the second of the two settings.
class UserLanguage {
public:
    UserLanguage(const wchar_t (&name)[6], LANGID language) : before(GetThreadLocale()) {
        wchar_t names[7]{};
        for (int place = 0; place < 6; ++place) names[place] = name[place];
        SetThreadPreferredUILanguages(MUI_LANGUAGE_NAME, names, nullptr);
        SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
    }
    UserLanguage(const UserLanguage&) = delete;
    UserLanguage& operator=(const UserLanguage&) = delete;
    ~UserLanguage() {
        SetThreadPreferredUILanguages(0, nullptr, nullptr);
        SetThreadLocale(before);
    }

private:
    LCID before;
};

struct English : UserLanguage {
    English() : UserLanguage(L"en-US", MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)) {}
};

struct Japanese : UserLanguage {
    Japanese() : UserLanguage(L"ja-JP", MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT)) {}
};

}  // namespace kvn::service_test
