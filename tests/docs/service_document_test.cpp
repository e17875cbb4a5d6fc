// docs/service.md agrees with the service's code.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "service/engine/functions.h"
#include "service/options/command_line.h"
#include "tests/docs/documents.h"

namespace kvn::docs {
namespace {

using service::FunctionKind;

std::string ServiceDocument() {
    return ReadFile("docs/service.md");
}

// The first group of each match, in order.
std::vector<std::string> AllOf(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
        found.push_back((*match)[1]);
    }
    return found;
}

std::vector<std::string> SplitAt(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find(separator, begin)) != std::string::npos;) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + separator.size();
    }
    parts.push_back(text.substr(begin));
    return parts;
}

// The options in the program's help, one for each form of a value: "--profile NAME", "--profile auto".
std::vector<std::string> OptionsOfCode() {
    std::vector<std::string> options;
    for (const service::OptionHelp& option : service::ListedOptions()) {
        for (const std::string& value : SplitAt(Narrow(option.valueName), "|")) {
            options.push_back(Narrow(option.name) + (value.empty() ? "" : ' ' + value));
        }
    }
    return options;
}

TEST(ServiceDocumentTest, ListsTheOptionsAsTheProgramDoes) {
    static const std::regex option("(--[^`,]+)");
    std::vector<std::string> documented;
    for (const std::string& cell : TableWith(ServiceDocument(), "option").Column("option")) {
        for (const std::string& form : AllOf(cell, option)) documented.push_back(form);
    }
    EXPECT_EQ(documented, OptionsOfCode());
}

TEST(ServiceDocumentTest, ListsTheExitCodes) {
    const std::string codes = ReadFile("service/options/answer.h");
    std::vector<std::string> expected = AllOf(codes, std::regex("k(?:Done|Failed|WrongOptions|OtherModel) = (\\d)"));
    EXPECT_EQ(expected.size(), 4U);
    EXPECT_EQ(TableWith(ServiceDocument(), "exit code").Column("exit code"), expected);
}

TEST(ServiceDocumentTest, ListsTheKeysOfTheStatus) {
    const std::vector<std::string> keys =
        AllOf(ReadFile("service/driver/status.cpp"), std::regex("Line\\(L\"(\\w+)\""));
    std::vector<std::string> documented;
    for (const std::string& cell : TableWith(ServiceDocument(), "key").Column("key")) {
        for (const std::string& key : AllOf(cell, std::regex("(\\w+)"))) documented.push_back(key);
    }
    EXPECT_EQ(std::set(documented.begin(), documented.end()), std::set(keys.begin(), keys.end()));
    EXPECT_EQ(documented.size(), keys.size());
}

TEST(ServiceDocumentTest, SaysWhyAProfileIsInForceAsTheStatusDoes) {
    const std::string source = ReadFile("service/driver/status.cpp");
    const std::size_t begin = source.find("kWhy{{");
    const std::string reasons = source.substr(begin, source.find('}', begin) - begin);
    std::vector<std::string> expected = AllOf(reasons, std::regex("\"(\\w+)\""));
    EXPECT_EQ(expected.size(), 3U);
    for (const std::string& reason : expected)
        EXPECT_NE(ServiceDocument().find('`' + reason + '`'), std::string::npos) << reason;
}

TEST(ServiceDocumentTest, NamesTheControlsAsTheLogDoes) {
    const std::string source = ReadFile("service/driver/press_log.cpp");
    const std::size_t begin = source.find("kControlNames{");
    const auto names = AllOf(source.substr(begin, source.find(';', begin) - begin), std::regex("L\"([^\"]+)\""));
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "`" : ", `") + name + '`';
    EXPECT_NE(ReadProse("docs/service.md").find('(' + list + ')'), std::string::npos) << list;
}

// The English texts of service/resources/service_strings.rc whose names begin with the prefix.
std::vector<std::string> ServiceTexts(const std::string& prefix) {
    return AllOf(ReadFile("service/resources/service_strings.rc"),
                 std::regex(prefix + "\\w+\\s+UI_TEXT\\(\\s*\"([^\"]*)\""));
}

// %1 and %2 stand for a word in capitals.
bool IsDocumented(const std::string& text, const std::vector<std::string>& documented) {
    static const std::regex special("[.?*+()\\[\\]]");
    const std::string plain = std::regex_replace(text, special, "\\$&");
    const std::regex pattern(std::regex_replace(plain, std::regex("%[12]"), "[A-Z]+"));
    return std::ranges::any_of(documented, [&](const std::string& cell) { return std::regex_match(cell, pattern); });
}

TEST(ServiceDocumentTest, ListsEveryMessageWordForWord) {
    std::vector<std::string> documented = TableWith(ServiceDocument(), "message").Column("message");
    for (const Table& table : TablesWith(ServiceDocument(), "answer")) {
        const std::vector<std::string> answers = table.Column("answer");
        documented.insert(documented.end(), answers.begin(), answers.end());
    }
    std::vector<std::string> texts = ServiceTexts("IDS_BALLOON_");
    const std::vector<std::string> faults = ServiceTexts("IDS_FAULT_");
    texts.insert(texts.end(), faults.begin(), faults.end());
    EXPECT_EQ(documented.size(), texts.size());
    for (const std::string& text : texts) EXPECT_TRUE(IsDocumented(text, documented)) << text;
}

TEST(ServiceDocumentTest, QuotesTheMenuAndTheEventLog) {
    const std::string prose = ReadProse("docs/service.md");
    std::vector<std::string> texts = ServiceTexts("IDS_MENU_");
    const std::vector<std::string> events = ServiceTexts("IDS_EVENT_");
    EXPECT_FALSE(texts.empty());
    EXPECT_EQ(events.size(), 1U);
    texts.insert(texts.end(), events.begin(), events.end());
    for (std::string text : texts) {
        std::erase(text, '&');
        const bool isQuoted = prose.find('"' + text + '"') != std::string::npos ||
                              prose.find('"' + text + ",\"") != std::string::npos ||
                              prose.find('"' + text + "\",") != std::string::npos;
        EXPECT_TRUE(isQuoted) << text;
    }
}

// The codes by the names in docs/function-codes.md, which are the page's.
std::map<std::string, int> CodesOfNames() {
    std::map<std::string, int> codes;
    for (const Row& row : TableWith(ReadFile("docs/function-codes.md"), "code").rows) codes[row[1]] = std::stoi(row[0]);
    codes.erase("(blank)");
    return codes;
}

std::string WordFor(FunctionKind kind) {
    static const std::map<FunctionKind, std::string> words{
        {FunctionKind::Held, "held"},        {FunctionKind::Once, "once"},
        {FunctionKind::Repeats, "repeated"}, {FunctionKind::Gesture, "while drawing"},
        {FunctionKind::Nothing, "never"},    {FunctionKind::Natural, "natural"},
    };
    return words.at(kind);
}

TEST(ServiceDocumentTest, SaysOfEveryFunctionWhenItActs) {
    std::map<std::string, int> undocumented = CodesOfNames();
    for (const Row& row : TableWith(ServiceDocument(), "functions").rows) {
        for (const std::string& name : SplitAt(row[0], ", ")) {
            const auto found = undocumented.find(name);
            ASSERT_NE(found, undocumented.end()) << name << " is no function, or occurs twice";
            EXPECT_EQ(row[1], WordFor(service::KindOf(found->second))) << name;
            undocumented.erase(found);
        }
    }
    EXPECT_TRUE(undocumented.empty()) << undocumented.begin()->first;
}

std::string NameOfKey(model::KeyCode code) {
    static const std::map<model::KeyCode, std::string> names{
        {0x5B, "Windows"}, {0x09, "Tab"}, {0x11, "Ctrl"}, {0x0D, "Enter"}};
    const auto found = names.find(code);
    return found == names.end() ? std::string(1, static_cast<char>(code)) : found->second;
}

std::string ShortcutOf(const service::FunctionRow& function) {
    std::string shortcut;
    for (const model::KeyCode key : function.keys) {
        if (key != model::kNoKey) shortcut += (shortcut.empty() ? "" : "+") + NameOfKey(key);
    }
    return shortcut;
}

TEST(ServiceDocumentTest, ListsEveryShortcutWithTheWindowsKey) {
    std::map<std::string, std::string> expected;
    for (const auto& [name, code] : CodesOfNames()) {
        const service::FunctionRow* const function = service::FindFunction(code);
        ASSERT_NE(function, nullptr) << name;
        if (function->keys[0] == 0x5B) expected[name] = ShortcutOf(*function);
    }
    const auto documented = TableWith(ServiceDocument(), "function").Columns("function", "shortcut");
    EXPECT_EQ((std::map<std::string, std::string>(documented.begin(), documented.end())), expected);
}

TEST(TryTheButtonsDocumentTest, NamesTheControlsAsThePageLabelsThem) {
    static const std::regex control("IDS_TRY_(?:LEFT|RIGHT|CENTER|BUTTON\\d|TILT_\\w+) (UI_TEXT\\([^)]*\\))");
    const std::vector<std::string> names = AllOf(ReadFile("service/resources/service_strings.rc"), control);
    const std::string dialogs = ReadFile("resources/dialogs.rc");
    EXPECT_EQ(names.size(), model::kButtonSlotCount);
    for (const std::string& name : names) EXPECT_NE(dialogs.find("LTEXT " + name + ','), std::string::npos) << name;
}

}  // namespace
}  // namespace kvn::docs
