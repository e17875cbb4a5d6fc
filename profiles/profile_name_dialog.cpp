#include "profiles/profile_name_dialog.h"

#include <array>
#include <utility>

#include "model/enum_array.h"
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
};
constexpr std::array<ModeRow, 3> kModes{{
    {ProfileNameMode::Add, IDS_TITLE_ADD_PROFILE, false},
    {ProfileNameMode::Rename, IDS_TITLE_RENAME_PROFILE, true},
    {ProfileNameMode::Copy, IDS_TITLE_COPY_PROFILE, true},
}};

static_assert(model::IsInEnumOrder(kModes, [](const ModeRow& row) { return row.mode; }));

const ModeRow& RowOf(ProfileNameMode mode) {
    return kModes[static_cast<std::size_t>(mode)];
}

class ProfileNameDialog final : public platform::ModalDialog {
public:
    explicit ProfileNameDialog(const ProfileNameRequest& nameRequest) : request(nameRequest) {}

    std::optional<std::wstring> Run(HINSTANCE module, HWND owner) {
        if (!RunModal(module, IDD_PROFILE_NAME, owner)) return std::nullopt;
        return std::move(typedName);
    }

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog() const;
    BOOL OnCommand(int control);

    std::wstring TypedName() const;

    const ProfileNameRequest& request;
    std::wstring typedName;
};

INT_PTR ProfileNameDialog::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    if (message == WM_COMMAND) return OnCommand(LOWORD(wParam));
    if (message == WM_INITDIALOG) OnInitDialog();
    return FALSE;  // the focus stays where it was put
}

void ProfileNameDialog::OnInitDialog() const {
    const HWND field = Control(IDC_PROFILE_NAME);
    SendMessageW(field, EM_LIMITTEXT, kMaxNameLength, 0);
    const ModeRow& mode = RowOf(request.mode);
    SetWindowTextW(Window(), platform::LoadText(Module(), mode.title).c_str());
    if (mode.startsWithName) SetWindowTextW(field, request.currentName.c_str());
    SendMessageW(field, EM_SETSEL, 0, kToTheEnd);
    SetFocus(field);
}

BOOL ProfileNameDialog::OnCommand(int control) {
    if (control == IDOK) {
        typedName = TypedName();
        End(platform::DialogResult::Accepted);
    } else if (control == IDCANCEL) {
        End(platform::DialogResult::Cancelled);
    }
    return control == IDOK || control == IDCANCEL ? TRUE : FALSE;
}

// The typed name. The field's limit may fall within a surrogate pair; half a character is dropped.
std::wstring ProfileNameDialog::TypedName() const {
    std::wstring name = platform::WindowText(Control(IDC_PROFILE_NAME), kMaxNameLength);
    if (!name.empty() && IS_HIGH_SURROGATE(name.back())) name.pop_back();
    return name;
}

}  // namespace

std::optional<std::wstring> RunProfileNameDialog(HINSTANCE module, HWND owner, const ProfileNameRequest& request) {
    return ProfileNameDialog(request).Run(module, owner);
}

}  // namespace kvn::profiles
