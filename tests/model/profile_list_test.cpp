#include "model/profile_list.h"

#include <gtest/gtest.h>

namespace kvn::model {
namespace {

ProfileRecord Named(const std::wstring& name, std::vector<ApplicationEntry> programs = {}) {
    ProfileRecord record = DefaultProfileRecord();
    record.name = name;
    record.settings.applications = std::move(programs);
    return record;
}

// Takes the place of the comparison that ignores case.
bool IsSameFirstLetter(const std::wstring& a, const std::wstring& b) {
    return a.substr(0, 1) == b.substr(0, 1);
}
bool IsSameText(const std::wstring& a, const std::wstring& b) {
    return a == b;
}

TEST(ProfileNamesTest, AreComparedExactlyAndWithCase) {
    const ProfileSet profiles{Named(L"Default"), Named(L"Drawing")};
    EXPECT_TRUE(IsNameInUse(profiles, L"Default"));
    EXPECT_TRUE(IsNameInUse(profiles, L"Drawing"));
    for (const wchar_t* free : {L"drawing", L"DRAWING", L"Drawing ", L"Drawin", L" Drawing", L""}) {
        EXPECT_FALSE(IsNameInUse(profiles, free)) << std::string(free, free + std::wstring_view(free).size());
    }
}

TEST(ProfileNamesTest, EmptyOneIsANameLikeAnyOther) {
    EXPECT_TRUE(IsNameInUse({Named(L"Default"), Named(L"")}, L""));
    EXPECT_FALSE(IsNameInUse({}, L""));
}

TEST(ProfileNamesTest, AreComparedByTheirFirst255Characters) {
    const std::wstring stem(255, L'n');
    const ProfileSet profiles{Named(stem + L"tail")};
    EXPECT_EQ(ComparedName(profiles[0]), stem);
    EXPECT_TRUE(IsNameInUse(profiles, stem));
    EXPECT_FALSE(IsNameInUse(profiles, stem + L"tail"));
    EXPECT_FALSE(IsNameInUse(profiles, stem.substr(1)));
    EXPECT_EQ(ComparedName(Named(L"short")), L"short");
}

TEST(ProfileToDeleteTest, IsTheOneAtTheIndexWhenNamesAreUnique) {
    const ProfileSet profiles{Named(L"Default"), Named(L"a"), Named(L"A")};
    for (std::size_t i = 0; i < profiles.size(); ++i) EXPECT_EQ(ProfileToDelete(profiles, i), i);
}

TEST(ProfileToDeleteTest, IsTheFirstOfItsName) {
    const ProfileSet profiles{Named(L"Default"), Named(L"twice"), Named(L"other"), Named(L"twice")};
    EXPECT_EQ(ProfileToDelete(profiles, 3), 1U);
    EXPECT_EQ(ProfileToDelete(profiles, 1), 1U);
    EXPECT_EQ(ProfileToDelete(profiles, 2), 2U);
}

TEST(ProfileToDeleteTest, IsNoneThatOnlyBeginsWithTheSameName) {
    const std::wstring stem(255, L'n');
    const ProfileSet profiles{Named(stem), Named(stem + L"1"), Named(stem + L"2")};
    EXPECT_EQ(ProfileToDelete(profiles, 2), 2U);
}

TEST(CopyWithoutProgramsTest, HasEverySettingUnderTheOtherNameAndNoProgram) {
    ProfileRecord source = Named(L"Drawing", {{L"Editor", L"C:\\e.exe"}, {L"Player", L"C:\\p.exe"}});
    source.settings[SettingField::Center] = 36;
    source.settings.etcKeys[ButtonSlot::Left] = {{17, 65, -2}};
    source.settings.gestures = {{L"UD", 37, L"memo", {{17, 18, 46}}}};
    const ProfileRecord before = source;

    ProfileRecord copy = CopyWithoutPrograms(source, L"Copy");
    EXPECT_EQ(source, before);
    EXPECT_EQ(copy.name, L"Copy");
    EXPECT_TRUE(copy.settings.applications.empty());
    copy.name = source.name;
    copy.settings.applications = source.settings.applications;
    EXPECT_EQ(copy, source);
}

TEST(CopyWithoutProgramsTest, LeavesItsSourceAloneWhenItIsEdited) {
    const ProfileRecord source = Named(L"Drawing", {{L"Editor", L"C:\\e.exe"}});
    const ProfileRecord before = source;
    ProfileRecord copy = CopyWithoutPrograms(source, L"");
    copy.settings.gestures.push_back({});
    copy.settings.applications.push_back({L"Player", L"C:\\p.exe"});
    copy.settings[SettingField::Left] = 7;
    EXPECT_EQ(source, before);
}

TEST(ProfileWithProgramTest, IsTheFirstThatHasThePath) {
    const ProfileSet profiles{Named(L"Default"), Named(L"a", {{L"x", L"1"}, {L"y", L"2"}}),
                              Named(L"b", {{L"z", L"2"}, {L"z", L"3"}})};
    EXPECT_EQ(ProfileWithProgram(profiles, L"2", IsSameText), 1U);
    EXPECT_EQ(ProfileWithProgram(profiles, L"3", IsSameText), 2U);
    EXPECT_EQ(ProfileWithProgram(profiles, L"4", IsSameText), std::nullopt);
    EXPECT_EQ(ProfileWithProgram(profiles, L"x", IsSameText), std::nullopt) << "a name is no path";
    EXPECT_EQ(ProfileWithProgram({}, L"2", IsSameText), std::nullopt);
}

TEST(ProfileWithProgramTest, ComparesPathsByTheGivenRule) {
    const ProfileSet profiles{Named(L"Default"), Named(L"a", {{L"x", L"alpha"}})};
    EXPECT_EQ(ProfileWithProgram(profiles, L"a", IsSameFirstLetter), 1U);
    EXPECT_EQ(ProfileWithProgram(profiles, L"a", IsSameText), std::nullopt);
}

}  // namespace
}  // namespace kvn::model
