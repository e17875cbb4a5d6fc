// The fixture of the tests of the profile editor: the page with profiles, and the editor opened by its button.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/page_fixture.h"
#include "tests/support/profile_dialogs.h"

namespace kvn::test {

inline constexpr wchar_t kNoProfile[] = L"A profile has not been selected.";
inline constexpr wchar_t kManyProfiles[] = L"Multiple profiles have been selected.";
inline constexpr wchar_t kNoProgram[] = L"A program has not been selected.";
inline constexpr wchar_t kNameUsed[] = L"Profile name is already in use.";
inline constexpr wchar_t kDeleteDefault[] = L"Cannot delete the default profile.";
inline constexpr wchar_t kRenameDefault[] = L"Cannot change the default profile name.";
inline constexpr wchar_t kLimitReached[] = L"It is not possible to register more than 100 items.";

// A program that Wine and Windows have, and a path without a file.
inline constexpr char kRealProgram[] = "C:\\windows\\notepad.exe";
inline constexpr char kMissingProgram[] = "C:\\nowhere\\missing.exe";

// The text of one profile with these programs: names and paths.
std::string ProfileWithPrograms(const std::string& name,
                                const std::vector<std::pair<std::string, std::string>>& programs);

// "Default" and this many more: "p1", "p2" and so on.
std::vector<std::string> NumberedProfiles(int count);

class ProfileEditorTest : public PageTest {
protected:
    // Opens the page with these profiles, and the editor.
    void OpenEditor(const std::vector<std::string>& profiles, int selected = 0);
    // Presses the page's button.
    void ReopenEditor();
    // Closes the editor with this button and waits until the page is in front again.
    void CloseEditor(int button);

    void Press(int button) const;
    // The command of a button, whether it is enabled or not.
    void Command(int button) const;
    // Gives the command and expects this refusal.
    void ExpectRefusal(int button, const std::wstring& text) const;
    // Gives the command and expects that it ends without a message.
    void ExpectSilence(int button) const;
    // Gives a deletion's command and answers the question.
    void CommandAndAnswer(int button, int answer) const;
    // Gives the command of a button that opens the dialog for a name, types one and presses OK.
    void Name(int button, const std::wstring& name) const;
    bool IsQuiet() const;

    std::vector<std::wstring> Profiles() const { return editor->Profiles(); }
    std::vector<std::wstring> ProgramPaths() const { return editor->ProgramPaths(); }

    // The page's own combo box.
    std::vector<std::wstring> ComboProfiles() const;
    int ComboSelection() const;

    std::string Saved() const { return ReadFileText(ProfilePath()); }
    std::vector<std::string> SavedNames() const;
    // The paths of a saved profile's programs.
    std::vector<std::string> SavedPaths(int profile) const;

    std::optional<ProfileEditorDialog> editor;
};

}  // namespace kvn::test
