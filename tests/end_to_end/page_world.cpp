#include "tests/end_to_end/page_world.h"

#include <array>
#include <string_view>

#include "platform/service_protocol.h"
#include "resources/resource.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"

namespace kvn::end_to_end {
namespace {

// Before the text of a line of the log: the time since the start, the date, the time of day.
constexpr std::size_t kLogTimeFields = 4;

std::wstring MakeScratchFolder() {
    std::array<wchar_t, MAX_PATH> temporary{};
    GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data());
    const std::wstring folder =
        temporary.data() + (L"kvn-end-to-end-" + std::to_wstring(GetCurrentProcessId()) + L'\\');
    RemoveFolder(folder);
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

std::wstring HostProgram() {
    return ProgramFolder() + L"control_panel.exe";
}

std::string WithoutTime(std::string_view line) {
    std::size_t place = 0;
    for (std::size_t field = 0; field < kLogTimeFields; ++field) {
        place = line.find_first_not_of(' ', line.find(' ', line.find_first_not_of(' ', place)));
    }
    return std::string(line.substr(place));
}

bool IsMessage(std::string_view text) {
    return text.find(" (0x8") != std::string_view::npos && text.find(" reply=") != std::string_view::npos;
}

}  // namespace

void EndToEndTest::SetUp() {
    ASSERT_EQ(FindWindowW(nullptr, platform::kServiceName), nullptr) << "another service runs";
    RemoveRegistryState();
    RemoveSettingsFolder();
    scratch = MakeScratchFolder();
}

void EndToEndTest::TearDown() {
    EXPECT_FALSE(watchdog.HasBitten()) << "the test hung";
    processes.KillAll();
    RemoveRegistryState();
    RemoveSettingsFolder();
    RemoveFolder(scratch);
}

void EndToEndTest::StartService(const Arguments& options, const std::wstring& program) {
    const std::wstring readyFile = scratch + L"service-is-ready";
    Arguments arguments{L"--ready-file", readyFile, L"--log", scratch + L"service.log"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    service = processes.Start(program, arguments);
    WaitFor("the service to be ready", [&] {
        if (!service->IsRunning()) throw StoryError("the service ended at once");
        return Exists(readyFile);
    });
}

void EndToEndTest::AskService(const Arguments& options) const {
    ASSERT_EQ(processes.Start(ServiceProgram(), options).WaitForExitCode(), 0U);
}

void EndToEndTest::EndService() {
    AskService({L"--quit"});
    EXPECT_EQ(service->WaitForExitCode(), 0U);
}

std::vector<std::string> EndToEndTest::LinesOfLog() const {
    const std::string log = ReadFileBytes(scratch + L"service.log");
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = log.find("\r\n", start)) != std::string::npos; start = end + 2) {
        lines.push_back(WithoutTime(std::string_view(log).substr(start, end - start)));
    }
    return lines;
}

std::vector<std::string> EndToEndTest::MessagesToService() const {
    std::vector<std::string> messages = LinesOfLog();
    std::erase_if(messages, [](const std::string& line) { return !IsMessage(line); });
    return messages;
}

const Process& EndToEndTest::StartHost(const Arguments& source) {
    // The host sets the focus last. Once it is set, the host is done.
    Arguments arguments{L"--focus", std::to_wstring(IDC_PAGE_TAB)};
    arguments.insert(arguments.end(), source.begin(), source.end());
    return host.emplace(processes.Start(HostProgram(), arguments));
}

Sheet EndToEndTest::OpenSheet(const Arguments& source) {
    return Sheet(StartHost(source).Id());
}

Sheet EndToEndTest::OpenSheetWithService(const Arguments& serviceOptions) {
    StartService(serviceOptions);
    return OpenSheet();
}

DWORD EndToEndTest::RunHost(const Arguments& options) const {
    return processes.Start(HostProgram(), options).WaitForExitCode();
}

std::wstring EndToEndTest::ServiceProgram() {
    return ProgramFolder() + L"service\\KvnMouseAplDouble.exe";
}

std::wstring EndToEndTest::ModulePath() {
    return ProgramFolder() + L"KvnMouseUtil.dll";
}

std::wstring EndToEndTest::ProfileFile() {
    return SettingsFolder() + kProfileFileName;
}

}  // namespace kvn::end_to_end
