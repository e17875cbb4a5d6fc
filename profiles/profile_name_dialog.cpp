#include "profiles/profile_name_dialog.h"

#include <algorithm>
#include <array>

#include "platform/modal_dialog.h"
#include "platform/texts.h"
#include "platform/window_text.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

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

class ProfileNameDialog final : public platform::ModalDialog {
public:
    explicit ProfileNameDialog(ProfileNameRequest& nameRequest) : request(nameRequest) {}

    bool Run(HINSTANCE module, HWND owner) { return RunModal(module, IDD_PROFILE_NAME, owner); }

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog() const;
    BOOL OnCommand(int control);

    // The mode's row; null for an unknown mode.
    const ModeRow* Mode() const;
    std::wstring TypedName() const;

    ProfileNameRequest& request;
};

INT_PTR ProfileNameDialog::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    if (message == WM_COMMAND) return OnCommand(LOWORD(wParam));
    if (message == WM_INITDIALOG) OnInitDialog();
    return FALSE;  // the focus stays where it was put
}

void ProfileNameDialog::OnInitDialog() const {
    const HWND field = Control(IDC_PROFILE_NAME);
    SendMessageW(field, EM_LIMITTEXT, kMaxNameLength, 0);
    if (const ModeRow* mode = Mode()) {
        SetWindowTextW(Window(), platform::LoadText(Module(), mode->title).c_str());
        if (mode->startsWithName) SetWindowTextW(field, request.name.c_str());
    }
    SendMessageW(field, EM_SETSEL, 0, kToTheEnd);
    SetFocus(field);
}

BOOL ProfileNameDialog::OnCommand(int control) {
    if (control == IDOK) {
        const ModeRow* mode = Mode();
        if (mode != nullptr && mode->storesName) request.name = TypedName();
        End(platform::DialogResult::Accepted);
    } else if (control == IDCANCEL) {
        End(platform::DialogResult::Cancelled);
    }
    return control == IDOK || control == IDCANCEL ? TRUE : FALSE;
}

const ModeRow* ProfileNameDialog::Mode() const {
    const auto* const row =
        std::find_if(kModes.begin(), kModes.end(), [this](const ModeRow& mode) { return mode.mode == request.mode; });
    return row == kModes.end() ? nullptr : row;
}

// What was typed. The field stops a user in the middle of a surrogate pair, too: half a character is none.
std::wstring ProfileNameDialog::TypedName() const {
    std::wstring name = platform::WindowText(Control(IDC_PROFILE_NAME), kMaxNameLength);
    if (!name.empty() && IS_HIGH_SURROGATE(name.back())) name.pop_back();
    return name;
}

}  // namespace

bool RunProfileNameDialog(HINSTANCE module, HWND owner, ProfileNameRequest& request) {
    return ProfileNameDialog(request).Run(module, owner);
}

}  // namespace kvn::profiles
