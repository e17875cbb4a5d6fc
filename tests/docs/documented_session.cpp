#include "tests/docs/documented_session.h"

#include "model/registry_values.h"
#include "resources/resource.h"
#include "tests/docs/registry_dump.h"
#include "tests/end_to_end/key_dialog_driver.h"
#include "tests/end_to_end/profile_driver.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/function_codes.h"

namespace kvn::docs {
namespace {

using namespace end_to_end;

using enum test::Function;
constexpr wchar_t kNotepad[] = L"C:\\windows\\notepad.exe";

constexpr char kRecordLine[] = " bytes of WM_COPYDATA:";
constexpr char kProfileFileExample[] = "VID1234PID5678.xml";

void PressKeys(const Sheet& sheet, WORD second, const wchar_t* name) {
    const KeyDialog keys(sheet.ProcessId());
    keys.Press(IDC_KEYS_INPUT1, VK_LCONTROL, L"Left Ctrl");
    keys.MoveTo(IDC_KEYS_INPUT2);
    keys.Press(IDC_KEYS_INPUT2, second, name);
    keys.CloseWith(IDC_KEYS_OK);
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return text;
}

bool TellsOfRecord(const std::string& line) {
    return line.find(kRecordLine) != std::string::npos;
}

// The bytes that a line of the log names.
std::string BytesOfRecord(const std::string& line) {
    std::string bytes;
    for (std::size_t place = line.find(':') + 1; place < line.size(); place += 3) {
        bytes += static_cast<char>(std::stoi(line.substr(place, 3), nullptr, 16));
    }
    return bytes;
}

}  // namespace

void DocumentedSessionTest::RunSession() {
    const Sheet sheet = OpenSheetWithService();
    ReturnToInitialValues(sheet);
    AssignKeys(sheet);
    TieNotepad(sheet);
    sheet.Apply();
    AddGestures(sheet);
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
    EndService();
}

void DocumentedSessionTest::ReturnToInitialValues(const Sheet& sheet) const {
    AskService({L"--send-settings", L"1,2,8,3,4,6,33,34,7,5,3"});
    sheet.Click(IDC_PANE_RESET);
    AnswerMessage(sheet.ProcessId(), IDOK);
    WaitFor("Apply", [&] { return sheet.CanApply(); });
}

void DocumentedSessionTest::AssignKeys(const Sheet& sheet) {
    sheet.ChooseByMouse(IDC_PANE_CENTER, kGesture);
    WaitFor("the gesture button", [&] { return sheet.Chosen(IDC_PANE_CENTER) == kGesture; });
    sheet.ChooseByMouse(IDC_PANE_BUTTON5, kKeys);
    PressKeys(sheet, 'V', L"V");
    WaitFor("the keys", [&] { return sheet.ChosenText(IDC_PANE_BUTTON5) == L"Arbitrary key[Left Ctrl+V]"; });
}

void DocumentedSessionTest::TieNotepad(const Sheet& sheet) {
    sheet.Click(IDC_PAGE_EDIT_PROFILE);
    const ProfileEditor editor(sheet.ProcessId());
    editor.Select(0);
    editor.Click(IDC_PROFILES_ADD_PROGRAM);
    const ProgramSelection selection(sheet.ProcessId());
    selection.Click(IDC_PROGRAMS_REFERENCE);
    OpenFileByPath(sheet.ProcessId(), kNotepad);
    selection.WaitUntilClosed();
    editor.CloseWith(IDOK);
}

void DocumentedSessionTest::AddGestures(const Sheet& sheet) {
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(editor, "DR");
    editor.ChooseFunction(kCloseWindow);
    editor.TypeMemo("CLOSE IT");
    editor.CloseWith(IDOK);
    WaitFor("the gesture", [&] { return list.Rows().size() == 1; });

    const GestureEditor second = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(second, "U");
    second.ChooseFunction(kKeys);
    PressKeys(sheet, 'N', L"N");
    second.CloseWith(IDOK);
    WaitFor("the second gesture", [&] { return list.Rows().size() == 2; });
}

std::vector<std::string> DocumentedSessionTest::LogLines() const {
    std::vector<std::string> lines;
    for (const std::string& line : LinesOfLog()) {
        if (lines.empty() || lines.back() != line) lines.push_back(line);
    }
    return lines;
}

Examples DocumentedSessionTest::ExamplesOfSession() const {
    Examples examples;
    std::vector<std::string> events;
    for (const std::string& line : LogLines()) {
        if (TellsOfRecord(line)) {
            examples["initial-settings.txt"] = DumpBytes(BytesOfRecord(line));
        } else {
            events.push_back(line);
        }
    }
    examples["service.log"] = Joined(events);
    examples["published.txt"] = DumpKey(model::kBaseKey);
    examples["settings.txt"] = DumpKey(kModelKey);
    examples[kProfileFileExample] = ReadFileBytes(ProfileFile());
    return examples;
}

}  // namespace kvn::docs
