#include "profiles/profile_name_dialog.h"

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "platform/subclass.h"
#include "platform/texts.h"
#include "platform/window_text.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

constexpr INT_PTR kAccepted = 1;
constexpr INT_PTR kCancelled = 2;
constexpr int kMaxNameLength = 254;
constexpr LPARAM kToTheEnd = 0x7FFFFFFF;

struct ModeRow {
    ProfileNameMode mode;
    UINT title;
    bool startsWithName;
    bool storesName;
};
constexpr std::array<ModeRow, 4> kModes{{
    {ProfileNameMode::Add, IDS_TITLE_ADD_PROFILE, false, true},
    {ProfileNameMode::Rename, IDS_TITLE_RENAME_PROFILE, true, true},
    {ProfileNameMode::Delete, IDS_TITLE_DELETE_PROFILE, false, false},
    {ProfileNameMode::Copy, IDS_TITLE_COPY_PROFILE, true, true},
}};

// One opening of the dialog.
struct Opening {
    HINSTANCE module;
    ProfileNameRequest& request;

    // The mode's row; null for a mode that there is not.
    const ModeRow* Mode() const {
        const auto* const row = std::find_if(kModes.begin(), kModes.end(),
                                             [this](const ModeRow& mode) { return mode.mode == request.mode; });
        return row == kModes.end() ? nullptr : row;
    }
};

HWND NameField(HWND dialog) {
    return GetDlgItem(dialog, IDC_PROFILE_NAME);
}

BOOL OnInitDialog(HWND dialog, const Opening& opening) {
    const HWND field = NameField(dialog);
    SendMessageW(field, EM_LIMITTEXT, kMaxNameLength, 0);
    if (const ModeRow* mode = opening.Mode()) {
        SetWindowTextW(dialog, platform::LoadText(opening.module, mode->title).c_str());
        if (mode->startsWithName) SetWindowTextW(field, opening.request.name.c_str());
    }
    SendMessageW(field, EM_SETSEL, 0, kToTheEnd);
    SetFocus(field);
    return FALSE;  // the focus stays where it is
}

// What was typed. The field stops a user in the middle of a surrogate pair, too: half a character is none.
std::wstring TypedName(HWND dialog) {
    std::wstring name = platform::WindowText(NameField(dialog), kMaxNameLength);
    if (!name.empty() && IS_HIGH_SURROGATE(name.back())) name.pop_back();
    return name;
}

void OnOk(HWND dialog, Opening& opening) {
    const ModeRow* mode = opening.Mode();
    if (mode != nullptr && mode->storesName) opening.request.name = TypedName(dialog);
    EndDialog(dialog, kAccepted);
}

BOOL HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        return OnInitDialog(dialog, *platform::ObjectOf<Opening>(dialog));
    }
    auto* const opening = platform::ObjectOf<Opening>(dialog);
    if (message != WM_COMMAND || opening == nullptr) return FALSE;
    switch (LOWORD(wParam)) {
        case IDOK:
            OnOk(dialog, *opening);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, kCancelled);
            return TRUE;
        default:
            return FALSE;
    }
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return platform::AtBoundary<INT_PTR>(FALSE, [&] { return HandleMessage(dialog, message, wParam, lParam); });
}

}  // namespace

bool RunProfileNameDialog(HINSTANCE module, HWND owner, ProfileNameRequest& request) {
    Opening opening{module, request};
    return DialogBoxParamW(module, MAKEINTRESOURCEW(IDD_PROFILE_NAME), owner, DialogProcedure,
                           reinterpret_cast<LPARAM>(&opening)) == kAccepted;
}

}  // namespace kvn::profiles
