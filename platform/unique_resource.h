// Owning types for what Windows hands out and wants back. A raw handle elsewhere is only borrowed.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <utility>

namespace kvn::platform {

// Owns one resource. Traits has a type Handle, a constant kEmpty and a function Close(Handle).
template <typename Traits>
class UniqueResource {
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

struct RegistryKeyTraits {
    using Handle = HKEY;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle key) { RegCloseKey(key); }
};
using UniqueRegistryKey = UniqueResource<RegistryKeyTraits>;

// A kernel object whose creator answers null on failure (a process, a thread, an event).
struct KernelObjectTraits {
    using Handle = HANDLE;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle object) { CloseHandle(object); }
};
using UniqueKernelObject = UniqueResource<KernelObjectTraits>;

// A file, whose opener answers INVALID_HANDLE_VALUE on failure.
class UniqueFile {
public:
    explicit UniqueFile(HANDLE owned) : file(owned == INVALID_HANDLE_VALUE ? nullptr : owned) {}
    explicit operator bool() const { return static_cast<bool>(file); }
    HANDLE Get() const { return file.Get(); }

private:
    UniqueKernelObject file;
};

struct BitmapTraits {
    using Handle = HBITMAP;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle bitmap) { DeleteObject(bitmap); }
};
using UniqueBitmap = UniqueResource<BitmapTraits>;

// Memory of the COM task allocator.
template <typename T>
struct TaskMemoryTraits {
    using Handle = T*;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle memory) { CoTaskMemFree(memory); }
};
template <typename T>
using UniqueTaskMemory = UniqueResource<TaskMemoryTraits<T>>;

}  // namespace kvn::platform
