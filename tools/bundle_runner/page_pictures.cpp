#include "tools/bundle_runner/page_pictures.h"

#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <chrono>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "platform/service_protocol.h"
#include "resources/resource.h"
#include "tools/bundle_runner/program_run.h"
#include "tools/bundle_runner/report_text.h"
#include "tools/control_panel/host_error.h"
#include "tools/control_panel/picture.h"
#include "tools/control_panel/sheet_search.h"

namespace kvn::bundle {
namespace {

using control_panel::CopyScreen;
using control_panel::Picture;

constexpr std::chrono::seconds kPatience{20};
constexpr DWORD kTickMilliseconds = 200;
constexpr wchar_t kSampleMouse[] = L"1234:5678:7:1";
constexpr int kGestureTab = 1;
constexpr LPARAM kKeyUp = 0xC0000001;

// The sample mouse in the pictures: its wheel button draws gestures.
constexpr wchar_t kProfileFolder[] = L"\\KORVEN\\Tarsel3";
constexpr wchar_t kProfileFile[] = L"\\VID1234PID5678.xml";
constexpr char kProfiles[] =
    "<data><vid>4660</vid><pid>22136</pid><select_profile>0</select_profile>"
    "<profile><profname>Default</profname><tbutton>36</tbutton>"
    "<Gesture><Key>L</Key><Function>3</Function><Memo>Previous page</Memo><EtcKey></EtcKey></Gesture>"
    "<Gesture><Key>UD</Key><Function>37</Function><Memo>Again</Memo><EtcKey>Left Ctrl+Left Shift+T</EtcKey></Gesture>"
    "</profile><profile><profname>Games</profname></profile></data>";

void WriteProfiles() {
    wchar_t data[MAX_PATH]{};
    SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, data);
    const std::wstring folder = std::wstring(data) + kProfileFolder;
    SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr);
    std::ofstream(std::filesystem::path(folder + kProfileFile), std::ios::binary) << kProfiles;
}

// Asks until the answer is not empty; throws when the patience runs out.
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

// Windows are enumerated from front to back.
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

// Two equal copies in a row: the window has finished painting.
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

void ChooseLastEntry(HWND combo) {
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(SendMessageW(combo, CB_GETCOUNT, 0, 0) - 1), 0);
    PostMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
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
    // Ends the service properly: the icon of a killed one would stay.
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

    // Takes the picture of the dialog that `opening` opens, and runs `inside` while it is open.
    template <typename Opening, typename Inside>
    void OpenBy(Opening opening, const char* name, Inside inside) {
        const HWND before = front;
        opening();
        front = Await(name, [&] { return Another(before); });
        Take(name);
        inside();
        PostMessageW(front, WM_CLOSE, 0, 0);
        front = Await("end of a dialog", [&] { return FrontWindow(host.Id()) == before ? before : nullptr; });
    }
    template <typename Inside>
    void Open(const char* name, int button, Inside inside) {
        OpenBy([&] { PostMessageW(Control(button), BM_CLICK, 0, 0); }, name, inside);
    }
    void Open(const char* name, int button) {
        Open(name, button, [] {});
    }
    void OpenByLastEntry(const char* name, int list) {
        OpenBy([&] { ChooseLastEntry(Control(list)); }, name, [] {});
    }

    void ChooseTab(int index) { SendMessageW(Control(IDC_PAGE_TAB), TCM_SETCURFOCUS, static_cast<WPARAM>(index), 0); }
    void PressKey(int control, WPARAM key) {
        const HWND window = Control(control);
        SendMessageW(front, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
        PostMessageW(window, WM_KEYDOWN, key, 1);
        PostMessageW(window, WM_KEYUP, key, kKeyUp);
    }

    std::vector<Shot> shots;

private:
    static std::wstring HostCommand(const std::wstring& programs) {
        Await("service", [] { return FindWindowW(nullptr, platform::kServiceName); });
        return L"\"" + programs + L"\\control_panel.exe\" --dll \"" + programs + L"\\KvnMouseUtil.dll\"";
    }

    HWND Control(int id) {
        return Await("control", [this, id] { return control_panel::FindVisibleControl(front, id); });
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

void VisitGestures(Tour& tour) {
    tour.ChooseTab(kGestureTab);
    tour.PressKey(IDC_GESTURES_LIST, VK_HOME);
    tour.PressKey(IDC_GESTURES_LIST, VK_DOWN);
    tour.Take("gestures");
    tour.Open("gesture-editor", IDC_GESTURES_ADD, [&] { tour.OpenByLastEntry("keys", IDC_GESTURE_FUNCTION); });
    tour.ChooseTab(0);
}

void VisitProfiles(Tour& tour) {
    tour.Open("profiles", IDC_PAGE_EDIT_PROFILE, [&] {
        tour.Open("profile-name", IDC_PROFILES_ADD);
        tour.PressKey(IDC_PROFILES_LIST, VK_HOME);
        tour.PressKey(IDC_PROFILES_LIST, VK_DOWN);
        tour.Open("programs", IDC_PROFILES_ADD_PROGRAM,
                  [&] { tour.Open("window-program", IDC_PROGRAMS_SELECT_WINDOW); });
    });
}

void VisitPage(Tour& tour) {
    tour.Take("page");
    VisitGestures(tour);
    VisitProfiles(tour);
}

}  // namespace

std::vector<Shot> TakePictures(const std::wstring& programs, const std::wstring& folder) {
    std::vector<Shot> shots;
    try {
        WriteProfiles();
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
