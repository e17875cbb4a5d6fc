// Saves the registry values of a mouse model, so that they can be restored after an import that fails.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

#include "model/registry_changes.h"
#include "service/transfer/mouse_model.h"

namespace kvn::service {

class KeptValues {
public:
    KeptValues(const MouseModel& mouse, std::span<const model::RegistryWrite> writes);

    // Whether all of them were read, so that they can be restored.
    bool IsComplete() const { return isComplete; }

    // Removes them, so that the values of the profile file count. False if one could not be removed.
    [[nodiscard]] bool Remove() const;
    // Restores them; false if one could not be restored.
    [[nodiscard]] bool Restore() const;

private:
    struct Value {
        const wchar_t* name = nullptr;
        bool wasThere = false;
        DWORD type = REG_NONE;
        std::vector<BYTE> bytes;
    };

    bool Keep(HKEY key, const wchar_t* name);
    static bool PutBack(HKEY key, const Value& value);

    std::wstring path;
    bool isComplete = true;
    bool wasThere = true;  // whether the key existed
    std::vector<Value> values;
};

}  // namespace kvn::service
