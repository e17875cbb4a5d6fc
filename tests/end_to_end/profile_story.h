// The first steps of the stories about editing profiles, and their longer steps.
#pragma once

#include <string>
#include <vector>

#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_driver.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/start_menu_shortcuts.h"
#include "tests/end_to_end/stored_state.h"

namespace kvn::end_to_end {

class ProfileStory : public EndToEndTest {
protected:
    // Two shortcuts in the Start menu, and `StoredProfiles()` in the profile file.
    void SetUp() override;
    virtual std::vector<ProfileText> StoredProfiles() const { return {{}}; }

    // In the order in which the list of programs has them.
    static ProgramRow Easel() { return {"Zephyr easel", FileInWindowsFolder("explorer.exe")}; }
    static ProgramRow Racing() { return {"Zephyr racing", FileInWindowsFolder("regedit.exe")}; }
    // The program of the window below the page, and of the opened file.
    static ProgramRow Notepad() { return {"notepad.exe", FileInWindowsFolder("notepad.exe")}; }

    // Starts a program whose window then lies below everything that is opened later.
    void StartNotepad() const;

    // Clicks "Edit Profile" and waits for the editor.
    static ProfileEditor OpenEditor(const Sheet& sheet);
    // Clicks a button that asks for a name, types the name and presses Enter.
    static void EnterName(const ProfileEditor& editor, int button, const std::wstring& name);
    // Clicks the profiles' "Delete" and then "Yes".
    static void DeleteSelected(const ProfileEditor& editor);
    // Ties a program to the selected profile: "Add", and then a row of the list, the window, or a file.
    static void AddFromStartMenu(const ProfileEditor& editor, const ProgramRow& program);
    static void AddFromWindow(const ProfileEditor& editor, const ProgramRow& expected);
    static void AddFromFile(const ProfileEditor& editor, const ProgramRow& program);

    // Expects that page, profile file and registry agree.
    static void ExpectPage(const Sheet& sheet, const std::vector<std::string>& names, const std::wstring& selected);
    static void ExpectStored(const std::vector<ProfileText>& profiles, int selected, const RegistryValues& registry);

    // Waits until there is something to apply, and applies it.
    static void Apply(const Sheet& sheet);
    void Close(const Sheet& sheet, int button) const;

    static ProgramText InFile(const ProgramRow& program) { return {program[0], program[1]}; }
    // The registry's value for these programs.
    static std::string InRegistry(const std::vector<ProgramRow>& programs);

private:
    static std::string FileInWindowsFolder(const std::string& name);

    const StartMenuShortcuts shortcuts{L"KvnMouseUtil end to end"};
};

}  // namespace kvn::end_to_end
