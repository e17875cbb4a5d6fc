// The module's two languages have the same contents, and do not differ in anything that files, the registry or other
// programs use.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "resources/resource.h"
#include "tests/page/module_texts.h"
#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

struct SharedText {
    UINT id;
    const wchar_t* reason;
};

// Texts that are data, or names that are the same in Japanese.
constexpr SharedText kSharedTexts[] = {
    {IDS_DEFAULT_PROFILE_NAME, L"stored in the profile file; the default profile is recognised by it"},
    {IDS_FUNCTION_ARBITRARY_KEY, L"heading that is taken off when the keys of a profile file are read"},
    {IDS_SETTINGS_FOLDER, L"folder of the profile files"},
    {IDS_STROKE_UP, L"letter of a stroke in the profile file and the registry"},
    {IDS_STROKE_LEFT, L"letter of a stroke in the profile file and the registry"},
    {IDS_STROKE_DOWN, L"letter of a stroke in the profile file and the registry"},
    {IDS_STROKE_RIGHT, L"letter of a stroke in the profile file and the registry"},
    {IDS_FUNCTION_NONE, L"blank"},
    {IDS_FUNCTION_CTRL_C, L"keys"},
    {IDS_FUNCTION_CTRL_X, L"keys"},
    {IDS_FUNCTION_CTRL_V, L"keys"},
    {IDS_FUNCTION_CTRL_Z, L"keys"},
    {IDS_FUNCTION_CTRL_Y, L"keys"},
    {IDS_FUNCTION_CTRL_S, L"keys"},
    {IDS_FUNCTION_WINDOWS_TAB, L"keys"},
    {IDS_FUNCTION_ENTER, L"key"},
    {IDS_FUNCTION_ESC, L"key"},
    {IDS_FUNCTION_TAB, L"key"},
    {IDS_FUNCTION_SHIFT, L"key"},
    {IDS_FUNCTION_ALT, L"key"},
    {IDS_FUNCTION_CTRL, L"key"},
    {IDS_FUNCTION_DELETE, L"key"},
    {IDS_FUNCTION_BACKSPACE, L"key"},
};

// Texts of the dialogs that are the same in both languages: a product's name, a button, and the placeholder for a path.
const std::set<std::wstring> kSharedDialogTexts{L"", L"KORVEN Tarsel 3", L"OK", L"xxxx"};

std::vector<std::wstring> InsertsOf(const std::wstring& text) {
    static const std::wregex insert(L"%[-+ #0]*[0-9]*(\\.[0-9]+)?[a-zA-Z]+");
    std::vector<std::wstring> inserts;
    for (std::wsregex_iterator i(text.begin(), text.end(), insert), end; i != end; ++i) inserts.push_back(i->str());
    return inserts;
}

class LanguagesTest : public testing::Test {
protected:
    ModuleUnderTest module;
    const std::map<UINT, std::wstring> english = TextsIn(module.Handle(), kEnglish);
    const std::map<UINT, std::wstring> japanese = TextsIn(module.Handle(), kJapanese);
};

TEST_F(LanguagesTest, BothHaveTheSameNumbersOfTexts) {
    const auto numbers = [](const std::map<UINT, std::wstring>& texts) {
        std::vector<UINT> ids;
        for (const auto& [id, text] : texts) ids.push_back(id);
        return ids;
    };
    EXPECT_FALSE(english.empty());
    EXPECT_EQ(numbers(japanese), numbers(english));
}

TEST_F(LanguagesTest, OnlyDataAndKeysAreNotTranslated) {
    std::map<UINT, std::wstring> reasons;
    for (const SharedText& shared : kSharedTexts) reasons[shared.id] = shared.reason;
    for (const auto& [id, text] : english) {
        if (reasons.contains(id)) {
            EXPECT_EQ(japanese.at(id), text) << id << ": " << testing::PrintToString(reasons[id]);
        } else {
            EXPECT_NE(japanese.at(id), text) << id << " is not translated";
        }
    }
}

TEST_F(LanguagesTest, InsertsAreTheSameInNumberAndOrder) {
    EXPECT_EQ(InsertsOf(english.at(IDS_ITEM_LIMIT)), (std::vector<std::wstring>{L"%d"}));
    for (const auto& [id, text] : english) EXPECT_EQ(InsertsOf(japanese.at(id)), InsertsOf(text)) << id;
}

TEST_F(LanguagesTest, MessagesEndAsTheirLanguageEndsSentences) {
    for (const auto& [id, text] : english) {
        const wchar_t last = japanese.at(id).back();
        EXPECT_EQ(last == L'。', text.back() == L'.') << id;
        EXPECT_EQ(last == L'?', text.back() == L'?') << id;
    }
}

TEST_F(LanguagesTest, DialogsAreInBothAndTheVersionInEnglish) {
    for (const LPCWSTR dialog : kDialogNames) {
        EXPECT_EQ(LanguagesOf(module.Handle(), MAKEINTRESOURCEW(5), dialog), (std::vector<WORD>{kEnglish, kJapanese}))
            << DialogName(dialog);
    }
    EXPECT_EQ(LanguagesOf(module.Handle(), MAKEINTRESOURCEW(16), MAKEINTRESOURCEW(VS_VERSION_INFO)),
              (std::vector<WORD>{kEnglish}));
}

TEST_F(LanguagesTest, DialogsHaveTheSameControlsInTheSameOrderAndPlaces) {
    for (const LPCWSTR dialog : kDialogNames) {
        SCOPED_TRACE(DialogName(dialog));
        const DialogTemplate one = TemplateIn(module.Handle(), dialog, kEnglish);
        const DialogTemplate other = TemplateIn(module.Handle(), dialog, kJapanese);
        const auto frame = [](const DialogTemplate& of) {
            return std::tuple(of.style, of.extendedStyle, of.width, of.height, of.fontFace);
        };
        EXPECT_EQ(frame(other), frame(one));
        EXPECT_EQ(one.caption == other.caption, kSharedDialogTexts.contains(one.caption));
        ASSERT_EQ(other.controls.size(), one.controls.size());
        for (std::size_t i = 0; i < one.controls.size(); ++i) {
            const auto kind = [](const TemplateControl& of) {
                return std::tuple(of.id, of.className, of.style, of.extendedStyle, of.x, of.y, of.width, of.height);
            };
            const std::wstring& text = one.controls[i].text;
            EXPECT_EQ(kind(other.controls[i]), kind(one.controls[i])) << "control " << i;
            EXPECT_EQ(text == other.controls[i].text, kSharedDialogTexts.contains(text))
                << testing::PrintToString(text);
        }
    }
}

}  // namespace
}  // namespace kvn::test
