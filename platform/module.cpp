#include "platform/module.h"

// The linker's name for the first byte of the module's image, which is what an instance handle points to.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kvn::platform {

HINSTANCE ThisModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace kvn::platform
