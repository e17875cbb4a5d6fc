#include "service/settings/published_mouse.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <set>
#include <string>
#include <vector>

#include "model/registry_access.h"
#include "platform/unique_resource.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/replaced_import.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::service {
namespace {

using kvn::test::StoredNumber;
using kvn::test::StoredValue;

template <typename Function>
Function* Original(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"advapi32"), name)));
}

// The values that this program deletes and writes, call by call.
class RegistryCalls {
public:
    void FailToWrite(const std::wstring& value) { failing = value; }
    const std::vector<std::wstring>& Deleted() const { return deletedValues; }
    const std::vector<std::wstring>& Written() const { return writtenValues; }
    const std::vector<std::wstring>& All() const { return allValues; }

private:
    LSTATUS Delete(HKEY key, const wchar_t* name) {
        deletedValues.emplace_back(name);
        allValues.emplace_back(name);
        return Original<decltype(RegDeleteValueW)>("RegDeleteValueW")(key, name);
    }
    LSTATUS Write(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
        writtenValues.emplace_back(name);
        allValues.emplace_back(name);
        if (failing == name) return ERROR_ACCESS_DENIED;
        return Original<decltype(RegSetValueExW)>("RegSetValueExW")(key, name, reserved, type, data, size);
    }

    std::wstring failing;
    std::vector<std::wstring> deletedValues;
    std::vector<std::wstring> writtenValues;
    std::vector<std::wstring> allValues;
    kvn::test::ReplacedImport<"RegDeleteValueW", decltype(RegDeleteValueW)> deletions{
        GetModuleHandleW(nullptr), [this](auto... arguments) { return Delete(arguments...); }};
    kvn::test::ReplacedImport<"RegSetValueExW", decltype(RegSetValueExW)> writes{
        GetModuleHandleW(nullptr), [this](auto... arguments) { return Write(arguments...); }};
};

class PublishedMouseTest : public testing::Test {
protected:
    const model::DeviceRecord mouse{
        .hasTilt = 1, .buttonCount = 7, .vid = 0x1234, .pid = 0xFFFF, .mouseImage = L"Sample", .mouseFlag = 3};

    static auto Values() { return kvn::test::StoredValues(kvn::test::kMouseKey); }

private:
    kvn::test::SandboxedUser user;
};

TEST_F(PublishedMouseTest, HasSixValuesOfTheirTypes) {
    ASSERT_TRUE(PublishMouse(mouse));
    StoredValue image = kvn::test::StoredText(std::wstring(L"Sample") + L'\0');
    image.type = REG_SZ;
    const std::map<std::wstring, StoredValue> expected{
        {L"HasTilt", StoredNumber(1)},   {L"ButtonCount", StoredNumber(7)}, {L"MouseImage", image},
        {L"MouseFlag", StoredNumber(3)}, {L"VID", StoredNumber(0x1234)},    {L"PID", StoredNumber(0xFFFF)}};
    EXPECT_EQ(Values(), expected);
}

TEST_F(PublishedMouseTest, IsReadUnchangedByThePage) {
    ASSERT_TRUE(PublishMouse(mouse));
    const auto read = model::ReadCurrentDevice();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->mouseImage, L"Sample");
    EXPECT_EQ(read->pid, 0xFFFFU);
}

TEST_F(PublishedMouseTest, TakesThePlaceOfValuesOfAnyType) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kvn::test::kMouseKey, L"VID", REG_SZ, L"text", 10);
    ASSERT_TRUE(PublishMouse(mouse));
    EXPECT_EQ(Values().at(L"VID"), StoredNumber(0x1234));
}

TEST_F(PublishedMouseTest, HasAPictureNameThatThePageCanRead) {
    model::DeviceRecord named = mouse;
    named.mouseImage = std::wstring(1000, L'x');
    ASSERT_TRUE(PublishMouse(named));
    const auto read = model::ReadCurrentDevice();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->mouseImage, std::wstring(model::kMaxMouseImageLength, L'x'));
}

TEST_F(PublishedMouseTest, LosesAllOldValuesBeforeItsIdsComeLast) {
    const RegistryCalls calls;
    ASSERT_TRUE(PublishMouse(mouse));
    const std::vector<std::wstring> values{L"HasTilt", L"ButtonCount", L"MouseImage", L"MouseFlag", L"VID", L"PID"};
    ASSERT_EQ(calls.Deleted().size() + calls.Written().size(), calls.All().size());
    EXPECT_EQ(std::set(calls.Deleted().begin(), calls.Deleted().end()), std::set(values.begin(), values.end()));
    EXPECT_EQ(calls.Written(), values);
    EXPECT_EQ(calls.All().at(values.size()), L"HasTilt");
}

TEST_F(PublishedMouseTest, IsNotPublishedWhenAValueCannotBeWritten) {
    RegistryCalls calls;
    for (const wchar_t* value : {L"HasTilt", L"ButtonCount", L"MouseImage", L"MouseFlag", L"VID", L"PID"}) {
        calls.FailToWrite(value);
        EXPECT_FALSE(PublishMouse(mouse)) << testing::PrintToString(value);
    }
}

TEST_F(PublishedMouseTest, IsNotPublishedWhereTheKeyCannotBeMade) {
    platform::UniqueRegistryKey gone;
    ASSERT_EQ(
        RegCreateKeyExW(HKEY_CURRENT_USER, L"Gone", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, gone.Receive(), nullptr),
        ERROR_SUCCESS);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Gone");
    RegOverridePredefKey(HKEY_CURRENT_USER, gone.Get());
    EXPECT_FALSE(PublishMouse(mouse));
}

}  // namespace
}  // namespace kvn::service
