#include "tests/end_to_end/gesture_story.h"

#include <algorithm>

#include "resources/resource.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/stroke_steps.h"

namespace kvn::end_to_end {
namespace {

constexpr char kQuery[] = "32775 (0x8007) IsButtonHeld";

}  // namespace

void GestureStory::SetUp() {
    EndToEndTest::SetUp();
    WriteFileBytes(ProfileFile(), ProfileFileText({WheelProfile()}));
}

void GestureStory::TearDown() {
    while (!heldButtons.empty()) LetGo();
    EndToEndTest::TearDown();
}

void GestureStory::Hold(MouseButton button) {
    heldButtons.push_back(button);
    HoldButton(button);
}

void GestureStory::LetGo() {
    LetGoOfButton(heldButtons.back());
    heldButtons.pop_back();
}

ProfileText GestureStory::WheelProfile(const std::vector<GestureText>& gestures) {
    return {"Default", {{"tbutton", "36"}}, gestures};
}

GestureEditor GestureStory::OpenEditor(const Sheet& sheet, const GestureList& list, int button) {
    list.Click(button);
    return GestureEditor(sheet.ProcessId());
}

void GestureStory::BeginStroke(const GestureEditor& editor, MouseButton button) {
    const std::size_t before = QueryCount();
    editor.ClickStroke();
    WaitFor("the page to ask for the button", [&] { return QueryCount() > before; });
    Hold(button);
    WaitFor("the trail", [&] { return editor.Trail() != nullptr; });
}

void GestureStory::MoveBy(int x, int y) const {
    const POINT from = Cursor();
    MoveCursorTo({from.x + x, from.y + y});
    WaitForTicks();
}

void GestureStory::DrawLetter(char letter) const {
    const POINT move = test::StepOf(letter);
    for (int step = 0; step < test::kStepsOfLetter; ++step) MoveBy(move.x, move.y);
}

void GestureStory::DrawLetters(const std::string& letters) const {
    for (const char letter : letters) DrawLetter(letter);
}

void GestureStory::EndStroke(const GestureEditor& editor) {
    LetGo();
    WaitFor("the end of the trail", [&] { return editor.Trail() == nullptr; });
    WaitFor("the editor in the foreground", [&] { return GetForegroundWindow() == editor.Window(); });
}

void GestureStory::Record(const GestureEditor& editor, const std::string& letters, MouseButton button) {
    BeginStroke(editor, button);
    DrawLetters(letters);
    EndStroke(editor);
    editor.ExpectStroke(letters);
}

std::size_t GestureStory::QueryCount() const {
    const std::vector<std::string> messages = MessagesToService();
    return static_cast<std::size_t>(std::count_if(
        messages.begin(), messages.end(), [](const std::string& message) { return message.rfind(kQuery, 0) == 0; }));
}

void GestureStory::WaitForTicks() const {
    const std::size_t before = QueryCount();
    WaitFor("the page to see the cursor", [&] { return QueryCount() >= before + 2; });
}

}  // namespace kvn::end_to_end
