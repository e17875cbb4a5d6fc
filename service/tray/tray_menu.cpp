#include "service/tray/tray_menu.h"

#include <array>

#include "platform/unique_resource.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

using UniqueMenu = platform::Owned<HMENU, &DestroyMenu>;

// Profiles are numbered from here, in the order of the file.
constexpr UINT kFirstProfile = 100;

constexpr UINT IdOf(TrayCommand command) {
    return static_cast<UINT>(command);
}

struct MenuRow {
    TrayCommand command;
    UINT textId;  // 0: a line between items
};

constexpr std::array kRowsBelowProfiles{
    MenuRow{TrayCommand::Pause, IDS_MENU_PAUSE},   MenuRow{TrayCommand::Try, IDS_MENU_TRY},       MenuRow{{}, 0},
    MenuRow{TrayCommand::Export, IDS_MENU_EXPORT}, MenuRow{TrayCommand::Import, IDS_MENU_IMPORT}, MenuRow{{}, 0},
    MenuRow{TrayCommand::Help, IDS_MENU_HELP},     MenuRow{TrayCommand::About, IDS_MENU_ABOUT},   MenuRow{{}, 0},
    MenuRow{TrayCommand::Exit, IDS_MENU_EXIT},
};

void Append(HMENU menu, UINT flags, UINT_PTR id, const std::wstring& text) {
    AppendMenuW(menu, flags | MF_STRING, id, text.c_str());
}

void AppendRow(HMENU menu, const MenuRow& row) {
    if (row.textId == 0) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else {
        Append(menu, 0, IdOf(row.command), Text(row.textId));
    }
}

void AppendProfile(HMENU menu, UINT id, const std::wstring& text, bool isChosen) {
    Append(menu, 0, id, text);
    if (isChosen) CheckMenuRadioItem(menu, id, id, id, MF_BYCOMMAND);
}

UniqueMenu ProfileMenu(const TrayState& state) {
    UniqueMenu menu(CreatePopupMenu());
    AppendProfile(menu.Get(), IdOf(TrayCommand::Automatic), Text(IDS_MENU_AUTOMATIC), state.forcedProfile.empty());
    if (!state.profiles.empty()) AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    UINT id = kFirstProfile;
    for (const std::wstring& name : state.profiles) {
        AppendProfile(menu.Get(), id++, MenuText(name), name == state.forcedProfile);
    }
    return menu;
}

UniqueMenu MakeMenu(const TrayState& state) {
    UniqueMenu menu(CreatePopupMenu());
    AppendRow(menu.Get(), {TrayCommand::Settings, IDS_MENU_SETTINGS});
    UniqueMenu profiles = ProfileMenu(state);
    // The menu owns the submenu now.
    Append(menu.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(profiles.Release()), Text(IDS_MENU_PROFILE));
    for (const MenuRow& row : kRowsBelowProfiles) AppendRow(menu.Get(), row);
    SetMenuDefaultItem(menu.Get(), IdOf(TrayCommand::Settings), FALSE);
    if (state.isPaused) CheckMenuItem(menu.Get(), IdOf(TrayCommand::Pause), MF_BYCOMMAND | MF_CHECKED);
    return menu;
}

UINT Track(HWND window, HMENU menu) {
    POINT cursor{};
    GetCursorPos(&cursor);
    // A menu closes when the user clicks elsewhere only if its window is in front.
    SetForegroundWindow(window);
    const int chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, window, nullptr);
    PostMessageW(window, WM_NULL, 0, 0);
    return static_cast<UINT>(chosen);
}

}  // namespace

std::optional<TrayChoice> ShowTrayMenu(HWND window, const TrayState& state) {
    const UniqueMenu menu = MakeMenu(state);
    const UINT chosen = Track(window, menu.Get());
    if (chosen == 0) return std::nullopt;
    if (chosen < kFirstProfile) return TrayChoice(static_cast<TrayCommand>(chosen));
    if (chosen - kFirstProfile >= state.profiles.size()) return std::nullopt;
    return TrayChoice(state.profiles[chosen - kFirstProfile]);
}

std::wstring MenuText(const std::wstring& name) {
    std::wstring text;
    for (const wchar_t character : OnOneLine(name)) text.append(character == L'&' ? 2 : 1, character);
    return text;
}

}  // namespace kvn::service
