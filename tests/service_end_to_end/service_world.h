// The environment of the service in one test: mouse, keyboard, registry, profile file and other programs. All of it is
// removed afterwards.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/end_to_end/process.h"
#include "tests/end_to_end/watchdog.h"
#include "tests/service_end_to_end/hands.h"
#include "tests/service_end_to_end/recorder_driver.h"
#include "tests/support/function_codes.h"

namespace kvn::service_end_to_end {

using model::ButtonSlot;

inline constexpr ButtonSlot kLeft = ButtonSlot::Left, kRight = ButtonSlot::Right, kWheel = ButtonSlot::Center,
                            kBack = ButtonSlot::Button4, kForward = ButtonSlot::Button5,
                            kTiltLeft = ButtonSlot::TiltLeft, kTiltRight = ButtonSlot::TiltRight;

using test::Function;
using enum test::Function;

struct Flying {
    int flicks = 1;
    int revolutionSpeed = 1;
    int scrollSpeed = 5;
};

// The contents of the mouse's registry key. Controls that are not named are natural.
struct Choice {
    std::map<ButtonSlot, model::FunctionCode> functions{};
    std::map<ButtonSlot, std::wstring> keys{};
    std::vector<std::wstring> gestures{};
    int horizontalSpeed = 4;
    std::optional<Flying> flying{};
};

class ServiceTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // After this time all programs that the test has started are killed.
    virtual std::chrono::seconds LongestTime() const;

    // Starts the service with the sample mouse and waits until it answers.
    void StartService(std::vector<std::wstring> options = {L"--mouse", L"1234:5678:7:1"});
    // Runs the service's program with these options until it ends; returns its exit code.
    DWORD Ask(const std::vector<std::wstring>& options) const;
    // The lines of --status, by their keys.
    std::map<std::string, std::string> Status() const;
    // The service's window, or null.
    static HWND ServiceWindow();
    static DWORD ServiceProcess();
    static void WaitForService();
    static void WaitForTrail();
    // While a trail closes, the display may send press and release of a click to different programs, whose lines come
    // in any order.
    void WaitUntilTrailHasGone(const Recorder& recorder) const;
    // The lines of the service's log, without the time, their fields joined by blanks.
    Lines LogLines() const;

    // Starts a recorder and brings it to the front.
    Recorder& StartRecorder(const std::wstring& name = L"recorder", std::vector<std::wstring> options = {});

    static void Store(const Choice& choice);
    static void Announce();
    // Stores the choice, announces it, and waits until it is in force: a press of `witness`, whose function must not
    // matter to the test, then types a different key. Afterwards the recorder is empty.
    void Use(Choice choice, Recorder& recorder, ButtonSlot witness = kWheel);

    // Presses a button until this line arrives, and waits until every press is carried out. Afterwards the recorder is
    // empty. For buttons other than the left one.
    void PressUntil(Recorder& recorder, ButtonSlot control, const std::string& line) const;

    // Waits for the expected number of lines and compares.
    static void Expect(Recorder& recorder, const Lines& expected);
    // Compares with all lines that arrive.
    void ExpectAll(Recorder& recorder, const Lines& expected) const;

    // A copy of the recorder's program under this name, in the folder of the test.
    std::wstring CopyOfRecorder(const std::wstring& name) const;
    const std::wstring& Scratch() const { return scratch; }
    const end_to_end::ProcessGroup& Processes() const { return *processes; }
    static std::wstring ProfileFile();
    static std::wstring ServiceProgram();

    // The programs opened so far: file name and arguments.
    Lines Opened() const;

    Hands hands;

private:
    std::unique_ptr<end_to_end::ProcessGroup> processes;
    std::unique_ptr<end_to_end::Watchdog> watchdog;
    std::wstring scratch;
    std::vector<std::unique_ptr<Recorder>> recorders;
    std::size_t witnessKey = 0;
};

}  // namespace kvn::service_end_to_end
