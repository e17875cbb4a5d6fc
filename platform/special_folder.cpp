#include "platform/special_folder.h"

#include <shlobj.h>

#include <array>

#include "platform/unique_resource.h"

namespace kvn::platform {
namespace {

constexpr std::size_t kPathBuffer = 1040;  // more than the shell ever fills

}  // namespace

std::wstring SpecialFolder(int folder, HWND owner) {
    UniqueTaskMemory<ITEMIDLIST> items;
    std::array<wchar_t, kPathBuffer> path{};
    if (FAILED(SHGetSpecialFolderLocation(owner, folder, items.Receive()))) return {};
    return SHGetPathFromIDListW(items.Get(), path.data()) ? path.data() : std::wstring();
}

}  // namespace kvn::platform
