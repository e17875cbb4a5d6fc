// The meaning of the arguments.
#include "service/options/command_line.h"

#include <gtest/gtest.h>

#include "service/options/arguments.h"
#include "service/options/mouse_option.h"

namespace kvn::service {
namespace {

CommandLine Parsed(const std::vector<std::wstring>& arguments) {
    const auto parsed = ParseArguments(arguments);
    EXPECT_TRUE(std::holds_alternative<CommandLine>(parsed));
    return std::holds_alternative<CommandLine>(parsed) ? std::get<CommandLine>(parsed) : CommandLine{};
}

TEST(CommandLineTest, TheMouseHasItsPartsAndMayLackTheLastTwo) {
    const auto choice = ParseChosenMouse(L"1a2B:00f0:7:1:KvnSample:1");
    ASSERT_TRUE(choice && choice->mouse);
    EXPECT_EQ(choice->mouse->vid, 0x1A2BU);
    EXPECT_EQ(choice->mouse->pid, 0xF0U);
    EXPECT_EQ(choice->mouse->buttonCount, 7);
    EXPECT_EQ(choice->mouse->hasTilt, 1U);
    EXPECT_EQ(choice->mouse->mouseImage, L"KvnSample");
    EXPECT_EQ(choice->mouse->mouseFlag, 1U);
    EXPECT_TRUE(ParseChosenMouse(L"1:2:3:0"));
    EXPECT_TRUE(ParseChosenMouse(L"1:2:3:0::4294967295"));
    EXPECT_FALSE(ParseChosenMouse(L"none")->mouse);
}

TEST(CommandLineTest, AMouseOutOfItsRangesIsRefused) {
    for (const wchar_t* const text :
         {L"", L"1:2:3", L"1:2:3:0:x:1:1", L"0:2:3:0", L"1:0:3:0", L"10000:2:3:0", L"1:2:8:0", L"1:2:3:2", L"1:2:-1:0",
          L"1:2:3:0:x:4294967296", L"g:2:3:0", L"1:2:a:0", L" 1:2:3:0", L"None"}) {
        EXPECT_FALSE(ParseChosenMouse(text)) << testing::PrintToString(std::wstring(text));
    }
    EXPECT_TRUE(ParseChosenMouse(L"1:2:3:0:" + std::wstring(255, L'x')));
    EXPECT_FALSE(ParseChosenMouse(L"1:2:3:0:" + std::wstring(256, L'x')));
}

TEST(CommandLineTest, OnlySomeOptionsStartAService) {
    for (const std::vector<std::wstring>& starts :
         {std::vector<std::wstring>{}, {L"--settings"}, {L"--try"}, {L"--mouse", L"none"}, {L"--log", L"x"}}) {
        EXPECT_TRUE(Parsed(starts).Starts());
    }
    for (const std::vector<std::wstring>& needs :
         {std::vector<std::wstring>{L"--status"}, {L"--pause"}, {L"--resume"}, {L"--profile", L"x"}}) {
        EXPECT_FALSE(Parsed(needs).Starts());
    }
}

TEST(CommandLineTest, WhatASecondStartHandsOverAsksForTheSame) {
    const std::vector<std::wstring> given{L"--mouse",   L"1234:5678:7:1:KvnSample:1",
                                          L"--log",     L"C:\\a b\\c\"d\\",
                                          L"--profile", L"It's \"mine\" & yours",
                                          L"--pause",   L"--settings",
                                          L"--try",     L"--status"};
    EXPECT_EQ(ArgumentsForService(Parsed(given)), given);
    EXPECT_EQ(SplitCommandLine(L"x " + Quoted(given)), given);
}

TEST(CommandLineTest, ExportAndImportStandAlone) {
    const auto faultOf = [](const std::vector<std::wstring>& arguments) {
        const auto parsed = ParseArguments(arguments);
        const auto* const error = std::get_if<UsageError>(&parsed);
        return error == nullptr ? std::nullopt : std::optional(error->fault);
    };
    EXPECT_EQ(Parsed({L"--export", L"a"}).exportFile, L"a");
    EXPECT_EQ(Parsed({L"--yes", L"--import", L"a"}).importFile, L"a");
    for (const wchar_t* const transfer : {L"--export", L"--import"}) {
        for (const std::vector<std::wstring>& rest : {std::vector<std::wstring>{L"--pause"},
                                                      {L"--status"},
                                                      {L"--settings"},
                                                      {L"--quit"},
                                                      {L"--profile", L"x"},
                                                      {L"--mouse", L"none"},
                                                      {L"--log", L"x"},
                                                      {L"--export", L"x", L"--import", L"x"}}) {
            std::vector<std::wstring> arguments{transfer, L"a"};
            arguments.insert(arguments.end(), rest.begin(), rest.end());
            EXPECT_EQ(faultOf(arguments), UsageFault::StandsAlone);
        }
    }
    EXPECT_EQ(faultOf({L"--yes"}), UsageFault::YesWithoutImport);
    EXPECT_EQ(faultOf({L"--export", L"a", L"--yes"}), UsageFault::YesWithoutImport);
    EXPECT_EQ(faultOf({L"--import", L""}), UsageFault::ValueBad);
}

TEST(CommandLineTest, TheLastOfTwoCounts) {
    EXPECT_EQ(Parsed({L"--pause", L"--resume"}).pause, false);
    EXPECT_EQ(Parsed({L"--log", L"a", L"--log", L"b"}).logFile, L"b");
}

TEST(CommandLineTest, AnEmptyFileOrProfileIsABadValue) {
    for (const wchar_t* const option : {L"--log", L"--profile"}) {
        const auto parsed = ParseArguments(std::vector<std::wstring>{option, L""});
        ASSERT_TRUE(std::holds_alternative<UsageError>(parsed));
        EXPECT_EQ(std::get<UsageError>(parsed).fault, UsageFault::ValueBad);
    }
}

TEST(CommandLineTest, AnOptionIsNeverAValue) {
    for (const wchar_t* const option : {L"--log", L"--profile", L"--export", L"--import", L"--mouse"}) {
        const auto parsed = ParseArguments(std::vector<std::wstring>{option, L"--status"});
        ASSERT_TRUE(std::holds_alternative<UsageError>(parsed));
        EXPECT_EQ(std::get<UsageError>(parsed).fault, UsageFault::ValueMissing);
        EXPECT_EQ(std::get<UsageError>(parsed).option, option);
    }
    EXPECT_EQ(Parsed({L"--profile", L"--mine"}).profile, L"--mine");
}

}  // namespace
}  // namespace kvn::service
