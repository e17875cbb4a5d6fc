// Replaces a mouse model's profiles, on disk and in the registry.
//
// The order keeps the settings whole even if the program is killed: first it copies the profile file; then it deletes
// the registry's values, so that the file's selected profile counts; then the new file replaces the old one in one
// step; then it writes the selected profile to the registry.
#pragma once

#include <cstdint>
#include <string>

#include "model/profile.h"
#include "service/transfer/kept_values.h"
#include "service/transfer/mouse_model.h"

namespace kvn::service {

class SettingsReplacement {
public:
    enum class Result : std::uint8_t { Done, NothingChanged, NotUndone };

    explicit SettingsReplacement(const MouseModel& replacedMouse);

    // The set must not be empty; the profiles get the mouse model's ids.
    [[nodiscard]] Result Run(model::ProfileSet profiles);

    // Where the earlier profile file is; empty if there was none.
    const std::wstring& KeptFile() const { return keptFile; }

private:
    bool KeepFile();
    bool KeepFileAs(const std::wstring& kept);
    bool Undo(const KeptValues& values, bool isFileReplaced);
    bool UndoFile(bool isFileReplaced);

    const MouseModel mouse;
    const std::wstring path;
    std::wstring keptFile;
};

}  // namespace kvn::service
