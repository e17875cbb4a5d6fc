// What the tests of a failing disk share: a folder with one good profile file.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/profile_file.h"
#include "tests/model_windows/files.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {

inline ProfileSet OneProfile(const std::wstring& name) {
    ProfileSet list(1, DefaultProfileRecord());
    list[0].name = name;
    return list;
}

class ProfileFileFailureTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(SaveProfileFile(Path(), OneProfile(L"old")));
        oldBytes = test::ReadBytes(Path());
    }

    const std::wstring& Folder() const { return user.ApplicationData(); }
    std::wstring Path() const { return Folder() + L"\\VID0abcPID00a1.xml"; }
    const std::string& OldBytes() const { return oldBytes; }

    void ExpectOldFileAndNoOther() const {
        EXPECT_EQ(test::ReadBytes(Path()), oldBytes);
        EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
    }

    static HMODULE ThisProgram() { return GetModuleHandleW(nullptr); }

private:
    kvn::test::SandboxedUser user;
    std::string oldBytes;
};

}  // namespace kvn::model
