#include "model/locale_codec.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <utility>

#include "tests/model_windows/code_pages.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/support/replaced_import.h"

// The compiler's run-time library looks this function up itself, and keeps its address here.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is not ours
extern "C" _locale_t (*__imp__create_locale)(int category, const char* name);

namespace kvn::model {
namespace {

constexpr char kWestern[] = "English_United States.1252";
constexpr char kJapanese[] = "Japanese_Japan.932";
constexpr char kChinese[] = "Chinese_China.936";
constexpr char kRussian[] = "Russian_Russia.1251";

void ExpectEveryCharacterOf(UINT codePage, const LocaleCodec& codec) {
    const auto characters = test::CharactersOf(codePage);
    EXPECT_GE(characters.size(), 100U);
    for (const test::CodedCharacter& coded : characters) {
        const std::wstring text(1, coded.character);
        ASSERT_EQ(codec.Decode(coded.bytes), text);
        const auto bytes = codec.Encode(text);
        ASSERT_TRUE(bytes) << std::hex << static_cast<unsigned>(coded.character);
        ASSERT_EQ(codec.Decode(*bytes), text);
    }
}

// A character is either refused or comes back as itself, never as one that only looks like it.
void ExpectNoCharacterToBeMistaken(const LocaleCodec& codec) {
    for (unsigned code = 1; code <= 0xFFFF; ++code) {
        const std::wstring text(1, static_cast<wchar_t>(code));
        const auto bytes = codec.Encode(text);
        ASSERT_TRUE(!bytes || codec.Decode(*bytes) == text) << std::hex << code;
    }
}

class LocaleCodecOfCodePageTest : public testing::TestWithParam<test::CodePageLocale> {};

INSTANTIATE_TEST_SUITE_P(CodePages, LocaleCodecOfCodePageTest, testing::ValuesIn(test::kCodePageLocales),
                         [](const auto& tested) { return std::to_string(tested.param.codePage); });

TEST_P(LocaleCodecOfCodePageTest, HoldsEveryCharacterAndMistakesNoOther) {
    const LocaleCodec codec(GetParam().locale);
    ExpectEveryCharacterOf(GetParam().codePage, codec);
    ExpectNoCharacterToBeMistaken(codec);
}

TEST(LocaleCodecTest, IsTestedUnderTheCodePageThatTheRunIsMeantFor) {
    EXPECT_EQ(test::UserCodePage(), GetACP());
}

// If this changes, texts could be stored as UTF-8.
TEST(LocaleCodecTest, OfUtf8IsUnknownToTheCLibrary) {
    for (const char* name : {".65001", "Hindi_India.65001", ".UTF-8"}) {
        const LocaleCodec codec(name);
        EXPECT_NE(codec.Decode("\xE4\xB8\xAD"), L"\x4E2D") << name;
    }
}

_locale_t CreateCLocaleOnly(int category, const char* name) {
    static const auto kGenuine = test::Genuine<_locale_t(int, const char*)>(L"msvcrt", "_create_locale");
    return std::string(name) == "C" ? kGenuine(category, name) : nullptr;
}

TEST(LocaleCodecTest, WithoutAnyLocaleOfTheUserHoldsWhatTheCLocaleHolds) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const auto genuine = std::exchange(__imp__create_locale, &CreateCLocaleOnly);
    const LocaleCodec codec("");
    __imp__create_locale = genuine;
    for (const test::CodePageLocale& host : test::kCodePageLocales) {
        ASSERT_NE(std::setlocale(LC_ALL, host.locale), nullptr) << host.locale;
        ExpectEveryCharacterOf(CP_UTF8, codec);
        const auto beyond = codec.Encode(L"\x416");
        std::setlocale(LC_ALL, before.c_str());
        EXPECT_FALSE(beyond) << host.locale;
    }
}

TEST(LocaleCodecTest, EncodesInTheBytesOfItsCodePage) {
    const LocaleCodec western(kWestern);
    EXPECT_EQ(western.Encode(L"Caf\xE9 \x20AC"), "Caf\xE9 \x80");
    const LocaleCodec japanese(kJapanese);
    EXPECT_EQ(japanese.Encode(L"\x30E1\x30E2"), "\x83\x81\x83\x82");
    EXPECT_EQ(japanese.Encode(L"\x8868\x30BD\\"), "\x95\x5C\x83\x5C\\");
    EXPECT_EQ(japanese.Encode(L"\xFF8A"), "\xCA");
    EXPECT_EQ(LocaleCodec(kChinese).Encode(L"\x7B80\x4E02"), "\xBC\xF2\x81\x40");
    EXPECT_EQ(LocaleCodec(kRussian).Encode(L"\x416\x40B"), "\xC6\x8E");
}

TEST(LocaleCodecTest, AsciiIsTheSameEverywhere) {
    std::wstring text;
    for (wchar_t character = 1; character < 0x80; ++character) text += character;
    const std::string bytes(text.begin(), text.end());
    for (const char* name : {kWestern, kJapanese, kChinese, kRussian, "", "C"}) {
        const LocaleCodec codec(name);
        EXPECT_EQ(codec.Encode(text), bytes) << name;
        EXPECT_EQ(codec.Decode(bytes), text) << name;
    }
}

TEST(LocaleCodecTest, RefusesATextWithACharacterThatTheCodePageLacks) {
    const LocaleCodec western(kWestern);
    const LocaleCodec japanese(kJapanese);
    for (const wchar_t* text :
         {L"\x416", L"Editor \x41F", L"\xD83D\xDE00", L"\xD83D", L"\xDE00", L"a\xFFFD", L"\xFEFF"}) {
        EXPECT_FALSE(western.Encode(text)) << text;
    }
    EXPECT_FALSE(western.Encode(L"\x30E1"));
    for (const wchar_t* text : {L"Caf\xE9", L"\xE4", L"\xA5", L"\xD83D\xDE00"})
        EXPECT_FALSE(japanese.Encode(text)) << text;
    for (const wchar_t* text : {L"Gar\xE7on", L"\xFF8A", L"\x40B", L"\xD83D\xDE00"})
        EXPECT_FALSE(LocaleCodec(kChinese).Encode(text)) << text;
    for (const wchar_t* text : {L"Caf\xE9", L"\x8868", L"\x7B80", L"\xD83D\xDE00"})
        EXPECT_FALSE(LocaleCodec(kRussian).Encode(text)) << text;
}

TEST(LocaleCodecTest, RefusesASimilarCharacterThatTheCLibraryPassesOff) {
    const kvn::test::ReplacedImport<"_wcstombs_l", std::size_t(char*, const wchar_t*, std::size_t, _locale_t)> bestFit(
        GetModuleHandleW(nullptr), [](char* bytes, const wchar_t*, std::size_t, _locale_t) {
            std::memcpy(bytes, "Cafe", 4);
            return std::size_t{4};
        });
    ASSERT_TRUE(bestFit.IsInPlace());
    EXPECT_FALSE(LocaleCodec(kJapanese).Encode(L"Caf\xE9"));
}

TEST(LocaleCodecTest, RefusesAZero) {
    const LocaleCodec codec(kWestern);
    EXPECT_FALSE(codec.Encode(std::wstring(1, L'\0')));
    EXPECT_FALSE(codec.Encode(std::wstring(L"a\0b", 3)));
    EXPECT_FALSE(codec.Encode(std::wstring(L"\xE9\0b", 3)));
}

TEST(LocaleCodecTest, TheEmptyTextIsNoBytes) {
    const LocaleCodec codec(kJapanese);
    EXPECT_EQ(codec.Encode(L""), "");
    EXPECT_EQ(codec.Decode(""), L"");
}

TEST(LocaleCodecTest, ABrokenSequenceGivesOneReplacementCharacterAndKeepsTheRest) {
    // Some C libraries show the second one in this code page.
    const std::wstring replacements = L"\xFFFD\x30FB";
    const LocaleCodec codec(kJapanese);
    for (const std::wstring& text : {codec.Decode("a\x83"), codec.Decode("\x83\x81\x83")}) {
        ASSERT_EQ(text.size(), 2U);
        EXPECT_NE(replacements.find(text[1]), std::wstring::npos);
    }
    const std::wstring text = codec.Decode("\x81\x20rest");
    EXPECT_NE(replacements.find(text[0]), std::wstring::npos);
    EXPECT_EQ(text.substr(text.size() - 4), L"rest");
}

TEST(LocaleCodecTest, LongTextsComeBack) {
    const LocaleCodec codec(kJapanese);
    const std::wstring text(100'000, L'\x8868');
    const auto bytes = codec.Encode(text);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 200'000U);
    EXPECT_TRUE(codec.Decode(*bytes) == text);
}

TEST(LocaleCodecTest, WithoutANameIsTheUsersCodePage) {
    ExpectEveryCharacterOf(test::UserCodePage(), LocaleCodec(""));
    ExpectNoCharacterToBeMistaken(LocaleCodec(""));
}

TEST(LocaleCodecTest, IsTheUsersCodePageInAThreadThatHasAskedForNoneBefore) {
    std::thread([] { ExpectEveryCharacterOf(test::UserCodePage(), LocaleCodec("")); }).join();
}

TEST(LocaleCodecTest, AnUnknownNameMeansTheUsersCodePage) {
    const std::string longName(127, 'x');
    for (const char* name : {"No such locale", longName.c_str(), "To register and edit gestures, allocate them."}) {
        ExpectEveryCharacterOf(test::UserCodePage(), LocaleCodec(name));
    }
}

TEST(LocaleCodecTest, AHostProgramWithoutALocaleTextMeansTheUsersCodePage) {
    ExpectEveryCharacterOf(test::UserCodePage(), LocaleCodec::OfHostProgram());
}

TEST(LocaleCodecTest, LeavesTheProgramsLocaleAloneInEveryThread) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::atomic<bool> done = false;
    std::atomic<bool> changed = false;
    std::thread observer([&] {
        while (!done) {
            if (std::setlocale(LC_ALL, nullptr) != before) changed = true;
        }
    });
    for (int round = 0; round < 200; ++round) {
        const LocaleCodec codec(round % 2 == 0 ? kJapanese : kWestern);
        static_cast<void>(codec.Encode(L"\x30E1\xE9"));
        static_cast<void>(codec.Decode("\x83\x81\xFF\x83"));
    }
    done = true;
    observer.join();
    EXPECT_FALSE(changed);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

}  // namespace
}  // namespace kvn::model
