#include "service/lifecycle/shared_state.h"

#include <algorithm>

namespace kvn::service {
namespace {

// The number identifies the layout: versions with another layout use other memory.
constexpr wchar_t kSectionName[] = L"Local\\KvnMouseApl.Shared.1";

SharedState ownState{};

}  // namespace

void SharedState::KeepArguments(std::wstring_view text) {
    const std::uint32_t next = 1 - current.load() % 2;
    if (text.size() >= kMaxArguments) text = {};
    std::ranges::copy(text, arguments[next].begin());
    arguments[next][text.size()] = L'\0';
    current = next;
}

std::wstring SharedState::Arguments() const {
    const auto& slot = arguments[current.load() % 2];
    return {slot.begin(), std::ranges::find(slot, L'\0')};
}

SharedMemory::SharedMemory()
    : section(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(SharedState), kSectionName)),
      view(section ? MapViewOfFile(section.Get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof(SharedState)) : nullptr),
      state(view != nullptr ? static_cast<SharedState*>(view) : &ownState) {}

SharedMemory::~SharedMemory() {
    if (view != nullptr) UnmapViewOfFile(view);
}

// Gives the other process a handle that it never uses.
void SharedMemory::KeepFor(HANDLE process) const {
    HANDLE kept = nullptr;
    DuplicateHandle(GetCurrentProcess(), section.Get(), process, &kept, 0, FALSE, DUPLICATE_SAME_ACCESS);
}

}  // namespace kvn::service
