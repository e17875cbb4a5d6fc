// The panel behind the property page: it owns the edited settings, and handles start-up, apply, reset and help.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "gestures/gesture_pane.h"
#include "model/mouse_settings.h"
#include "page/button_pane.h"
#include "page/property_panel.h"
#include "platform/combo_box.h"
#include "platform/command_table.h"
#include "platform/message_box.h"
#include "profiles/profile_editor.h"

namespace kvn::page {

class KorvenPanel final : public IPropertyPanel,
                          public std::enable_shared_from_this<KorvenPanel>,
                          private IButtonPaneOwner,
                          private gestures::IGesturePaneOwner,
                          private profiles::IProfileDisplay {
public:
    KorvenPanel();
    ~KorvenPanel() override;
    KorvenPanel(const KorvenPanel&) = delete;
    KorvenPanel& operator=(const KorvenPanel&) = delete;

    bool CanAddPage(LPFNADDPROPSHEETPAGE addPage, LPARAM parameter) override;
    void OnInitDialog(HINSTANCE module, HWND page) override;
    bool OnApply(HINSTANCE module, HWND page) override;
    bool OnHScroll(HWND trackbar) override;
    bool IsChangingControl(UINT controlId) override;
    bool OnCommandChanged(HWND window, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(WPARAM wParam, LPARAM lParam, HWND page) override;
    void OnCopyData(HWND sender, const COPYDATASTRUCT* data) override;
    void OnPaint(HWND page) override;
    HBRUSH OnCtlColorStatic(HDC deviceContext, HWND control) override;
    void OnTabChanged(HWND page, WPARAM wParam, const NMHDR* header) override;

private:
    static const platform::CommandRow<KorvenPanel, UINT> kCommands[4];

    // IButtonPaneOwner, IGesturePaneOwner
    void OnHelp() override;
    void OnReset() override;
    void OnPaneCommand(HWND pane, WPARAM wParam, LPARAM lParam) override;
    void OnPaneScroll(HWND trackbar) override;
    std::shared_ptr<void> KeepAlive() override { return shared_from_this(); }
    model::SettingValues ShownValues() const override;

    // profiles::IProfileDisplay
    void ShowProfiles() override;
    void ShowSelectedProfile() override;

    void OnProfileCommand(UINT notification);
    void OnProfileChosen();
    void OnEditProfileCommand(UINT notification);
    void OnHelpCommand(UINT notification);
    void OnResetCommand(UINT notification);

    // Start-up, and its steps in order.
    void SetUpPage(HINSTANCE module);
    void ReadDevice();
    void LoadProfiles();
    void CreatePanes(HINSTANCE module);
    void RepairProfiles();
    void FindServiceFiles();

    void FillProfileCombo();
    void SelectInProfileCombo();
    void ShowGestures();
    void PlacePane(HWND pane, HWND previous) const;
    void ShowPane(HWND pane, bool show) const;
    // Stores the contents of the button pane in the selected profile.
    void StorePane();
    bool SaveSettings();
    HWND Control(int control) const { return GetDlgItem(pageWindow, control); }

    model::MouseSettings settings;
    platform::MessageBoxes boxes;
    ButtonPane buttonPane;
    gestures::GesturePane gesturePane;

    platform::OpenedList profileList;
    HWND pageWindow = nullptr;
    HWND buttonPaneWindow = nullptr;
    HWND gesturePaneWindow = nullptr;
    std::wstring helpFile;  // empty if the service's folder is not known
    bool isEditingProfiles = false;
    bool resetDeclined = false;  // the user's last answer about a reset
};

}  // namespace kvn::page
