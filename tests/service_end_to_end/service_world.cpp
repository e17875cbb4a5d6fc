#include "tests/service_end_to_end/service_world.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

#include "model/registry_values.h"
#include "platform/service_protocol.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/service_end_to_end/opened_program.h"
#include "tests/support/narrow_text.h"
#include "tests/support/started_process.h"
#include "tests/support/waiting.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::StoryError;
using end_to_end::WaitFor;

constexpr std::chrono::seconds kLongestTest{150};  // the longest test makes some hundred presses
constexpr std::size_t kRecordersBeside = 2;
constexpr int kRecorderStep = 505;
constexpr int kNoFlicks = -2;  // the page's value for no flying scroll

std::wstring MakeScratchFolder() {
    std::array<wchar_t, MAX_PATH> temporary{};
    GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data());
    const std::wstring folder = temporary.data() + (L"kvn-service-" + std::to_wstring(GetCurrentProcessId()) + L'\\');
    end_to_end::RemoveFolder(folder);
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

const wchar_t* NameOf(model::RegistryValue value) {
    return model::kRegistryValues[static_cast<std::size_t>(value)].name;
}

void StoreValue(const wchar_t* name, DWORD type, const void* data, std::size_t bytes) {
    if (RegSetKeyValueW(HKEY_CURRENT_USER, end_to_end::kModelKey, name, type, data, static_cast<DWORD>(bytes)) !=
        ERROR_SUCCESS) {
        throw StoryError("the registry cannot be written");
    }
}

void StoreNumber(model::RegistryValue value, DWORD number) {
    StoreValue(NameOf(value), REG_DWORD, &number, sizeof number);
}

void StoreKeys(model::RegistryValue value, const std::wstring& keys) {
    StoreValue(NameOf(value), REG_SZ, keys.c_str(), keys.size() * sizeof(wchar_t));
}

void StoreFlying(const Flying& flying) {
    StoreNumber(model::RegistryValue::FlyingRevolutionCount, static_cast<DWORD>(flying.flicks));
    StoreNumber(model::RegistryValue::FlyingRevolutionSpeed, static_cast<DWORD>(flying.revolutionSpeed));
    StoreNumber(model::RegistryValue::FlyingScrollSpeed, static_cast<DWORD>(flying.scrollSpeed));
}

void StoreGestures(const std::vector<std::wstring>& gestures) {
    std::wstring block;
    for (const std::wstring& gesture : gestures) block += gesture + L'\0';
    block += L'\0';
    StoreValue(NameOf(model::RegistryValue::Gesture), REG_MULTI_SZ, block.data(), block.size() * sizeof(wchar_t));
}

template <typename Map>
auto ValueOr(const Map& map, ButtonSlot control, typename Map::mapped_type otherwise) {
    const auto found = map.find(control);
    return found == map.end() ? otherwise : found->second;
}

void StoreControl(const model::ButtonSlotRow& row, const Choice& choice) {
    StoreKeys(row.etcKeyValue, ValueOr(choice.keys, row.slot, L""));
    const auto& field = model::RowOf(row.field);
    StoreNumber(field.registryValue, static_cast<DWORD>(ValueOr(choice.functions, row.slot, field.defaultValue)));
}

std::size_t CountOf(const Lines& lines, const char* origin, const char* what) {
    return static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), [=](const std::string& line) {
        return line.starts_with(origin) && line.find(what) != std::string::npos &&
               line.find(" again") == std::string::npos;
    }));
}

bool IsTrailShown() {
    DWORD process = 0;
    GetWindowThreadProcessId(FindWindowW(nullptr, platform::kServiceName), &process);
    const auto isShown = [](HWND window) {
        return IsWindowVisible(window) && end_to_end::ClassOf(window) == L"KvnMouseAplTrail";
    };
    return test::FindTopLevelWindowOf(process, isShown) != nullptr;
}

std::string WithoutFirstField(const std::string& line) {
    return line.substr(std::min(line.find('\t'), line.size() - 1) + 1);
}

Lines LinesOf(const std::string& text) {
    Lines lines(1);
    for (const char character : text) {
        if (character == '\n') lines.emplace_back();
        if (character != '\n' && character != '\r') lines.back() += character;
    }
    lines.pop_back();
    return lines;
}

Lines LinesOfFile(const std::wstring& path) {
    return end_to_end::Exists(path) ? LinesOf(end_to_end::ReadFileBytes(path)) : Lines();
}

// Releases keys and buttons that a test or a killed service has left down.
void ReleaseInWindows() {
    for (int key = 1; key < 255; ++key) {
        const bool isButton = key <= VK_XBUTTON2 && key != VK_CANCEL;
        if (isButton || (GetAsyncKeyState(key) & 0x8000) == 0) continue;
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = static_cast<WORD>(key);
        input.ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(1, &input, sizeof input);
    }
}

// The standard output of a program, until it ends.
class OutputFile {
public:
    explicit OutputFile(const std::wstring& path) : file(path) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        handle.Reset(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
    }
    HANDLE Handle() const { return handle.Get(); }
    std::string Text() {
        handle.Reset();
        return end_to_end::ReadFileBytes(file);
    }

private:
    std::wstring file;
    platform::UniqueKernelObject handle;
};

std::string OutputOf(const std::wstring& program, const std::wstring& arguments, const std::wstring& file) {
    OutputFile output(file);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.Handle();
    PROCESS_INFORMATION started{};
    std::wstring commandLine = L'"' + program + L"\" " + arguments;
    const auto create = [&] {
        return CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                              &startup, &started) != FALSE;
    };
    if (!test::CreatesProcess(create)) throw StoryError("cannot start the service's program");
    const platform::UniqueKernelObject thread(started.hThread);
    const platform::UniqueKernelObject process(started.hProcess);
    if (WaitForSingleObject(process.Get(), test::kPatienceMilliseconds) != WAIT_OBJECT_0)
        throw StoryError("the program does not end");
    return output.Text();
}

}  // namespace

std::chrono::seconds ServiceTest::LongestTime() const {
    return kLongestTest;
}

void ServiceTest::SetUp() {
    ASSERT_EQ(ServiceWindow(), nullptr) << "another service runs";
    end_to_end::RemoveRegistryState();
    end_to_end::RemoveSettingsFolder();
    scratch = MakeScratchFolder();
    SetEnvironmentVariableW(kOpenedRecord, (scratch + L"opened.txt").c_str());
    processes = std::make_unique<end_to_end::ProcessGroup>();
    watchdog = std::make_unique<end_to_end::Watchdog>(*processes, LongestTime());
}

void ServiceTest::TearDown() {
    hands.LetGoOfAll();
    EXPECT_FALSE(watchdog->HasBitten()) << "the test hung";
    watchdog.reset();
    recorders.clear();
    processes->KillAll();
    WaitFor("the service to be gone", [] { return ServiceWindow() == nullptr; });
    ReleaseInWindows();
    end_to_end::RemoveRegistryState();
    end_to_end::RemoveSettingsFolder();
    end_to_end::RemoveFolder(scratch);
}

HWND ServiceTest::ServiceWindow() {
    return FindWindowW(nullptr, platform::kServiceName);
}

DWORD ServiceTest::ServiceProcess() {
    DWORD process = 0;
    GetWindowThreadProcessId(ServiceWindow(), &process);
    return process;
}

void ServiceTest::WaitForService() {
    WaitFor("the service to answer", [] {
        DWORD_PTR answer = 0;
        const HWND window = ServiceWindow();
        return window != nullptr &&
               SendMessageTimeoutW(window, static_cast<UINT>(platform::ServiceMessage::Probe), 0, 0, SMTO_NORMAL, 1000,
                                   &answer) != 0 &&
               answer != 0;
    });
}

void ServiceTest::WaitForTrail() {
    WaitFor("the trail", &IsTrailShown);
}

void ServiceTest::WaitUntilTrailHasGone(const Recorder& recorder) const {
    WaitFor("the end of the trail", [&] { return !IsTrailShown() && hands.IsPointerOver(recorder.Window()); });
}

void ServiceTest::StartService(std::vector<std::wstring> options) {
    options.insert(options.end(), {L"--log", scratch + L"service.log"});
    processes->Start(ServiceProgram(), options);
    WaitForService();
}

DWORD ServiceTest::Ask(const std::vector<std::wstring>& options) const {
    return processes->Start(ServiceProgram(), options).WaitForExitCode();
}

std::map<std::string, std::string> ServiceTest::Status() const {
    std::map<std::string, std::string> status;
    for (const std::string& line : LinesOf(OutputOf(ServiceProgram(), L"--status", scratch + L"status.txt"))) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) status[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return status;
}

Lines ServiceTest::LogLines() const {
    Lines lines = LinesOfFile(scratch + L"service.log");
    for (std::string& line : lines) line = WithoutFirstField(line);
    for (std::string& line : lines) std::replace(line.begin(), line.end(), '\t', ' ');
    return lines;
}

Recorder& ServiceTest::StartRecorder(const std::wstring& name, std::vector<std::wstring> options) {
    const std::size_t place = recorders.size() % kRecordersBeside;
    options.insert(options.end(), {L"--left", std::to_wstring(static_cast<int>(place) * kRecorderStep)});
    recorders.push_back(std::make_unique<Recorder>(*processes, hands, CopyOfRecorder(name), name,
                                                   scratch + name + L".log", std::move(options)));
    recorders.back()->ComeToFront();
    return *recorders.back();
}

std::wstring ServiceTest::CopyOfRecorder(const std::wstring& name) const {
    const std::wstring copy = scratch + name + L".exe";
    CopyFileW((end_to_end::ProgramFolder() + L"service_recorder.exe").c_str(), copy.c_str(), FALSE);
    return copy;
}

void ServiceTest::Store(const Choice& choice) {
    StoreNumber(model::RegistryValue::HorizontalScrollSpeed, static_cast<DWORD>(choice.horizontalSpeed));
    StoreFlying(choice.flying.value_or(Flying{.flicks = kNoFlicks}));
    StoreGestures(choice.gestures);
    for (const model::ButtonSlotRow& row : model::kButtonSlots) StoreControl(row, choice);
}

void ServiceTest::Announce() {
    PostMessageW(ServiceWindow(), static_cast<UINT>(platform::ServiceMessage::SettingsChanged), 0, 0);
}

void ServiceTest::Use(Choice choice, Recorder& recorder, ButtonSlot witness) {
    constexpr wchar_t kWitnessKeys[] = L"FGHJLMNQRUVW";
    const std::wstring key(1, kWitnessKeys[witnessKey++ % (std::size(kWitnessKeys) - 1)]);
    choice.functions[witness] = Function::kKeys;
    choice.keys[witness] = key;
    Store(choice);
    Announce();
    PressUntil(recorder, witness, "sent up " + test::Narrow(key));
}

void ServiceTest::PressUntil(Recorder& recorder, ButtonSlot control, const std::string& line) const {
    const std::size_t loggedBefore = LogLines().size();
    std::size_t clicks = 0;
    Lines all;
    const auto takeMore = [&] {
        const Lines arrived = recorder.ArrivedUntilNow();
        all.insert(all.end(), arrived.begin(), arrived.end());
    };
    WaitFor("the line \"" + line + '"', [&] {
        ++clicks;
        hands.Click(control);
        takeMore();
        return std::find(all.begin(), all.end(), line) != all.end();
    });
    // Each press either passes or is in the log, and its keys are released.
    WaitFor("every press to be carried out",
            [&] { return LogLines().size() - loggedBefore + CountOf(all, "real ", " up") >= clicks; });
    WaitFor("every release", [&] {
        takeMore();
        return CountOf(all, "sent ", "down ") <= CountOf(all, "sent ", "up ");
    });
}

void ServiceTest::Expect(Recorder& recorder, const Lines& expected) {
    EXPECT_EQ(recorder.Arrived(expected.size()), expected);
}

void ServiceTest::ExpectAll(Recorder& recorder, const Lines& expected) const {
    Lines arrived = recorder.Arrived(expected.size());
    const Lines more = recorder.ArrivedUntilNow();
    arrived.insert(arrived.end(), more.begin(), more.end());
    EXPECT_EQ(arrived, expected) << "the service's log: " << testing::PrintToString(LogLines());
}

std::wstring ServiceTest::ProfileFile() {
    return end_to_end::SettingsFolder() + L"VID1234PID5678.xml";
}

std::wstring ServiceTest::ServiceProgram() {
    return end_to_end::ProgramFolder() + L"service\\KvnMouseApl.exe";
}

Lines ServiceTest::Opened() const {
    return LinesOfFile(scratch + L"opened.txt");
}

}  // namespace kvn::service_end_to_end
