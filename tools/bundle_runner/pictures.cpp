#include "tools/bundle_runner/pictures.h"

#include <windows.h>

#include <commctrl.h>

#include <chrono>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <utility>

#include "platform/service_protocol.h"
#include "resources/resource.h"
#include "tools/bundle_runner/program_run.h"
#include "tools/bundle_runner/text.h"
#include "tools/control_panel/host_error.h"
#include "tools/control_panel/picture.h"

namespace kvn::bundle {
namespace {

using control_panel::CopyScreen;
using control_panel::Picture;

constexpr std::chrono::seconds kPatience{20};
constexpr DWORD kTickMilliseconds = 200;
constexpr wchar_t kSampleMouse[] = L"1234:5678:7:1";
constexpr int kGestureTab = 1;

// The answer that is not empty, within the patience.
template <typename Question>
auto Await(const char* what, Question question) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    for (;;) {
        if (auto answer = question()) return answer;
        if (std::chrono::steady_clock::now() >= deadline) throw std::runtime_error(std::string("no ") + what);
        Sleep(kTickMilliseconds / 4);
    }
}

struct WindowSearch {
    DWORD process;
    HWND found;
};

// Windows come in their order, the front one first.
BOOL CALLBACK StopAtWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.process || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    search.found = window;
    return FALSE;
}

HWND FrontWindow(DWORD process) {
    WindowSearch search{process, nullptr};
    EnumWindows(&StopAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

struct ControlSearch {
    int id;
    HWND found;
};

BOOL CALLBACK StopAtControl(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (GetDlgCtrlID(window) != search.id || !IsWindowVisible(window)) return TRUE;
    search.found = window;
    return FALSE;
}

HWND FindControl(HWND window, int id) {
    ControlSearch search{id, nullptr};
    EnumChildWindows(window, &StopAtControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Two equal copies in a row: nothing is being painted any more.
Picture CopyWindow(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    Picture before;
    const auto isAtRest = [&] {
        Sleep(kTickMilliseconds);
        Picture now = CopyScreen(place);
        const bool isSame = now == before;
        before = std::move(now);
        return isSame;
    };
    Await("end of the painting", isAtRest);
    return before;
}

class Tour {
public:
    Tour(const std::wstring& programs, std::wstring picturesFolder)
        : folder(std::move(picturesFolder)),
          serviceProgram(L"\"" + programs + L"\\service\\KvnMouseApl.exe\""),
          service(serviceProgram + L" --mouse " + kSampleMouse, programs),
          host(HostCommand(programs), programs),
          front(Await("page", [this] { return FrontWindow(host.Id()); })) {}

    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;
    // In order: an icon of a service that was killed stays.
    ~Tour() {
        const RunningProgram quitting(serviceProgram + L" --quit", folder);
        if (quitting) static_cast<void>(quitting.EndsWithin(kPatience));
    }

    void Take(const char* name) {
        try {
            const std::wstring file = folder + L"\\" + std::wstring(name, name + std::strlen(name)) + L".png";
            SetForegroundWindow(front);
            control_panel::SavePng(CopyWindow(front), file);
            shots.push_back({name, file, {}});
        } catch (const control_panel::HostError& error) {
            shots.push_back({name, {}, ToUtf8(error.text)});
        }
    }

    // Takes the picture of the dialog that the button opens, and what `inside` wants of it.
    template <typename Inside>
    void Open(const char* name, int button, Inside inside) {
        const HWND before = front;
        PostMessageW(Control(button), BM_CLICK, 0, 0);
        front = Await(name, [&] { return Another(before); });
        Take(name);
        inside();
        PostMessageW(front, WM_CLOSE, 0, 0);
        front = Await("end of a dialog", [&] { return FrontWindow(host.Id()) == before ? before : nullptr; });
    }
    void Open(const char* name, int button) {
        Open(name, button, [] {});
    }

    void ChooseTab(int index) { SendMessageW(Control(IDC_PAGE_TAB), TCM_SETCURFOCUS, static_cast<WPARAM>(index), 0); }
    void ChooseLast(int list) {
        const HWND combo = Control(list);
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(SendMessageW(combo, CB_GETCOUNT, 0, 0) - 1), 0);
    }

    std::vector<Shot> shots;

private:
    static std::wstring HostCommand(const std::wstring& programs) {
        Await("service", [] { return FindWindowW(nullptr, platform::kServiceName); });
        return L"\"" + programs + L"\\control_panel.exe\" --dll \"" + programs + L"\\KvnMouseUtil.dll\"";
    }

    HWND Control(int id) {
        return Await("control", [this, id] { return FindControl(front, id); });
    }
    HWND Another(HWND before) const {
        const HWND now = FrontWindow(host.Id());
        return now == before ? nullptr : now;
    }

    std::wstring folder;
    std::wstring serviceProgram;
    RunningProgram service;
    RunningProgram host;
    HWND front;
};

void VisitPage(Tour& tour) {
    tour.Take("page");
    tour.ChooseTab(kGestureTab);
    tour.Take("gestures");
    tour.Open("gesture-editor", IDC_GESTURES_ADD);
    tour.ChooseTab(0);
    tour.Open("profiles", IDC_PAGE_EDIT_PROFILE, [&] {
        tour.Open("profile-name", IDC_PROFILES_ADD);
        tour.Open("programs", IDC_PROFILES_ADD_PROGRAM,
                  [&] { tour.Open("window-program", IDC_PROGRAMS_SELECT_WINDOW); });
    });
}

}  // namespace

std::vector<Shot> TakePictures(const std::wstring& programs, const std::wstring& folder) {
    std::vector<Shot> shots;
    try {
        Tour tour(programs, folder);
        try {
            VisitPage(tour);
        } catch (const std::exception& error) {
            tour.shots.push_back({"the next picture", {}, error.what()});
        }
        shots = std::move(tour.shots);
    } catch (const std::exception& error) {
        shots.push_back({"the pictures", {}, error.what()});
    }
    return shots;
}

}  // namespace kvn::bundle
