// Keeps the values of a mouse model in the registry while others replace them.
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

    // Where a value is missing, that of the profile file counts. False when one could not be removed.
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
    bool wasThere = true;  // the key
    std::vector<Value> values;
};

}  // namespace kvn::service
