#include "model/registry_access.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/locked_key.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/replaced_import.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {
namespace {

using namespace std::string_literals;

using kvn::test::kModelKey;
using kvn::test::ReplacedImport;
using kvn::test::StoredValue;

constexpr std::uint32_t kVid = 0x0ABC;
constexpr std::uint32_t kPid = 0x00A1;

void SetBaseValue(const wchar_t* name, DWORD type, const void* data, std::size_t bytes) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kvn::test::kMouseKey, name, type, data, static_cast<DWORD>(bytes)),
              ERROR_SUCCESS);
}

StoredValue Stored(const wchar_t* name) {
    const auto values = kvn::test::StoredValues(kModelKey);
    const auto found = values.find(name);
    return found == values.end() ? StoredValue{} : found->second;
}

std::vector<BYTE> BytesOf(const std::wstring& text) {
    std::vector<BYTE> bytes(text.size() * sizeof(wchar_t));
    std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
}

constexpr DWORD kRetryOfReadMilliseconds = 50;

// Every test has an empty user's hive, and its waits take no time.
class RegistryAccess : public testing::Test {
protected:
    int Waits() const { return waits; }

    // Called at each wait, with its number.
    std::function<void(int)> onWait;

private:
    void Wait(DWORD milliseconds) {
        // The run-time library waits as well, in its own ways.
        if (milliseconds != kRetryOfReadMilliseconds) return genuineSleep(milliseconds);
        ++waits;
        if (onWait) onWait(waits);
    }

    kvn::test::SandboxedHive user{HKEY_CURRENT_USER};
    int waits = 0;
    void(WINAPI* genuineSleep)(DWORD) = test::Genuine<void WINAPI(DWORD)>(L"kernel32", "Sleep");
    ReplacedImport<"Sleep", void(DWORD)> sleep{GetModuleHandleW(nullptr),
                                               [this](DWORD milliseconds) { Wait(milliseconds); }};
};

using ReadCurrentDeviceValueTest = RegistryAccess;
using ReadCurrentDeviceNumberTest = RegistryAccess;
using ReadCurrentDeviceTest = RegistryAccess;
using WriteModelValueTest = RegistryAccess;

TEST_F(ReadCurrentDeviceValueTest, ReadsAValueAtOnce) {
    kvn::test::PublishMouse({});
    DWORD number = 0;
    EXPECT_FALSE(ReadCurrentDeviceValue(RegistryValue::Vid, &number, sizeof number));
    EXPECT_EQ(number, kVid);
    EXPECT_EQ(Waits(), 0);
}

TEST_F(ReadCurrentDeviceValueTest, FailsAfterTenAttemptsAndLeavesTheBufferAlone) {
    kvn::test::PublishMouse({});
    kvn::test::RemovePublished(L"PID");
    int opened = 0;
    const auto open = test::Genuine<decltype(RegOpenKeyExW)>(L"advapi32", "RegOpenKeyExW");
    const ReplacedImport<"RegOpenKeyExW", LSTATUS(HKEY, LPCWSTR, DWORD, REGSAM, PHKEY)> counted(
        GetModuleHandleW(nullptr), [&](HKEY root, LPCWSTR path, DWORD options, REGSAM rights, PHKEY key) {
            EXPECT_EQ(root, HKEY_CURRENT_USER);
            EXPECT_EQ(path, L"Software\\KORVEN\\MouseUtility"s);
            EXPECT_EQ(rights, static_cast<REGSAM>(KEY_ALL_ACCESS));
            ++opened;
            return open(root, path, options, rights, key);
        });
    ASSERT_TRUE(counted.IsInPlace());
    DWORD number = 0xDEADBEEF;
    EXPECT_TRUE(ReadCurrentDeviceValue(RegistryValue::Pid, &number, sizeof number));
    EXPECT_EQ(number, 0xDEADBEEF);
    EXPECT_EQ(opened, 10);
    EXPECT_EQ(Waits(), 10);
}

TEST_F(ReadCurrentDeviceValueTest, FailsWithoutTheKey) {
    DWORD number = 7;
    EXPECT_TRUE(ReadCurrentDeviceValue(RegistryValue::Vid, &number, sizeof number));
    EXPECT_EQ(number, 7U);
    EXPECT_EQ(Waits(), 10);
}

TEST_F(ReadCurrentDeviceValueTest, FailsWhenTheKeyMayNotBeOpened) {
    kvn::test::PublishMouse({});
    const test::LockedKey locked(HKEY_CURRENT_USER, kBaseKey, test::kNothingAllowed);
    DWORD number = 7;
    EXPECT_TRUE(ReadCurrentDeviceValue(RegistryValue::Vid, &number, sizeof number));
    EXPECT_EQ(number, 7U);
}

TEST_F(ReadCurrentDeviceValueTest, FindsAValueThatIsPublishedBetweenTwoAttempts) {
    for (const int attempt : {1, 2, 9}) {
        kvn::test::PublishMouse({});
        kvn::test::RemovePublished(L"ButtonCount");
        const int waitsBefore = Waits();
        // Another thread publishes, and finishes before the next attempt.
        onWait = [&](int wait) {
            if (wait - waitsBefore == attempt)
                std::thread([] { kvn::test::SetPublishedNumber(L"ButtonCount", 3); }).join();
        };
        DWORD number = 0;
        EXPECT_FALSE(ReadCurrentDeviceValue(RegistryValue::ButtonCount, &number, sizeof number));
        EXPECT_EQ(number, 3U);
        EXPECT_EQ(Waits() - waitsBefore, attempt);
    }
}

TEST_F(ReadCurrentDeviceValueTest, AValuePublishedAfterTheLastAttemptComesTooLate) {
    kvn::test::PublishMouse({});
    kvn::test::RemovePublished(L"ButtonCount");
    onWait = [](int wait) {
        if (wait == 10) kvn::test::SetPublishedNumber(L"ButtonCount", 3);
    };
    DWORD number = 0;
    EXPECT_TRUE(ReadCurrentDeviceValue(RegistryValue::ButtonCount, &number, sizeof number));
}

TEST_F(ReadCurrentDeviceValueTest, ALargerValueFailsAndLeavesTheBufferAlone) {
    const std::array<BYTE, 64> data{1, 2, 3, 4, 5, 6, 7, 8};
    for (const DWORD type : {REG_BINARY, REG_QWORD, REG_SZ, REG_MULTI_SZ, REG_DWORD}) {
        for (const std::size_t bytes : {5U, 8U, 64U}) {
            SetBaseValue(L"VID", type, data.data(), bytes);
            std::array<BYTE, 12> buffer;
            buffer.fill(0xEE);
            EXPECT_TRUE(ReadCurrentDeviceValue(RegistryValue::Vid, buffer.data(), 4));
            for (const BYTE byte : buffer) EXPECT_EQ(byte, 0xEE);
        }
    }
}

TEST_F(ReadCurrentDeviceValueTest, TheTypeDoesNotMatter) {
    // The bytes after the value in memory are not zero, since a zero would count as the end of a text.
    const std::array<BYTE, 6> data{0x78, 0x56, 0x34, 0x12, 0xEE, 0xEE};
    for (const int type : {REG_NONE, REG_BINARY, REG_DWORD, REG_SZ, REG_MULTI_SZ, REG_EXPAND_SZ, 99}) {
        SetBaseValue(L"VID", static_cast<DWORD>(type), data.data(), sizeof(DWORD));
        DWORD number = 0;
        EXPECT_FALSE(ReadCurrentDeviceValue(RegistryValue::Vid, &number, sizeof number)) << type;
        EXPECT_EQ(number, 0x12345678U) << type;
    }
}

TEST_F(ReadCurrentDeviceNumberTest, IsThePublishedNumberOrNothing) {
    kvn::test::PublishMouse({});
    kvn::test::RemovePublished(L"PID");
    EXPECT_EQ(ReadCurrentDeviceNumber(RegistryValue::Vid), kVid);
    EXPECT_EQ(ReadCurrentDeviceNumber(RegistryValue::Pid), std::nullopt);
}

TEST_F(ReadCurrentDeviceTest, ReadsAllThatIsPublished) {
    kvn::test::PublishMouse(
        {.hasTilt = 1, .buttonCount = 7, .vid = 0x12345, .pid = 0xFFFF, .image = L"Tarsel", .flag = 5});
    const auto device = ReadCurrentDevice();
    ASSERT_TRUE(device);
    EXPECT_EQ(device->hasTilt, 1U);
    EXPECT_EQ(device->buttonCount, 7);
    EXPECT_EQ(device->vid, 0x12345U);
    EXPECT_EQ(device->pid, 0xFFFFU);
    EXPECT_EQ(device->mouseImage, L"Tarsel");
    EXPECT_EQ(device->mouseFlag, 5U);
}

TEST_F(ReadCurrentDeviceTest, AnyMissingValueMakesItFail) {
    for (const wchar_t* name : {L"HasTilt", L"ButtonCount", L"VID", L"PID", L"MouseImage", L"MouseFlag"}) {
        kvn::test::PublishMouse({});
        ASSERT_TRUE(ReadCurrentDevice());
        kvn::test::RemovePublished(name);
        EXPECT_FALSE(ReadCurrentDevice()) << name;
    }
}

TEST_F(ReadCurrentDeviceTest, CapabilitiesOutOfTheirRangesMakeItFail) {
    for (const DWORD hasTilt : {2U, 0xFFFFFFFFU}) {
        kvn::test::PublishMouse({.hasTilt = hasTilt});
        EXPECT_FALSE(ReadCurrentDevice()) << hasTilt;
    }
    for (const DWORD buttonCount : {8U, 0xFFFFFFFFU, 0x80000000U}) {
        kvn::test::PublishMouse({.buttonCount = buttonCount});
        EXPECT_FALSE(ReadCurrentDevice()) << buttonCount;
    }
    kvn::test::PublishMouse({.hasTilt = 0, .buttonCount = 0});
    EXPECT_TRUE(ReadCurrentDevice());
}

TEST_F(ReadCurrentDeviceTest, AShortNumberFillsItsLowBytes) {
    kvn::test::PublishMouse({});
    SetBaseValue(L"ButtonCount", REG_BINARY, "\x03", 1);
    SetBaseValue(L"HasTilt", REG_NONE, "", 0);
    const auto device = ReadCurrentDevice();
    ASSERT_TRUE(device);
    EXPECT_EQ(device->buttonCount, 3);
    EXPECT_EQ(device->hasTilt, 0U);
}

TEST_F(ReadCurrentDeviceTest, AnImageNameIsCutAndNeverRead) {
    kvn::test::PublishMouse({});
    const auto readImage = [](const std::wstring& stored, DWORD type, std::size_t bytes) {
        SetBaseValue(L"MouseImage", type, stored.data(), bytes);
        const auto device = ReadCurrentDevice();
        return device ? device->mouseImage : L"(none)"s;
    };
    EXPECT_EQ(readImage(std::wstring(255, L'x'), REG_SZ, 512), std::wstring(255, L'x'));
    EXPECT_EQ(readImage(std::wstring(256, L'x'), REG_BINARY, 512), std::wstring(255, L'x'));
    EXPECT_EQ(readImage(std::wstring(300, L'x'), REG_BINARY, 514), L"(none)");
    EXPECT_EQ(readImage(std::wstring(300, L'x'), REG_BINARY, 600), L"(none)");
    EXPECT_EQ(readImage(L"abc", REG_BINARY, 5), L"abc");
    EXPECT_EQ(readImage(L"\x1234\x1234", REG_BINARY, 3),
              L"\x1234"
              L"4");
    EXPECT_EQ(readImage(L"", REG_NONE, 0), L"");
    EXPECT_EQ(readImage(L"a\0b\0"s, REG_MULTI_SZ, 8), L"a");
}

TEST_F(WriteModelValueTest, MakesTheModelsKeyAndStoresANumber) {
    const std::int32_t number = -2;
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::FlyingRevolutionCount, &number, 0));
    EXPECT_EQ(Stored(L"BindKeyHCount"), (StoredValue{REG_DWORD, {0xFE, 0xFF, 0xFF, 0xFF}}));
}

TEST_F(WriteModelValueTest, OpensTheModelsKeyWithEveryRight) {
    int opened = 0;
    const auto create = test::Genuine<decltype(RegCreateKeyExW)>(L"advapi32", "RegCreateKeyExW");
    const ReplacedImport<"RegCreateKeyExW", decltype(RegCreateKeyExW)> watched(
        GetModuleHandleW(nullptr), [&](HKEY root, LPCWSTR path, DWORD reserved, LPWSTR type, DWORD options,
                                       REGSAM rights, LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD disposition) {
            EXPECT_EQ(root, HKEY_CURRENT_USER);
            EXPECT_EQ(path, std::wstring(kModelKey));
            EXPECT_EQ(options, static_cast<DWORD>(REG_OPTION_NON_VOLATILE));
            EXPECT_EQ(rights, static_cast<REGSAM>(KEY_ALL_ACCESS));
            ++opened;
            return create(root, path, reserved, type, options, rights, security, key, disposition);
        });
    ASSERT_TRUE(watched.IsInPlace());
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::LeftEtcKey, L"V", 0));
    EXPECT_EQ(opened, 1);
}

TEST_F(WriteModelValueTest, StoresATextWithoutItsFinalZero) {
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::LeftEtcKey, L"Left Ctrl+V", 0));
    EXPECT_EQ(Stored(L"BindKeyLeft_etcKey"), (StoredValue{REG_SZ, BytesOf(L"Left Ctrl+V")}));
    EXPECT_EQ(Stored(L"BindKeyLeft_etcKey").bytes.size(), 22U);
}

TEST_F(WriteModelValueTest, StoresTheEmptyTextAsNoBytes) {
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::LeftEtcKey, L"V", 0));
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::LeftEtcKey, L"", 0));
    EXPECT_EQ(Stored(L"BindKeyLeft_etcKey"), (StoredValue{REG_SZ, {}}));
}

TEST_F(WriteModelValueTest, AGivenLengthIsTaken) {
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::Gesture, L"ab\0\0", 8));
    EXPECT_EQ(Stored(L"Gesture"), (StoredValue{REG_MULTI_SZ, BytesOf(L"ab\0\0"s)}));
    EXPECT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::RightEtcKey, L"V+W", 2));
    EXPECT_EQ(Stored(L"BindKeyRight_etcKey").type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(Stored(L"BindKeyRight_etcKey").bytes, BytesOf(L"V"));
}

TEST_F(WriteModelValueTest, AListHasNoNaturalLength) {
    EXPECT_TRUE(WriteModelValue(kVid, kPid, RegistryValue::ProfileApp, L"\0", 0));
    EXPECT_EQ(Stored(L"ProfileApp"), StoredValue{});
}

TEST_F(WriteModelValueTest, EitherIdOfZeroMeansTheBaseKey) {
    const std::int32_t number = 7;
    EXPECT_FALSE(WriteModelValue(0, kPid, RegistryValue::Left, &number, 0));
    EXPECT_FALSE(WriteModelValue(kVid, 0, RegistryValue::Right, &number, 0));
    const auto values = kvn::test::StoredValues(kvn::test::kMouseKey);
    EXPECT_EQ(values.at(L"BindKeyLeft"), kvn::test::StoredNumber(7));
    EXPECT_EQ(values.at(L"BindKeyRight"), kvn::test::StoredNumber(7));
    EXPECT_TRUE(kvn::test::StoredValues(kModelKey).empty());
}

TEST_F(WriteModelValueTest, WritesPreparedValuesInTheirTypes) {
    EXPECT_TRUE(CarryOut({RegistryValue::Center, 9, L""}, kVid, kPid));
    EXPECT_TRUE(CarryOut({RegistryValue::CenterEtcKey, 0, L"Left Ctrl+V"}, kVid, kPid));
    EXPECT_TRUE(CarryOut({RegistryValue::Button4EtcKey, 0, L""}, kVid, kPid));
    EXPECT_TRUE(CarryOut({RegistryValue::ProfileApp, 0, ApplicationsToMultiString({{L"E", L"C:\\e"}})}, kVid, kPid));
    EXPECT_TRUE(CarryOut({RegistryValue::Gesture, 0, GesturesToMultiString({})}, kVid, kPid));
    EXPECT_EQ(Stored(L"BindKeyCenter"), (StoredValue{REG_DWORD, {9, 0, 0, 0}}));
    EXPECT_EQ(Stored(L"BindKeyCenter_etcKey"), (StoredValue{REG_SZ, BytesOf(L"Left Ctrl+V")}));
    EXPECT_EQ(Stored(L"BindKeyMinus_etcKey"), (StoredValue{REG_SZ, {}}));
    EXPECT_EQ(Stored(L"ProfileApp"), (StoredValue{REG_MULTI_SZ, BytesOf(L"E\tC:\\e\0\0"s)}));
    EXPECT_EQ(Stored(L"Gesture"), (StoredValue{REG_MULTI_SZ, {0, 0}}));
}

TEST_F(WriteModelValueTest, FailsAtOnceWhenTheKeyMayNotBeWritten) {
    const std::int32_t before = 1;
    const std::int32_t after = 2;
    ASSERT_FALSE(WriteModelValue(kVid, kPid, RegistryValue::Left, &before, 0));
    {
        const test::LockedKey locked(HKEY_CURRENT_USER, kModelKey, test::kReadingAllowed);
        EXPECT_TRUE(WriteModelValue(kVid, kPid, RegistryValue::Left, &after, 0));
        EXPECT_TRUE(WriteModelValue(kVid, kPid, RegistryValue::LeftEtcKey, L"V", 0));
        EXPECT_FALSE(CarryOut({RegistryValue::Gesture, 0, L"\0"s}, kVid, kPid));
    }
    EXPECT_EQ(Waits(), 0);
    EXPECT_EQ(Stored(L"BindKeyLeft"), kvn::test::StoredNumber(1));
    EXPECT_EQ(Stored(L"Gesture"), StoredValue{});
}

}  // namespace
}  // namespace kvn::model
