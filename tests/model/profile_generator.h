// Random profiles, with the texts that are hardest to keep.
#pragma once

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "model/profile.h"
#include "model/profile_document.h"

namespace kvn::model::test {

// The same seed gives the same profiles on every machine.
class ProfileGenerator {
public:
    // The alphabet has characters of the code page under test, which are mixed into the texts.
    ProfileGenerator(std::uint32_t seed, std::wstring textAlphabet) : random(seed), alphabet(std::move(textAlphabet)) {}

    // A list that a file can hold without loss: vid, pid and selection are the same in all records.
    ProfileSet Profiles() {
        ProfileSet profiles(1 + Below(4));
        const ProfileRecord head = Head();
        for (ProfileRecord& record : profiles) {
            record = head;
            record.name = Text();
            FillSettings(record.settings);
        }
        return profiles;
    }

    std::wstring Text() {
        switch (Below(8)) {
            case 0:
                return {};
            case 1:
                return BlankText();
            case 2:
                return Snippet();
            case 3:
                return BlankText() + Snippet() + BlankText();
            case 4:
                return Mixed(kMaxTextLength);
            default:
                return Mixed(1 + Below(24));
        }
    }

    // A number from 0 to below the limit.
    std::size_t Below(std::size_t limit) { return random() % limit; }

private:
    ProfileRecord Head() {
        ProfileRecord head;
        head.vid = static_cast<std::uint16_t>(random());
        head.pid = static_cast<std::uint16_t>(random());
        head.selectedIndex = static_cast<std::int32_t>(random());
        return head;
    }

    void FillSettings(ProfileSettings& settings) {
        for (const SettingFieldRow& row : kSettingFields) settings[row.field] = Value(row);
        for (EtcKey& keys : settings.etcKeys.items) keys = Keys();
        settings.applications.resize(Below(5));
        for (ApplicationEntry& entry : settings.applications) entry = {Text(), Text()};
        settings.gestures.resize(Below(5));
        for (GestureEntry& entry : settings.gestures) {
            entry = {Text(), static_cast<FunctionCode>(random()), Text(), Keys()};
        }
    }

    std::int32_t Value(const SettingFieldRow& row) {
        if (Below(10) == 0) return row.mayBeUnset ? kUnsetValue : kAbnormalValue;
        return row.minimum + static_cast<std::int32_t>(Below(static_cast<std::size_t>(row.maximum - row.minimum + 1)));
    }

    // Keys as the dialog makes them: the used ones come first. Leaves out the three whose names cannot be read back.
    EtcKey Keys() {
        EtcKey keys;
        const std::size_t count = Below(4);
        for (std::size_t index = 0; index < count; ++index) {
            const KeyNameRow& row = kKeyNameTable[1 + Below(kKeyNameTable.size() - 1)];
            if (std::wstring_view(row.name).find_first_of(L"+[]") != std::wstring_view::npos) break;
            keys.codes[index] = row.code;
        }
        return keys;
    }

    std::wstring BlankText() {
        std::wstring text;
        const std::size_t length = Below(4);
        while (text.size() < length) text += L" \t\n\v\f\r"[Below(6)];
        return text;
    }

    std::wstring Snippet() {
        static const std::vector<std::wstring> kSnippets{L"&#x41;",
                                                         L"&#65;",
                                                         L"&amp;",
                                                         L"&",
                                                         L"&&#",
                                                         L"&#x",
                                                         L"]]>",
                                                         L"]]",
                                                         L"<![CDATA[",
                                                         L"<![CDATA[ ]]>",
                                                         L"<!-- -->",
                                                         L"<name>",
                                                         L"</Memo>",
                                                         L"<?xml?>",
                                                         L"\"quoted\"",
                                                         L"'single'",
                                                         L"a  b",
                                                         L" a ",
                                                         L"one\r\ntwo",
                                                         L"one\ntwo",
                                                         L"\x7F",
                                                         L"\x1\x1F",
                                                         L"C:\\a\\b.exe",
                                                         L"&#x416;\x0416",
                                                         L"\x0416&#x416;",
                                                         L"]]>\x0416",
                                                         L"\x0416 ",
                                                         L" \x0416",
                                                         L"\xA0",
                                                         L"\xFFFF",
                                                         L"&\x0416",
                                                         L"%s%n%d",
                                                         L"Arbitrary key[A]",
                                                         L"\xFEFF\xFFFE",
                                                         L"\xFFFD",
                                                         L"100%"};
        return kSnippets[Below(kSnippets.size())];
    }

    std::wstring Mixed(std::size_t length) {
        std::wstring text;
        while (text.size() < length) {
            const std::wstring piece = Character();
            if (text.size() + piece.size() <= length) text += piece;
        }
        return text;
    }

    std::wstring Character() {
        switch (Below(12)) {
            case 0:
                return std::wstring(1, static_cast<wchar_t>(Below(32)));  // may be a zero
            case 1:
                return L"\x0416\x043A";
            case 2:
                return std::wstring(1, static_cast<wchar_t>(0xD800 + Below(0x800)));
            case 3:
                return Emoji();
            case 4:
                return std::wstring(1, static_cast<wchar_t>(1 + Below(0xFFFF)));
            case 5:
                return std::wstring(1, L"&#x;<>[]!\"' "[Below(12)]);
            case 6:
            case 7:
                return std::wstring(1, static_cast<wchar_t>(L' ' + Below(95)));
            default:
                return std::wstring(1, alphabet[Below(alphabet.size())]);
        }
    }

    // A pair of surrogates where wide characters have 16 bits.
    std::wstring Emoji() {
        const auto codePoint = static_cast<std::uint32_t>(0x1F300 + Below(0x300));
        if constexpr (sizeof(wchar_t) > 2) return std::wstring(1, static_cast<wchar_t>(codePoint));
        return {static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10)),
                static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF))};
    }

    std::mt19937 random;
    std::wstring alphabet;
};

}  // namespace kvn::model::test
