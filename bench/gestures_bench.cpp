#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "bench/benches.h"
#include "bench/heap_count.h"
#include "bench/property_sheet.h"
#include "bench/running_service.h"
#include "bench/stopwatch.h"
#include "gestures/gesture_mgr.h"
#include "gestures/gesture_pane.h"
#include "gestures/gesture_texts.h"
#include "gestures/gesture_trail_overlay.h"
#include "model/stroke_recogniser.h"
#include "platform/list_view.h"
#include "platform/service_messages.h"
#include "platform/subclass.h"
#include "resources/resource.h"
#include "tests/support/owning_types.h"

namespace kvn::bench {
namespace {

constexpr int kRounds = 25;

// A pseudo-random walk, the same in every run.
class Walk {
public:
    // A number from -most to most.
    int Next(int most) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<int>((state >> 33U) % static_cast<unsigned>(2 * most + 1)) - most;
    }

private:
    std::uint64_t state = 20'26;
};

// One million, so that milliseconds for all are nanoseconds for one.
constexpr std::size_t kSamples = 1'000'000;
constexpr std::size_t kStrokeSamples = 40;
constexpr int kLongestStep = 60;
constexpr double kTickLimit = 2;

// Strokes of four seconds with the hand in constant motion.
std::vector<model::StrokeSample> LongPath() {
    std::vector<model::StrokeSample> samples(kSamples);
    Walk walk;
    model::ScreenPoint cursor;
    for (std::size_t i = 0; i < kSamples; ++i) {
        cursor = {cursor.x + walk.Next(kLongestStep), cursor.y + walk.Next(kLongestStep)};
        samples[i] = {cursor, i % kStrokeSamples != 0, false};
    }
    return samples;
}

void BenchRecogniser(Report& report) {
    const std::vector<model::StrokeSample> samples = LongPath();
    volatile std::int64_t sink = 0;
    std::size_t allocations = 0;
    const auto take = [&] {
        std::int64_t notices = 0;
        const std::size_t before = HeapAllocations();
        model::StrokeRecogniser recogniser;
        for (const model::StrokeSample& sample : samples) notices += recogniser.Take(sample) ? 1 : 0;
        allocations += HeapAllocations() - before;
        sink = notices;
    };
    const auto compute = [&] {
        std::int64_t sum = 0;
        for (std::size_t i = 1; i < samples.size(); ++i) {
            sum += model::DistanceBetween(samples[i - 1].cursor, samples[i].cursor);
            sum += static_cast<std::int64_t>(model::DirectionBetween(samples[i - 1].cursor, samples[i].cursor));
        }
        sink = sum;
    };
    report.Compare(
        "a million ticks of the recogniser", "bare distance and direction of the samples", kTickLimit, kRounds,
        [&] { return Measure(take); }, [&] { return Measure(compute); });

    const std::size_t before = HeapAllocations();
    int* volatile onPurpose = new int(0);  // an allocation that the compiler cannot remove
    delete onPurpose;
    const std::size_t counted = HeapAllocations() - before;
    report.Add({"heap allocations of all these ticks", "", static_cast<double>(allocations), "one on purpose",
                static_cast<double>(counted), 0});
}

constexpr std::size_t kTicks = 2'000;
constexpr double kTickMicroseconds = 100'000;
constexpr std::size_t kTicksOfStroke = 30;
constexpr double kTickShare = 0.01;
constexpr int kScreenMargin = 300;

// The microseconds that the work takes. The cursor is at another place each time.
double MeasureWithMovedCursor(Walk& walk, const std::function<void()>& work) {
    SetCursorPos(kScreenMargin + walk.Next(kLongestStep), kScreenMargin + walk.Next(kLongestStep));
    return 1000 * Measure(work);
}

// Measures in long strokes of three seconds. Each tick reads the cursor, asks the service in its own process, and draws
// the trail.
void BenchTick(Report& report, HMODULE pageModule) {
    const RunningService service(L"--held 1");
    if (!service.Runs()) return report.AddMissing("a tick of the gesture manager, without the service");
    gestures::GestureTrailOverlay trail;
    gestures::CGestureMgr manager;
    manager.Arm(platform::ServiceButton::Center);
    manager.Tick();
    trail.Show(pageModule, nullptr);
    Walk walk;
    std::vector<double> ticks;
    std::vector<double> questions;
    for (std::size_t i = 0; i < kTicks; ++i) {
        if (i % kTicksOfStroke == 0) trail.StartAt(manager.Cursor());
        ticks.push_back(MeasureWithMovedCursor(walk, [&] {
            manager.Tick();
            trail.DrawTo(manager.Cursor());
        }));
        questions.push_back(MeasureWithMovedCursor(
            walk, [&] { static_cast<void>(platform::IsButtonHeld(platform::ServiceButton::Center)); }));
    }
    std::sort(ticks.begin(), ticks.end());
    std::sort(questions.begin(), questions.end());
    const double median = ticks[kTicks / 2];
    report.Add(
        {"a tick with the service", "us", median, "the time until the next tick", kTickMicroseconds, kTickShare});
    report.Add({"  nine of ten ticks", "us", ticks[kTicks * 9 / 10], "the time until the next tick", kTickMicroseconds,
                kTickShare});
    report.Add({"  the same", "us", median, "the question to the service alone", questions[kTicks / 2], kTickLimit});
}

constexpr std::size_t kGestures = 100;
constexpr double kListLimit = 1.5;
constexpr std::array<platform::ListColumn, 3> kColumns{
    {{IDS_COLUMN_GESTURE, 70}, {IDS_COLUMN_FUNCTION, 125}, {IDS_COLUMN_MEMO, 172}}};

class NoOwner : public gestures::IGesturePaneOwner {
public:
    void OnPaneCommand(HWND /*pane*/, WPARAM /*wParam*/, LPARAM /*lParam*/) override {}
    void OnPaneScroll(HWND /*trackbar*/) override {}
    std::shared_ptr<void> KeepAlive() override { return nullptr; }
    model::SettingValues ShownValues() const override { return {}; }
};

// Every tenth gesture has keys; more would be unusual.
model::ProfileRecord ProfileOfGestures(const std::wstring& name) {
    constexpr std::array<std::int32_t, 10> kFunctions{1, 3, 4, 6, 7, 10, 12, 14, 26, 37};
    model::ProfileRecord record = model::DefaultProfileRecord();
    for (std::size_t i = 0; i < kGestures; ++i) {
        record.settings.gestures.push_back(
            {L"URDL", kFunctions[i % kFunctions.size()], name + std::to_wstring(i), {{162, 86, -2}}});
    }
    return record;
}

using RowTexts = std::array<std::wstring, 3>;

std::vector<RowTexts> TextsOf(HMODULE pageModule, const model::ProfileRecord& record) {
    std::vector<RowTexts> rows;
    for (const model::GestureEntry& gesture : record.settings.gestures) {
        rows.push_back({gesture.stroke, gestures::FunctionText(pageModule, gesture), gesture.memo});
    }
    return rows;
}

// The bare work: deletes the rows and adds others with the same texts, by the list view's own messages.
void ShowRows(HWND list, const std::vector<RowTexts>& rows) {
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    for (const RowTexts& texts : rows) {
        for (std::size_t column = 0; column < texts.size(); ++column) {
            item.iSubItem = static_cast<int>(column);
            item.pszText = const_cast<wchar_t*>(texts[column].c_str());
            SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
        ++item.iItem;
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

void BenchList(Report& report, HMODULE pageModule) {
    // Visible, like the tab of the gestures when the user sees the list change.
    test::UniqueWindow frame(CreateWindowExW(0, WC_DIALOG, L"Bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900, 700,
                                             nullptr, nullptr, nullptr, nullptr));
    model::MouseSettings settings;
    settings.profiles = {ProfileOfGestures(L"First profile, number "), ProfileOfGestures(L"Second profile, number ")};
    const platform::MessageBoxes boxes(pageModule, IDS_CAPTION);
    NoOwner owner;
    gestures::GesturePane pane(settings, boxes, owner);
    ShowWindow(pane.Create(pageModule, frame.Get()), SW_SHOW);
    pane.SetUp();

    const HWND plainPane =
        CreateDialogParamW(pageModule, MAKEINTRESOURCEW(IDD_GESTURE_PANE), frame.Get(), platform::IgnoreMessage, 0);
    ShowWindow(plainPane, SW_SHOW);
    const HWND plainList = GetDlgItem(plainPane, IDC_GESTURES_LIST);
    platform::SelectFullRows(plainList);
    platform::AddListColumns(plainList, pageModule, kColumns);
    const std::array<std::vector<RowTexts>, 2> texts{TextsOf(pageModule, settings.profiles[0]),
                                                     TextsOf(pageModule, settings.profiles[1])};
    std::size_t shown = 0;
    const auto switchProfile = [&] {
        settings.selectedProfile = ++shown % 2;
        return Measure([&] { pane.ShowProfile(); });
    };
    const auto switchRows = [&] { return Measure([&] { ShowRows(plainList, texts[shown % 2]); }); };
    report.Compare("show a profile of 100 gestures", "the same rows in a plain list view", kListLimit, kRounds,
                   switchProfile, switchRows);
    frame.Reset();  // before the pane, which handles its messages
}

}  // namespace

void BenchGestures(Report& report) {
    BenchRecogniser(report);
    const HMODULE pageModule = PageModule();
    if (pageModule == nullptr) return report.AddMissing("gestures, without the DLL");
    BenchTick(report, pageModule);
    BenchList(report, pageModule);
}

}  // namespace kvn::bench
