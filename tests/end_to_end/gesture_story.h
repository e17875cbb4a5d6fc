// The first steps of the stories about gestures, and the drawing of a stroke. The page reads the cursor and asks the
// service about the button ten times a second. So each step of a stroke waits until the service's log shows that the
// page has seen the cursor at its new place.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/end_to_end/gesture_driver.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_text.h"

namespace kvn::end_to_end {

// Lines of the service's log.
inline constexpr char kEditBegin[] = "32773 (0x8005) GestureEditBegin wParam=0 lParam=0 reply=0 sent";
inline constexpr char kEditEnd[] = "32774 (0x8006) GestureEditEnd wParam=0 lParam=0 reply=0 posted";
inline constexpr char kWheelHeld[] = "32775 (0x8007) IsButtonHeld wParam=0 lParam=4 reply=1 sent";
inline constexpr char kWheelNotHeld[] = "32775 (0x8007) IsButtonHeld wParam=0 lParam=4 reply=0 sent";

class GestureStory : public EndToEndTest {
protected:
    // A profile whose wheel button has the gesture function.
    void SetUp() override;
    void TearDown() override;
    static ProfileText WheelProfile(const std::vector<GestureText>& gestures = {});

    // Clicks "Add" or "Edit" and waits for the editor.
    static GestureEditor OpenEditor(const Sheet& sheet, const GestureList& list, int button);

    // Press a button, and release the one that was pressed last. None stays down after the test.
    void Hold(MouseButton button);
    void LetGo();

    // Clicks the editor's field, holds the button down and waits until the page has begun the stroke.
    void BeginStroke(const GestureEditor& editor, MouseButton button = MouseButton::Wheel);
    // Moves the cursor by this many pixels.
    void MoveBy(int x, int y) const;
    // Draws one letter, with enough steps of the cursor for it to be recognised.
    void DrawLetter(char letter) const;
    void DrawLetters(const std::string& letters) const;
    // Releases the button and waits until the page has noticed.
    void EndStroke(const GestureEditor& editor);
    // All of these steps.
    void Record(const GestureEditor& editor, const std::string& letters, MouseButton button = MouseButton::Wheel);

    // How often the page asked whether the button is held.
    std::size_t QueryCount() const;
    // Waits until the page has asked twice more. The second time it has read the cursor after this call.
    void WaitForTicks() const;

private:
    std::vector<MouseButton> heldButtons;
};

}  // namespace kvn::end_to_end
