#include "gestures/gesture_pane.h"

#include <commctrl.h>

#include <array>
#include <utility>

#include "gestures/gesture_button.h"
#include "gestures/gesture_texts.h"
#include "platform/dialog_control.h"
#include "platform/list_view.h"
#include "platform/paused_redraw.h"
#include "resources/resource.h"

namespace kvn::gestures {
namespace {

enum Column { kStrokeColumn, kFunctionColumn, kMemoColumn };

constexpr std::array<platform::ListColumn, 3> kColumns{
    {{IDS_COLUMN_GESTURE, 70}, {IDS_COLUMN_FUNCTION, 125}, {IDS_COLUMN_MEMO, 172}}};

}  // namespace

const platform::CommandRow<GesturePane> GesturePane::kCommands[] = {
    {IDC_GESTURES_ADD, &GesturePane::OnAdd},
    {IDC_GESTURES_EDIT, &GesturePane::OnEdit},
    {IDC_GESTURES_DELETE, &GesturePane::OnDelete},
};

GesturePane::GesturePane(model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes,
                         IGesturePaneOwner& paneOwner)
    : Pane(IDD_GESTURE_PANE, paneOwner),
      settings(mouseSettings),
      boxes(messageBoxes),
      owner(paneOwner),
      editor(mouseSettings, messageBoxes) {}

void GesturePane::SetUp() {
    if (Window() == nullptr) return;
    list = Control(IDC_GESTURES_LIST);
    platform::SelectFullRows(list);
    platform::AddListColumns(list, Module(), kColumns);
    EnableForSelection();
    TakeOver();
}

void GesturePane::ShowProfile() {
    if (Window() == nullptr) return;
    isFilled = false;
    const platform::PausedRedraw pause(list);
    platform::ClearListRows(list);
    int row = 0;
    for (const model::GestureEntry& gesture : Gestures()) InsertRow(row++, gesture, FunctionText(Module(), gesture));
    EnableForSelection();
    isFilled = true;
}

std::optional<LRESULT> GesturePane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCPAINT) return 1;  // there is no frame to paint
    if (message == WM_NOTIFY && wParam == IDC_GESTURES_LIST) {
        OnListNotification(*reinterpret_cast<const NMHDR*>(lParam));
    }
    return std::nullopt;
}

void GesturePane::OnListNotification(const NMHDR& header) {
    if (header.code == LVN_ITEMCHANGED) EnableForSelection();
    if (header.code == NM_DBLCLK) OnDoubleClick();
}

void GesturePane::OnDoubleClick() {
    LVHITTESTINFO hit{};
    GetCursorPos(&hit.pt);
    ScreenToClient(list, &hit.pt);
    const auto row = static_cast<int>(SendMessageW(list, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    if (row < 0) return;
    const HWND edit = Control(IDC_GESTURES_EDIT);
    SendMessageW(Window(), WM_COMMAND, MAKEWPARAM(IDC_GESTURES_EDIT, BN_CLICKED), reinterpret_cast<LPARAM>(edit));
}

void GesturePane::OnCommand(UINT control, UINT /*notification*/) {
    platform::CarryOutCommand(*this, kCommands, control);
}

void GesturePane::OnAdd() {
    if (boxes.AllowsAnotherItem(Window(), platform::ListRowCount(list))) OpenGestureEditor(GestureEditMode::Add);
}

void GesturePane::OnEdit() {
    if (SelectedGesture()) {
        OpenGestureEditor(GestureEditMode::Edit);
    } else {
        boxes.Warn(Window(), IDS_NO_GESTURE_SELECTED);
    }
}

void GesturePane::OnDelete() {
    if (!platform::FirstSelectedRow(list)) {
        boxes.Warn(Window(), IDS_NO_GESTURE_SELECTED);
        return;
    }
    if (!boxes.ConfirmDeletion(Window())) return;
    const platform::PausedRedraw pause(list);
    while (const auto row = platform::FirstSelectedRow(list)) {
        if (const auto index = SelectedGesture())
            Gestures().erase(Gestures().begin() + static_cast<std::ptrdiff_t>(*index));
        platform::DeleteListRow(list, *row);
    }
    EnableForSelection();
}

void GesturePane::OpenGestureEditor(GestureEditMode mode) {
    if (editor.IsOpen()) return;
    const model::SettingValues shown = owner.ShownValues();
    if (!HasGestureFunction(shown)) {
        boxes.Warn(Window(), IDS_GESTURE_NEEDS_BUTTON);
        return;
    }
    GestureEditRequest request;
    request.mode = mode;
    request.gestureButton = FindGestureButton(shown);
    const auto index = SelectedGesture();
    if (mode == GestureEditMode::Edit && index) request.gesture = Gestures()[*index];
    request.onConfirmed = [this, mode](const model::GestureEntry& gesture, const std::wstring& functionText) {
        if (mode == GestureEditMode::Edit) {
            ReplaceGesture(gesture, functionText);
        } else {
            AddGesture(gesture, functionText);
        }
    };
    editor.Run(Module(), Window(), std::move(request));
}

// A row that the editor adds or changes shows the function in the editor's words, "Arbitrary key" with the keys in
// brackets, until the profile is shown again.
void GesturePane::AddGesture(const model::GestureEntry& gesture, const std::wstring& functionText) {
    Gestures().push_back(gesture);
    // If the list could not be filled completely, the row would be out of place.
    if (!isFilled) return ShowProfile();
    InsertRow(static_cast<int>(Gestures().size()) - 1, gesture, functionText);
}

void GesturePane::ReplaceGesture(const model::GestureEntry& gesture, const std::wstring& functionText) {
    const auto index = SelectedGesture();
    if (!index) return;
    Gestures()[*index] = model::GestureEntry(gesture);  // if the copy fails, the gesture stays unchanged
    const auto row = static_cast<int>(*index);
    platform::SetListText(list, row, kStrokeColumn, gesture.stroke);
    SetDetails(row, gesture, functionText);
}

void GesturePane::InsertRow(int row, const model::GestureEntry& gesture, const std::wstring& functionText) const {
    SetDetails(platform::InsertListRow(list, row, gesture.stroke), gesture, functionText);
}

void GesturePane::SetDetails(int row, const model::GestureEntry& gesture, const std::wstring& functionText) const {
    platform::SetListText(list, row, kFunctionColumn, functionText);
    platform::SetListText(list, row, kMemoColumn, gesture.memo);
}

std::optional<std::size_t> GesturePane::SelectedGesture() const {
    const auto row = platform::FirstSelectedRow(list);
    // A message from another program may have added a row without a gesture.
    if (!row || static_cast<std::size_t>(*row) >= Gestures().size()) return std::nullopt;
    return static_cast<std::size_t>(*row);
}

// Several rows can be deleted at once but not edited.
void GesturePane::EnableForSelection() const {
    const int count = platform::SelectedRowCount(list);
    platform::EnableControl(Window(), IDC_GESTURES_EDIT, count == 1, list);
    if (count < 2) platform::EnableControl(Window(), IDC_GESTURES_DELETE, count == 1, list);
}

}  // namespace kvn::gestures
