// Shared by the program that saves endlessly and the tests that kill it.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "model/profile.h"
#include "platform/unique_resource.h"

namespace kvn::model::test {

// The numbers of saves that began, succeeded and failed.
struct SaveCounts {
    volatile LONG begun;
    volatile LONG saved;
    volatile LONG refused;
};

// The counts in named shared memory. They are zero at first, and exist as long as a process has them open.
class SharedSaveCounts {
public:
    explicit SharedSaveCounts(const std::wstring& name)
        : mapping(
              CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(SaveCounts), name.c_str())),
          counts(MapViewOfFile(mapping.Get(), FILE_MAP_WRITE, 0, 0, sizeof(SaveCounts))) {
        if (!counts) throw std::runtime_error("the counts of saves cannot be shared");
    }

    SaveCounts& operator*() const { return *static_cast<SaveCounts*>(counts.Get()); }
    SaveCounts* operator->() const { return &**this; }

private:
    platform::UniqueKernelObject mapping;
    platform::Owned<void*, &UnmapViewOfFile> counts;
};

// The lists that are saved in turn, of different lengths and large enough that a save takes a while.
inline std::array<ProfileSet, 2> AlternatingVersions() {
    std::array<ProfileSet, 2> versions;
    for (std::size_t version = 0; version < versions.size(); ++version) {
        ProfileRecord record = DefaultProfileRecord();
        record.name = version == 0 ? L"long" : L"short";
        record.settings.applications.assign(version == 0 ? 20 : 12, {record.name, L"C:\\\x41F\x440\\program.exe"});
        record.settings.gestures.assign(10, {L"UD", 37, record.name, {{17, 90, kNoKey}}});
        versions[version].assign(version == 0 ? 6 : 4, record);
    }
    return versions;
}

}  // namespace kvn::model::test
