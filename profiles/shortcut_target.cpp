#include "profiles/shortcut_target.h"

#include <windows.h>

#include <msi.h>
#include <shlobj.h>

#include <array>

#include "platform/com_pointer.h"
#include "platform/system_library.h"

namespace kvn::profiles {
namespace {

using platform::ComPointer;

constexpr std::size_t kTargetBuffer = 260;
constexpr std::size_t kIdentifierBuffer = 39;  // a GUID in braces; feature names are not longer

using TargetBuffer = std::array<wchar_t, kTargetBuffer>;
using IdentifierBuffer = std::array<wchar_t, kIdentifierBuffer>;

constexpr wchar_t kInstaller[] = L"msi.dll";

}  // namespace

std::wstring ShortcutTarget(const std::wstring& shortcut) {
    ComPointer<IShellLinkW> link;
    ComPointer<IPersistFile> file;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                reinterpret_cast<void**>(link.Receive()))) ||
        FAILED(link.Get()->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file.Receive()))) ||
        FAILED(file.Get()->Load(shortcut.c_str(), STGM_SHARE_DENY_WRITE))) {
        return {};
    }
    TargetBuffer target{};
    WIN32_FIND_DATAW data{};
    if (FAILED(link.Get()->GetPath(target.data(), static_cast<int>(target.size()), &data, 0))) return {};
    return target.data();
}

std::wstring AdvertisedProgram(const std::wstring& shortcut) {
    using platform::SystemFunction;
    const auto getTarget = SystemFunction<decltype(MsiGetShortcutTargetW)>(kInstaller, "MsiGetShortcutTargetW");
    const auto getPath = SystemFunction<decltype(MsiGetComponentPathW)>(kInstaller, "MsiGetComponentPathW");
    if (getTarget == nullptr || getPath == nullptr) return {};

    IdentifierBuffer product{};
    IdentifierBuffer feature{};
    IdentifierBuffer component{};
    if (getTarget(shortcut.c_str(), product.data(), feature.data(), component.data()) != ERROR_SUCCESS) return {};

    TargetBuffer path{};
    auto size = static_cast<DWORD>(path.size());
    const INSTALLSTATE state = getPath(product.data(), component.data(), path.data(), &size);
    // In any other state the buffer holds no path of an installed program.
    return state == INSTALLSTATE_LOCAL || state == INSTALLSTATE_SOURCE ? path.data() : std::wstring();
}

}  // namespace kvn::profiles
