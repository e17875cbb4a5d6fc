// The contents of the icon's open menu.
#include "service/tray/tray_menu.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "platform/unique_resource.h"
#include "tests/service_look/user_language.h"
#include "tests/support/window_search.h"

namespace kvn::service_test {
namespace {

using service::TrayState;
using Items = std::vector<std::wstring>;

constexpr UINT kMenuOfWindow = 0x01E1;  // MN_GETHMENU

MENUITEMINFOW InfoOf(HMENU menu, UINT place, std::array<wchar_t, 128>& text) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_STATE | MIIM_FTYPE | MIIM_SUBMENU | MIIM_ID;
    info.dwTypeData = text.data();
    info.cch = static_cast<UINT>(text.size());
    GetMenuItemInfoW(menu, place, TRUE, &info);
    return info;
}

// An item's text with its visible marks: checked, with a submenu, disabled, in bold.
std::wstring ItemAt(HMENU menu, UINT place) {
    std::array<wchar_t, 128> text{};
    const MENUITEMINFOW info = InfoOf(menu, place, text);
    if ((info.fType & MFT_SEPARATOR) != 0) return L"-";
    std::wstring item = text.data();
    if (info.hSubMenu != nullptr) item += L" >";
    if ((info.fState & MFS_CHECKED) != 0) item += (info.fType & MFT_RADIOCHECK) != 0 ? L" (o)" : L" (v)";
    if ((info.fState & MFS_DISABLED) != 0) item += L" (grey)";
    if ((info.fState & MFS_DEFAULT) != 0) item += L" (bold)";
    return item;
}

Items ItemsOf(HMENU menu) {
    Items items;
    for (int place = 0; place < GetMenuItemCount(menu); ++place) {
        items.push_back(ItemAt(menu, static_cast<UINT>(place)));
    }
    return items;
}

struct Seen {
    Items items;
    Items profiles;
};

Seen* seenMenu = nullptr;

// Runs in the loop of the menu.
void CALLBACK Look(HWND window, UINT, UINT_PTR timer, DWORD) {
    const HWND shown = test::FindTopLevelWindow([](HWND each) { return test::ClassOf(each) == L"#32768"; });
    const auto menu = reinterpret_cast<HMENU>(shown == nullptr ? 0 : SendMessageW(shown, kMenuOfWindow, 0, 0));
    if (menu == nullptr) return;
    *seenMenu = {ItemsOf(menu), ItemsOf(GetSubMenu(menu, 1))};
    KillTimer(window, timer);
    EndMenu();
}

Seen Open(const TrayState& state) {
    const platform::Owned<HWND, &DestroyWindow> window{
        CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr)};
    Seen seen;
    seenMenu = &seen;
    SetTimer(window.Get(), 1, 20, Look);
    EXPECT_EQ(service::ShowTrayMenu(window.Get(), state), std::nullopt);
    return seen;
}

TEST(TrayMenuContentsTest, HasItsItemsInTheirOrder) {
    const English english;
    const Seen seen = Open({.mouse = L"1234:5678", .profile = L"Work", .forcedProfile = {}, .profiles = {L"Work"}});
    EXPECT_EQ(seen.items, (Items{L"&Settings... (bold)", L"&Profile >", L"Pa&use", L"&Try the buttons...", L"-",
                                 L"&Export...", L"&Import...", L"-", L"&Help", L"A&bout", L"-", L"E&xit"}));
    EXPECT_EQ(seen.profiles, (Items{L"&Automatic (o)", L"-", L"Work"}));
}

TEST(TrayMenuContentsTest, SpeaksJapanese) {
    const Japanese japanese;
    const Seen seen = Open({});
    EXPECT_EQ(seen.items, (Items{L"設定(&S)... (bold)", L"プロファイル(&P) >", L"一時停止(&U)", L"ボタンを試す(&T)...",
                                 L"-", L"エクスポート(&E)...", L"インポート(&I)...", L"-", L"ヘルプ(&H)",
                                 L"バージョン情報(&B)", L"-", L"終了(&X)"}));
    EXPECT_EQ(seen.profiles, (Items{L"自動(&A) (o)"}));
}

TEST(TrayMenuContentsTest, MarksPauseAndTheForcedProfile) {
    const English english;
    const Seen seen = Open({.mouse = {},
                            .profile = {},
                            .forcedProfile = L"R&D",
                            .profiles = {L"Default", L"R&D", L"\u8aad\u307f\tx"},
                            .isPaused = true});
    EXPECT_EQ(seen.items[2], L"Pa&use (v)");
    EXPECT_EQ(seen.profiles, (Items{L"&Automatic", L"-", L"Default", L"R&&D (o)", L"\u8aad\u307f x"}));
}

}  // namespace
}  // namespace kvn::service_test
