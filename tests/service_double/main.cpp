// The double of the resident mouse service, for tests and demonstrations. It publishes a mouse, owns the window that
// the page looks for, answers and logs the page's messages, and drives no mouse.
#include <windows.h>

#include <shellapi.h>

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "platform/service_messages.h"
#include "platform/unique_resource.h"
#include "tests/service_double/console_text.h"
#include "tests/service_double/double_mouse.h"
#include "tests/service_double/double_window.h"
#include "tests/service_double/options.h"
#include "tests/service_double/service_log.h"
#include "tests/service_double/settings_request.h"
#include "tests/support/owning_types.h"

namespace kvn::service_double {
namespace {

// Exit codes: 0 done, 1 failed, 2 wrong options, 3 the wrong number of services runs already.
enum ExitCode : int { kDone = 0, kFailed = 1, kWrongOptions = 2, kWrongService = 3 };

constexpr DWORD kQuitTimeoutMilliseconds = 20'000;

std::vector<std::wstring> Arguments() {
    int count = 0;
    const test::UniqueArguments words{CommandLineToArgvW(GetCommandLineW(), &count)};
    if (!words || count < 1) return {};
    return {words.Get() + 1, words.Get() + count};
}

ExitCode Complain(const std::wstring& text, ExitCode code) {
    TellUser(L"KvnMouseApl: " + text);
    return code;
}

// The published values, for as long as they must stay.
class Publication {
public:
    explicit Publication(const Options& options) : remove(options.publish && options.removeAtEnd) {}
    ~Publication() {
        if (remove) RemovePublishedMouse();
    }
    Publication(const Publication&) = delete;
    Publication& operator=(const Publication&) = delete;

private:
    bool remove;
};

// A file that exists while the service is ready.
class ReadyFile {
public:
    explicit ReadyFile(std::wstring file) : path(std::move(file)) { Remove(); }
    ~ReadyFile() { Remove(); }
    ReadyFile(const ReadyFile&) = delete;
    ReadyFile& operator=(const ReadyFile&) = delete;

    bool Make() const {
        if (path.empty()) return true;
        return static_cast<bool>(platform::UniqueFile{CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)});
    }

private:
    void Remove() const {
        if (!path.empty()) DeleteFileW(path.c_str());
    }

    std::wstring path;
};

void RunMessageLoop() {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

ExitCode Serve(const Options& options, HINSTANCE instance) {
    // The page finds the service by its window's title, so there must not be two.
    if (platform::FindService() != nullptr) return Complain(L"the service runs already", kWrongService);
    const ReadyFile readyFile{options.readyFile};
    ServiceLog log{options.logFile};
    if (!log.IsReady()) return Complain(L"cannot open the log " + options.logFile, kFailed);

    const Publication publication{options};
    if (options.publish && !PublishMouse(options.mouse)) return Complain(L"cannot publish the mouse", kFailed);
    ServiceWindow window{options, log};
    if (!window.Create(instance)) return Complain(L"cannot make the window", kFailed);
    log.Write(L"started; " + (options.publish ? L"published " + Describe(options.mouse) : L"nothing published"));
    if (!readyFile.Make()) return Complain(L"cannot make " + options.readyFile, kFailed);

    RunMessageLoop();
    log.Write(L"ended");
    return kDone;
}

ExitCode SendSettingsThroughService(const Options& options) {
    const HWND service = platform::FindService();
    if (service == nullptr) return Complain(L"no service runs", kWrongService);
    switch (AskToSendSettings(service, {options.page, options.settings})) {
        case SettingsReply::Delivered:
            return kDone;
        case SettingsReply::NoPage:
            return Complain(L"the page is not open", kFailed);
        case SettingsReply::PageDidNotAnswer:
            return Complain(L"the page does not answer", kFailed);
        case SettingsReply::NotUnderstood:
            return Complain(L"the service does not understand", kFailed);
        case SettingsReply::ServiceDidNotAnswer:
            break;
    }
    return Complain(L"the service does not answer", kFailed);
}

ExitCode QuitService() {
    const HWND service = platform::FindService();
    if (service == nullptr) return Complain(L"no service runs", kWrongService);
    DWORD processId = 0;
    GetWindowThreadProcessId(service, &processId);
    const platform::UniqueKernelObject process{OpenProcess(SYNCHRONIZE, FALSE, processId)};
    PostMessageW(service, WM_CLOSE, 0, 0);
    // Its log and its published values are final only after it has ended.
    if (process && WaitForSingleObject(process.Get(), kQuitTimeoutMilliseconds) == WAIT_OBJECT_0) return kDone;
    return Complain(L"the service does not end", kFailed);
}

ExitCode Run(HINSTANCE instance) {
    const Options options = ParseOptions(Arguments());
    switch (options.command) {
        case Command::Serve:
            return Serve(options, instance);
        case Command::SendSettings:
            return SendSettingsThroughService(options);
        case Command::Quit:
            return QuitService();
        case Command::ShowHelp:
            break;
    }
    TellUser(Usage());
    return kDone;
}

}  // namespace
}  // namespace kvn::service_double

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int) {
    using namespace kvn::service_double;
    try {
        return Run(instance);
    } catch (const OptionError& error) {
        return Complain(error.Text() + L" (--help lists the options)", kWrongOptions);
    } catch (const std::exception&) {
        return kFailed;
    }
}
