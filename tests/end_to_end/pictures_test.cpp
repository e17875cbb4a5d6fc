// The picture of the mouse, which marks the control that has the focus.
#include <set>
#include <vector>

#include "resources/resource.h"
#include "tests/end_to_end/pixels.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/world.h"

namespace kvn::end_to_end {
namespace {

// A mark covers more pixels than this; painting the same picture twice differs in none.
constexpr std::size_t kSmallestMark = 50;

class Pictures : public EndToEndTest {
protected:
    static std::size_t CountColours(const Pixels& pixels) {
        return std::set(pixels.colours.begin(), pixels.colours.end()).size();
    }
};

TEST_F(Pictures, FocusMarksTheButtonAndLeavingRestoresThePlainMouse) {
    const Sheet sheet = OpenSheetWithService({L"--buttons", L"5", L"--tilt", L"0"});
    const PixelReader picture(sheet.Control(IDC_PANE_PICTURE));
    const Pixels plain = picture.Read();
    EXPECT_GT(CountColours(plain), 10U) << "the picture is empty";

    std::vector<Pixels> marked;
    for (const int chooser : {IDC_PANE_LEFT, IDC_PANE_RIGHT, IDC_PANE_CENTER, IDC_PANE_BUTTON4, IDC_PANE_BUTTON5}) {
        sheet.MoveFocusTo(chooser);
        marked.push_back(picture.Read());
        EXPECT_GT(CountDifferences(marked.back(), plain), kSmallestMark) << "control " << chooser;
        for (std::size_t i = 0; i + 1 < marked.size(); ++i) {
            EXPECT_GT(CountDifferences(marked.back(), marked[i]), kSmallestMark) << "control " << chooser;
        }
    }
    sheet.MoveFocusTo(IDC_PANE_REVOLUTION_COUNT);
    EXPECT_EQ(CountDifferences(picture.Read(), plain), 0U);

    sheet.MoveFocusTo(IDC_PANE_CENTER);
    EXPECT_EQ(CountDifferences(picture.Read(), marked[2]), 0U);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Pictures, MouseWithTiltHasItsTiltsMarked) {
    const Sheet sheet = OpenSheetWithService({L"--buttons", L"3"});
    const PixelReader picture(sheet.Control(IDC_PANE_PICTURE));
    const Pixels plain = picture.Read();
    sheet.MoveFocusTo(IDC_PANE_TILT_LEFT);
    const Pixels left = picture.Read();
    sheet.MoveFocusTo(IDC_PANE_TILT_RIGHT);
    const Pixels right = picture.Read();
    EXPECT_GT(CountDifferences(left, plain), kSmallestMark);
    EXPECT_GT(CountDifferences(right, plain), kSmallestMark);
    EXPECT_GT(CountDifferences(left, right), kSmallestMark);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Pictures, WithoutPictureFilesTheControlIsBlank) {
    const Sheet sheet = OpenSheetWithService({L"--image", L"NoSuchMouse"});
    const PixelReader picture(sheet.Control(IDC_PANE_PICTURE));
    EXPECT_EQ(CountColours(picture.Read()), 1U);
    sheet.MoveFocusTo(IDC_PANE_CENTER);
    EXPECT_EQ(CountColours(picture.Read()), 1U);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
