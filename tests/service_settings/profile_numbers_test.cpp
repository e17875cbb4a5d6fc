#include "service/settings/profile_numbers.h"

#include <gtest/gtest.h>

namespace kvn::service {
namespace {

TEST(ProfileNumbersTest, AProfileKeepsItsNumberAndANumberItsName) {
    ProfileNumbers names;
    const std::uint32_t first = names.NumberOf(L"VID0001PID0002", L"Default");
    const std::uint32_t second = names.NumberOf(L"VID0001PID0002", L"Games");
    EXPECT_NE(first, second);
    EXPECT_EQ(names.NumberOf(L"VID0001PID0002", L"Default"), first);
    EXPECT_EQ(names.NameOf(first), L"Default");
    EXPECT_EQ(names.NameOf(second), L"Games");
}

TEST(ProfileNumbersTest, TheSameNameOfAnotherMouseIsAnotherProfile) {
    ProfileNumbers names;
    EXPECT_NE(names.NumberOf(L"VID0001PID0002", L"Default"), names.NumberOf(L"VID0003PID0004", L"Default"));
    EXPECT_NE(names.NumberOf(L"VID0001PID0002", L"X"), names.NumberOf(L"VID0001PID0002X", L""));
}

TEST(ProfileNumbersTest, ANumberWithoutAProfileHasNoName) {
    ProfileNumbers names;
    names.NumberOf(L"VID0001PID0002", L"Default");
    EXPECT_EQ(names.NameOf(0), L"");
    EXPECT_EQ(names.NameOf(2), L"");
}

}  // namespace
}  // namespace kvn::service
