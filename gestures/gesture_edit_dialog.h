// The modal dialog "Edit gesture": the stroke is recorded with the mouse, its function chosen, a note typed.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

#include "gestures/gesture_mgr.h"
#include "gestures/gesture_trail_overlay.h"
#include "model/mouse_settings.h"
#include "platform/combo_box.h"
#include "platform/message_box.h"
#include "platform/modal_dialog.h"

namespace kvn::gestures {

struct GestureButtonRow;

enum class GestureEditMode { Add, Edit };

// The input of the dialog.
struct GestureEditRequest {
    GestureEditMode mode = GestureEditMode::Add;
    model::GestureEntry gesture;                      // the gesture to edit
    const GestureButtonRow* gestureButton = nullptr;  // the button that draws a stroke; null: no stroke can be recorded
    // Called on OK, with the text of the chosen function. The dialog is still open. If there is no memory for the
    // gesture it stays open, so that no input is lost.
    std::function<void(const model::GestureEntry& gesture, const std::wstring& functionText)> onConfirmed;
};

class GestureEditDialog final : public platform::ModalDialog {
public:
    GestureEditDialog(const model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes);

    // Runs the dialog; one at a time.
    void Run(HINSTANCE module, HWND owner, GestureEditRequest editRequest);

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog();
    void OnCommand(int control, int notification);
    void OnFunctionNotification(UINT notification);
    void OnFunctionChosen();
    void OnStrokeClicked();
    void OnOk();
    void OnDestroy();

    void OnTick();

    // The notices of the gesture manager.
    static std::int32_t OnGestureNotice(const model::GestureNotice* notice);
    void OnNotice(const model::GestureNotice& notice);

    void ShowGesture();
    void ShowStroke(const std::wstring& text);
    model::EtcKey SelectedKeys() const;
    bool IsStrokeTaken(const std::wstring& stroke) const;

    const model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    CGestureMgr manager;
    GestureTrailOverlay trail;
    GestureEditRequest request;
    platform::OpenedList functionList;
};

}  // namespace kvn::gestures
