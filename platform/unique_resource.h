// Owning types for handles and other resources of Windows. A raw handle elsewhere is only borrowed.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <utility>

namespace kvn::platform {

// Owns one resource. Traits has a type Handle, a constant kEmpty and a function Close(Handle).
template <typename Traits>
class [[nodiscard]] UniqueResource {
public:
    using Handle = typename Traits::Handle;

    UniqueResource() = default;
    explicit UniqueResource(Handle owned) : handle(owned) {}
    UniqueResource(UniqueResource&& other) noexcept : handle(other.Release()) {}
    UniqueResource& operator=(UniqueResource&& other) noexcept {
        Reset(other.Release());
        return *this;
    }
    UniqueResource(const UniqueResource&) = delete;
    UniqueResource& operator=(const UniqueResource&) = delete;
    ~UniqueResource() { Reset(); }

    explicit operator bool() const { return handle != Traits::kEmpty; }
    Handle Get() const { return handle; }
    Handle Release() { return std::exchange(handle, Traits::kEmpty); }

    void Reset(Handle owned = Traits::kEmpty) {
        const Handle previous = std::exchange(handle, owned);
        if (previous != Traits::kEmpty) Traits::Close(previous);
    }

    // For functions that return a resource through a pointer.
    Handle* Receive() {
        Reset();
        return &handle;
    }

private:
    Handle handle = Traits::kEmpty;
};

template <typename Resource, auto kGiveBack>
struct GiveBackTraits {
    using Handle = Resource;
    static constexpr Handle kEmpty{};
    static void Close(Handle handle) { static_cast<void>(kGiveBack(handle)); }
};

// Owns a handle whose empty value is null or 0; this function releases it.
template <typename Resource, auto kGiveBack>
using Owned = UniqueResource<GiveBackTraits<Resource, kGiveBack>>;

using UniqueRegistryKey = Owned<HKEY, &RegCloseKey>;
// A kernel object whose creator returns null on failure (a process, a thread, an event).
using UniqueKernelObject = Owned<HANDLE, &CloseHandle>;
using UniqueBitmap = Owned<HBITMAP, &DeleteObject>;
using UniqueBrush = Owned<HBRUSH, &DeleteObject>;
using UniquePen = Owned<HPEN, &DeleteObject>;
// Memory of the COM task allocator.
template <typename T>
using UniqueTaskMemory = Owned<T*, &CoTaskMemFree>;

// Owns a handle whose opener returns INVALID_HANDLE_VALUE on failure.
template <auto kGiveBack>
class [[nodiscard]] OwnedUnlessInvalid {
public:
    explicit OwnedUnlessInvalid(HANDLE opened) : handle(opened == INVALID_HANDLE_VALUE ? nullptr : opened) {}
    explicit operator bool() const { return static_cast<bool>(handle); }
    HANDLE Get() const { return handle.Get(); }

private:
    Owned<HANDLE, kGiveBack> handle;
};

using UniqueFile = OwnedUnlessInvalid<&CloseHandle>;
using UniqueFileSearch = OwnedUnlessInvalid<&FindClose>;

}  // namespace kvn::platform
