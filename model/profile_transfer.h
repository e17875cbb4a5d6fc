// What leaves with an export, and what an import takes: the profile file's document, but checked as a whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "model/profile.h"
#include "model/profile_document.h"

namespace kvn::model {

enum class ImportFault : std::uint8_t {
    Broken,        // no XML that may be parsed, or cut off
    Foreign,       // XML of another kind
    Missing,       // an element
    Twice,         // an element that may be there once
    NumberBad,     // none, or out of its range
    TextTooLong,   // more than kMaxTextLength
    TooManyItems,  // of a list
    NameIsTaken,   // by another profile
};

struct ImportProblem {
    ImportFault fault = ImportFault::Broken;
    std::wstring element;     // what it is about: "vid", "lbutton", "Gesture[2]/Function"
    std::size_t profile = 0;  // in which profile, counted from 1; 0: in none
    std::wstring profileName;
    std::wstring value;  // what stands there, as far as it matters
};

// The profiles of a document that comes from elsewhere, all with the document's ids and selection, and every number in
// its range; or the first thing that is wrong with it. Elements that are missing count as in a profile file, but the
// ids and the profiles' names must be there.
std::variant<ProfileSet, ImportProblem> ParseImport(std::string document, const ProfileRecord& freshRecord,
                                                    const DocumentContext& context);

// Why an import would not take the profiles, which must not be none; nothing when it would.
std::optional<ImportProblem> WhyNotImportable(const ProfileSet& profiles);

// The profiles as an import takes them: a number out of its range is its field's initial value, a gesture's function
// none, and the selection is a profile. The set must not be empty.
ProfileSet Exportable(ProfileSet profiles, const SettingValues& initialValues);

}  // namespace kvn::model
