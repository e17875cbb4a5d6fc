// Owning types for COM: interface pointers, and the initialisation of COM for a thread.
#pragma once

#include <windows.h>

#include <objbase.h>

#include "platform/unique_resource.h"

namespace kvn::platform {

template <typename Interface>
void ReleaseInterface(Interface* object) {
    object->Release();
}

// Owns one reference.
template <typename Interface>
using ComPointer = Owned<Interface*, &ReleaseInterface<Interface>>;

// While it lives, this thread is in a single-threaded apartment; false if that is impossible, as when the thread is in
// the multi-threaded one. The first object of a thread is expensive; further ones only raise a count.
class [[nodiscard]] ComApartment {
public:
    ComApartment() : entered(SUCCEEDED(CoInitialize(nullptr))) {}
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() {
        if (entered) CoUninitialize();
    }

    explicit operator bool() const { return entered; }

private:
    bool entered;
};

}  // namespace kvn::platform
