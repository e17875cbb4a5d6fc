// Rules that hold for every list of profiles that was read, from any document.
#pragma once

#include <algorithm>
#include <string>

#include "model/profile_document.h"

namespace kvn::model::test {

inline bool IsCheckedText(const std::wstring& text) {
    return text.size() <= kMaxTextLength;
}

inline bool AreCheckedKeys(const EtcKey& keys) {
    return std::all_of(keys.codes.begin(), keys.codes.end(),
                       [](KeyCode code) { return code == kNoKey || KeyNameOf(code) != nullptr; });
}

// The first broken rule; empty if there is none.
inline std::string FaultOf(const ProfileSet& profiles) {
    for (const ProfileRecord& record : profiles) {
        if (!IsCheckedText(record.name)) return "a profile's name is too long";
        if (CheckedSettings(record.settings.values) != record.settings.values) return "a setting is out of its range";
        const auto& slotKeys = record.settings.etcKeys.items;
        if (!std::all_of(slotKeys.begin(), slotKeys.end(), AreCheckedKeys))
            return "a slot has a key that is not in the table";
        for (const ApplicationEntry& entry : record.settings.applications) {
            if (!IsCheckedText(entry.name) || !IsCheckedText(entry.path)) return "a program's text is too long";
        }
        for (const GestureEntry& entry : record.settings.gestures) {
            if (!IsCheckedText(entry.stroke) || !IsCheckedText(entry.memo)) return "a gesture's text is too long";
            if (!AreCheckedKeys(entry.etcKey)) return "a gesture has a key that is not in the table";
        }
    }
    return {};
}

}  // namespace kvn::model::test
