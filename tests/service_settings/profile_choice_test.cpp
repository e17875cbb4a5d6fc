#include "service/settings/profile_choice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvn::service {
namespace {

constexpr wchar_t kEditor[] = L"Q:\\no such\\editor.exe";
constexpr wchar_t kPlayer[] = L"Q:\\no such\\player.exe";

model::ProfileRecord Profile(const std::wstring& name, const std::vector<std::wstring>& programs = {}) {
    model::ProfileRecord profile = model::DefaultProfileRecord();
    profile.name = name;
    for (const std::wstring& path : programs) profile.settings.applications.push_back({L"", path});
    return profile;
}

class ProfileChoiceTest : public testing::Test {
protected:
    ProfileChoice Choose(const std::wstring& program, const std::wstring& forced = {}, std::size_t selected = 0) {
        front.SetProgram(program);
        return ChooseProfile(profiles, selected, forced, front);
    }

    ProgramComparison front;
    model::ProfileSet profiles{Profile(L"Default"), Profile(L"Edit", {kEditor}), Profile(L"Both", {kPlayer, kEditor}),
                               Profile(L"")};
};

bool operator==(const ProfileChoice& choice, const std::pair<std::size_t, Why>& expected) {
    return choice.profile == expected.first && choice.why == expected.second;
}

TEST_F(ProfileChoiceTest, TheSelectedOneCountsWithoutAProgram) {
    EXPECT_TRUE(Choose(L"", L"", 2) == std::pair(std::size_t{2}, Why::Selected));
    EXPECT_TRUE(Choose(L"Q:\\other.exe", L"", 1) == std::pair(std::size_t{1}, Why::Selected));
}

TEST_F(ProfileChoiceTest, TheFirstThatListsTheProgramCounts) {
    EXPECT_TRUE(Choose(kEditor) == std::pair(std::size_t{1}, Why::Program));
    EXPECT_TRUE(Choose(kPlayer) == std::pair(std::size_t{2}, Why::Program));
    EXPECT_TRUE(Choose(kEditor, L"", 2) == std::pair(std::size_t{1}, Why::Program));
}

TEST_F(ProfileChoiceTest, TheForcedOneCountsBeforeAnyProgram) {
    EXPECT_TRUE(Choose(kEditor, L"Default") == std::pair(std::size_t{0}, Why::Forced));
    EXPECT_TRUE(Choose(kEditor, L"Both") == std::pair(std::size_t{2}, Why::Forced));
}

TEST_F(ProfileChoiceTest, OneThatIsGoneForcesNothing) {
    EXPECT_TRUE(Choose(kEditor, L"Gone") == std::pair(std::size_t{1}, Why::Program));
    EXPECT_TRUE(Choose(L"", L"default", 2) == std::pair(std::size_t{2}, Why::Selected));
}

}  // namespace
}  // namespace kvn::service
