// The document of an export and an import: that of the profile file, but checked as a whole.
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
    Twice,         // an element that may occur only once
    NumberBad,     // not a number, or out of its range
    TextTooLong,   // more than kMaxTextLength
    TooManyItems,  // in a list
    NameIsTaken,   // by another profile
};

struct ImportProblem {
    ImportFault fault = ImportFault::Broken;
    std::wstring element;     // the element in question: "vid", "lbutton", "Gesture[2]/Function"
    std::size_t profile = 0;  // its profile, counted from 1; 0: outside all profiles
    std::wstring profileName;
    std::wstring value;  // its value, if that matters
};

// The profiles of a document that comes from elsewhere, all with the document's ids and selection, and every number in
// its range; or the first problem with it. Missing elements are treated as in a profile file, but the ids and the
// profiles' names must be there.
std::variant<ProfileSet, ImportProblem> ParseImport(std::string document, const ProfileRecord& freshRecord,
                                                    const DocumentContext& context);

// Why an import would refuse the profiles; nothing if it would accept them. The set must not be empty.
std::optional<ImportProblem> WhyNotImportable(const ProfileSet& profiles);

// The profiles as an import stores them: a number out of its range becomes its field's initial value, a gesture's
// function becomes none, and the selection is an existing profile. The set must not be empty.
ProfileSet Exportable(ProfileSet profiles, const SettingValues& initialValues);

}  // namespace kvn::model
