// Other profiles in the place of a mouse model's own, on disk and in the registry.
//
// The order keeps the settings whole whenever the program is killed: first a copy of the profile file; then the
// registry's values go, so that the file's selected profile counts; then the new file takes the old one's place at
// once; then its selected profile is written to the registry.
#pragma once

#include <cstdint>
#include <string>

#include "model/profile.h"
#include "service/transfer/model_values.h"
#include "service/transfer/mouse_model.h"

namespace kvn::service {

class SettingsReplacement {
public:
    enum class Result : std::uint8_t { Done, NothingChanged, NotUndone };

    explicit SettingsReplacement(const MouseModel& replacedModel);

    // The profiles must not be none; they get the model's ids.
    [[nodiscard]] Result Run(model::ProfileSet profiles);

    // Where the earlier profile file is; empty when there was none.
    const std::wstring& KeptFile() const { return keptFile; }

private:
    bool KeepFile();
    bool KeepFileAs(const std::wstring& kept);
    bool Undo(const ModelValues& values, bool isFileReplaced);
    bool UndoFile(bool isFileReplaced);

    const MouseModel model;
    const std::wstring path;
    std::wstring keptFile;
};

}  // namespace kvn::service
