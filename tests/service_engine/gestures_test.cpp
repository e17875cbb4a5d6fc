// The stroke under way, and the page's editor.
#include "tests/service_engine/engine_fixture.h"

namespace kvn::service {
namespace {

constexpr auto Up = StrokeDirection::Up;
constexpr auto Down = StrokeDirection::Down;

class GesturesTest : public EngineTest {
protected:
    GesturesTest() {
        Assign(Center, kGesture);
        AddGesture({Up}, kCopy);
        AddGesture({Up, Down}, kShift);
    }

    void DrawUp() { MoveTo(place.x, place.y - 60); }
};

TEST_F(GesturesTest, AStrokeInTheListActs) {
    EXPECT_TRUE(Press(Center));
    EXPECT_EQ(Done(), "StrokeBegin 500,500");
    EXPECT_TRUE(engine.WantsTicks());
    DrawUp();
    EXPECT_EQ(Done(), "StrokeMove 500,440");
    EXPECT_TRUE(Release(Center));
    EXPECT_FALSE(engine.WantsTicks());
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 10 Gesture");
    EXPECT_EQ(last.stroke[0], Up);
    EXPECT_EQ(last.controlFunction, kGesture);
}

TEST_F(GesturesTest, AllLettersMustBeEqual) {
    Press(Center);
    DrawUp();
    DrawUp();
    MoveTo(500, 440);  // ends the segment
    MoveTo(500, 500);
    Done();
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 19 Gesture");
}

TEST_F(GesturesTest, AStrokeThatIsNotInTheListDoesNothing) {
    Press(Center);
    MoveTo(600, 500);
    Done();
    EXPECT_TRUE(Release(Center));
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 UnknownStroke");
}

TEST_F(GesturesTest, TheFirstOfEqualStrokesCounts) {
    AddGesture({Up}, 11);
    Press(Center);
    DrawUp();
    Done();
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 10 Gesture");
}

TEST_F(GesturesTest, GesturesBeyondTheCountAreNotLookedAt) {
    settings.gestureCount = 0;
    Apply();
    Press(Center);
    DrawUp();
    Done();
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 UnknownStroke");
}

TEST_F(GesturesTest, ACountBeyondTheListIsNoFault) {
    settings.gestureCount = 0xFFFF'FFFF;
    Apply();
    Press(Center);
    MoveTo(600, 500);
    Release(Center);
    EXPECT_EQ(last.cause, Cause::UnknownStroke);
}

TEST_F(GesturesTest, WithoutADirectionTheNaturalClickIsMade) {
    Press(Center);
    MoveTo(520, 520);
    Done();
    EXPECT_TRUE(Release(Center));
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 9 NoStroke");
}

TEST_F(GesturesTest, TheNaturalClickIsThatOfTheControl) {
    Assign(Center, 9);
    Assign(Button5, kGesture);
    Press(Button5);
    Done();
    Release(Button5);
    EXPECT_EQ(Done(), "StrokeEnd; Act Button5 4 NoStroke");
}

TEST_F(GesturesTest, TheReleaseAddsNoPosition) {
    Press(Center);
    place = {500, 400};
    Done();
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 9 NoStroke");
}

TEST_F(GesturesTest, EachStrokeBeginsFromNothing) {
    Press(Center);
    DrawUp();
    Release(Center);
    Press(Center);
    Done();
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 9 NoStroke");
}

TEST_F(GesturesTest, FunctionsThatAGestureCannotDoAreNoted) {
    for (const model::FunctionCode code : std::initializer_list<model::FunctionCode>{0, 35, kGesture, kKeys, kOff}) {
        settings.gestures[0].function = code;
        Apply();
        Press(Center);
        DrawUp();
        Release(Center);
        EXPECT_EQ(last.kind, OrderKind::Note) << code;
        EXPECT_EQ(last.cause, Cause::Gesture) << code;
    }
}

TEST_F(GesturesTest, AGesturesKeysTravelWithIt) {
    AddGesture({StrokeDirection::Right}, kKeys, {{'K', model::kNoKey, model::kNoKey}});
    Press(Center);
    MoveTo(600, 500);
    Release(Center);
    EXPECT_EQ(last.kind, OrderKind::Act);
    EXPECT_EQ(last.keys.codes[0], 'K');
}

TEST_F(GesturesTest, TheRightButtonGivesTheStrokeUp) {
    Press(Center);
    DrawUp();
    Done();
    EXPECT_TRUE(Press(Right));
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp; Note Right 0 GivesUp");
    EXPECT_FALSE(engine.WantsTicks());
    EXPECT_TRUE(Release(Right));
    EXPECT_TRUE(Release(Center));
    EXPECT_EQ(Done(), "");
    EXPECT_FALSE(Press(Right));
}

TEST_F(GesturesTest, ARightButtonThatDrawsDoesNotGiveItsStrokeUp) {
    Assign(Center, 9);
    Assign(Right, kGesture);
    EXPECT_TRUE(Press(Right));
    DrawUp();
    Done();
    EXPECT_TRUE(Release(Right));
    EXPECT_EQ(Done(), "StrokeEnd; Act Right 10 Gesture");
}

TEST_F(GesturesTest, ASecondGestureButtonIsKeptAndDoesNothing) {
    Assign(Right, kGesture);
    Press(Center);
    Done();
    EXPECT_TRUE(Press(Right));
    EXPECT_TRUE(Release(Right));
    EXPECT_EQ(Done(), "Note Right 36");
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 9 NoStroke");
}

TEST_F(GesturesTest, OtherButtonsDoWhatTheyAlwaysDo) {
    Assign(Button4, kShift);
    Press(Center);
    Done();
    EXPECT_TRUE(Press(Button4));
    EXPECT_FALSE(Press(Left));
    EXPECT_FALSE(Wheel(120));
    EXPECT_FALSE(Tilt(120));
    EXPECT_EQ(Done(), "Begin Button4 19 #1");
    EXPECT_TRUE(engine.WantsTicks());
}

TEST_F(GesturesTest, APauseGivesTheStrokeUp) {
    Press(Center);
    Done();
    Pause(true);
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp");
    EXPECT_TRUE(Release(Center));
    EXPECT_EQ(Done(), "");
}

TEST_F(GesturesTest, LeavingTheSessionGivesTheStrokeUp) {
    Press(Center);
    Done();
    LeaveSession();
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp");
    EXPECT_TRUE(Release(Center));
}

TEST_F(GesturesTest, AReleaseThatWasMissedGivesTheStrokeUp) {
    Press(Center);
    DrawUp();
    Done();
    MissRelease(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp");
    EXPECT_FALSE(Release(Center));
}

TEST_F(GesturesTest, AnotherProfileGivesTheStrokeUp) {
    Press(Center);
    Done();
    UseProfile(2);
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp");
    EXPECT_EQ(last.profile, 1U);
}

TEST_F(GesturesTest, OtherSettingsOfTheSameProfileLetItGoOn) {
    Press(Center);
    Done();
    settings.gestures[0].function = 11;
    Apply();
    DrawUp();
    Release(Center);
    EXPECT_EQ(Done(), "StrokeMove 500,440; StrokeEnd; Act Center 11 Gesture");
}

TEST_F(GesturesTest, AControlThatDrawsNoMoreGivesItsStrokeUp) {
    Press(Center);
    Done();
    Assign(Center, kShift);
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp");
    EXPECT_TRUE(Release(Center));
    EXPECT_EQ(Done(), "");
}

TEST_F(GesturesTest, ASecondPressGivesTheFirstStrokeUp) {
    Press(Center);
    DrawUp();
    Done();
    EXPECT_TRUE(Press(Center));
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp; StrokeBegin 500,440");
    Release(Center);
    EXPECT_EQ(Done(), "StrokeEnd; Act Center 9 NoStroke");
}

TEST_F(GesturesTest, TicksWithoutAStrokeAreNothing) {
    DrawUp();
    EXPECT_EQ(Done(), "");
}

TEST_F(GesturesTest, WhileTheEditorIsOpenGestureButtonsAreKept) {
    BeginEdit();
    EXPECT_TRUE(engine.IsGestureEdited());
    EXPECT_TRUE(Press(Center));
    EXPECT_FALSE(engine.WantsTicks());
    EXPECT_TRUE(Release(Center));
    EXPECT_EQ(Done(), "Note Center 0 Asked");
}

TEST_F(GesturesTest, WhileTheEditorIsOpenOtherButtonsActAsAlways) {
    Assign(Button4, kCopy);
    BeginEdit();
    EXPECT_TRUE(Press(Button4));
    EXPECT_EQ(Done(), "Act Button4 10");
}

TEST_F(GesturesTest, TheEditorGivesTheStrokeUp) {
    Press(Center);
    Done();
    BeginEdit();
    EXPECT_EQ(Done(), "StrokeEnd; Note Center 0 GivenUp");
}

TEST_F(GesturesTest, EditorsAreCounted) {
    BeginEdit();
    BeginEdit();
    engine.OnGestureEditEnd();
    EXPECT_TRUE(engine.IsGestureEdited());
    engine.OnGestureEditEnd();
    EXPECT_FALSE(engine.IsGestureEdited());
}

TEST_F(GesturesTest, AnEndWithoutABeginIsIgnored) {
    engine.OnGestureEditEnd();
    BeginEdit();
    EXPECT_TRUE(engine.IsGestureEdited());
    engine.OnGestureEditEnd();
    EXPECT_FALSE(engine.IsGestureEdited());
}

TEST_F(GesturesTest, EditorsThatAreGoneAreForgotten) {
    BeginEdit();
    BeginEdit();
    engine.OnGestureEditForgotten();
    EXPECT_FALSE(engine.IsGestureEdited());
    Press(Center);
    EXPECT_TRUE(engine.WantsTicks());
}

class QuestionTest : public EngineTest {
protected:
    bool PressAt(std::uint32_t time, model::ButtonSlot control) {
        MouseEvent event = ButtonEvent(MouseEventKind::Press, control);
        event.time = time;
        return Keeps(event);
    }
};

TEST_F(QuestionTest, AnAskedButtonIsKeptForHalfASecond) {
    engine.OnQuestion(Button4, 5000);
    EXPECT_TRUE(PressAt(5499, Button4));
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "Note Button4 0 Asked");
}

TEST_F(QuestionTest, AfterHalfASecondItIsNoLongerKept) {
    engine.OnQuestion(Button4, 5000);
    EXPECT_FALSE(PressAt(5500, Button4));
}

TEST_F(QuestionTest, TheLastQuestionCounts) {
    engine.OnQuestion(Button4, 5000);
    engine.OnQuestion(Button4, 5400);
    EXPECT_TRUE(PressAt(5899, Button4));
}

TEST_F(QuestionTest, OnlyTheAskedButtonIsKept) {
    engine.OnQuestion(Button4, 5000);
    EXPECT_FALSE(PressAt(5001, Button5));
    engine.OnQuestion(Center, 5002);
    EXPECT_TRUE(PressAt(5003, Button4));
    EXPECT_TRUE(PressAt(5003, Center));
}

TEST_F(QuestionTest, TheQuestionIsAboutThePhysicalButton) {
    engine.OnSwapped(true);
    engine.OnQuestion(Left, 5000);
    EXPECT_FALSE(PressAt(5001, Left));
    EXPECT_TRUE(PressAt(5002, Right));
}

TEST_F(QuestionTest, AnAskedButtonCarriesOutNothing) {
    Assign(Button4, kShift);
    Assign(Center, kGesture);
    engine.OnQuestion(Button4, 5000);
    engine.OnQuestion(Center, 5000);
    EXPECT_TRUE(PressAt(5001, Button4));
    EXPECT_TRUE(PressAt(5002, Center));
    EXPECT_EQ(Done(), "Note Button4 0 Asked; Note Center 0 Asked");
}

TEST_F(QuestionTest, ItsReleaseIsKeptHoweverLateItComes) {
    engine.OnQuestion(Button4, 5000);
    PressAt(5001, Button4);
    now = 60'000;
    EXPECT_TRUE(Release(Button4));
}

TEST_F(QuestionTest, AnEventThatWaitedInTheQueueDoesNotUndoTheQuestion) {
    engine.OnQuestion(Button4, 5000);
    MouseEvent move = Event(MouseEventKind::Move);
    move.time = 4990;
    Keeps(move);
    EXPECT_TRUE(PressAt(5010, Button4));
}

TEST_F(QuestionTest, QuestionsHoldWhereTheClockComesRound) {
    engine.OnQuestion(Button4, 0xFFFF'FFF0);
    EXPECT_TRUE(PressAt(480, Button4));
    EXPECT_FALSE(PressAt(490, Button4));
}

TEST_F(QuestionTest, AQuestionIsNotHeardAgainWhenTheClockHasComeRound) {
    engine.OnQuestion(Button4, 5000);
    PressAt(0x8000'0000, Center);
    EXPECT_FALSE(PressAt(5001, Button4));
}

TEST_F(QuestionTest, APausedServiceKeepsNoPress) {
    Pause(true);
    engine.OnQuestion(Button4, 5000);
    EXPECT_FALSE(PressAt(5001, Button4));
}

TEST_F(QuestionTest, AQuestionAboutATiltChangesNothing) {
    engine.OnQuestion(TiltLeft, 5000);
    now = 5000;
    EXPECT_FALSE(Tilt(-120));
}

}  // namespace
}  // namespace kvn::service
