// docs/support.md explains every message box, and quotes it exactly.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "tests/docs/documents.h"

namespace kvn::docs {
namespace {

constexpr char kDocument[] = "docs/support.md";

// The text with the number that the box shows.
std::string Shown(std::string text) {
    const std::size_t place = text.find("%d");
    return place == std::string::npos ? text : text.replace(place, 2, "100");
}

// The names of the texts that the code passes to a message box.
std::set<std::string> NamesInCalls() {
    static const std::regex call("\\b(?:Warn|Show)\\(([^;]*)\\)");
    static const std::regex name("IDS_\\w+");
    std::set<std::string> names;
    for (const char* folder : {"platform", "model", "gestures", "profiles", "page"}) {
        const std::string sources = ReadSources(folder);
        for (std::sregex_iterator found(sources.begin(), sources.end(), call), end; found != end; ++found) {
            const std::string arguments = (*found)[1];
            for (std::sregex_iterator id(arguments.begin(), arguments.end(), name); id != end; ++id) {
                names.insert(id->str());
            }
        }
    }
    return names;
}

// A text that is combined with others before it is shown is a sentence too, and no other text is.
bool IsSentence(const std::string& text) {
    return text.ends_with('.') || text.ends_with('?');
}

// In Japanese, and in English.
std::set<Row> TextsOfMessageBoxesInBothLanguages() {
    const std::set<std::string> inCalls = NamesInCalls();
    std::set<Row> texts;
    for (const StringRow& row : StringTable()) {
        if (inCalls.contains(row.name) || IsSentence(row.english)) {
            texts.insert({Shown(row.japanese), Shown(row.english)});
        }
    }
    return texts;
}

std::set<std::string> TextsOfMessageBoxes() {
    std::set<std::string> texts;
    for (const Row& row : TextsOfMessageBoxesInBothLanguages()) texts.insert(row[1]);
    return texts;
}

std::vector<Row> DocumentedMessages() {
    std::vector<Row> rows;
    for (const Table& table : TablesWith(ReadFile(kDocument), "message")) {
        rows.insert(rows.end(), table.rows.begin(), table.rows.end());
    }
    return rows;
}

TEST(MessageBoxDocumentTest, AreFoundInTheCodeAndAreSentences) {
    const std::set<std::string> names = NamesInCalls();
    EXPECT_GE(names.size(), 10U);
    for (const std::string& name : names) EXPECT_TRUE(IsSentence(TextOf(name))) << name;
}

TEST(MessageBoxDocumentTest, AreExplainedInTheSupportDocumentWordByWord) {
    std::set<std::string> documented;
    for (const Row& row : DocumentedMessages()) EXPECT_TRUE(documented.insert(row[0]).second) << row[0] << " twice";
    EXPECT_EQ(documented, TextsOfMessageBoxes());
}

TEST(MessageBoxDocumentTest, AreQuotedInJapaneseToo) {
    const std::vector<Row> rows = TableWith(ReadFile(kDocument), "in Japanese").rows;
    EXPECT_EQ(rows.size(), TextsOfMessageBoxes().size());
    EXPECT_EQ(std::set(rows.begin(), rows.end()), TextsOfMessageBoxesInBothLanguages());
}

TEST(MessageBoxDocumentTest, HaveAMeaningAndButtons) {
    for (const Row& row : DocumentedMessages()) {
        ASSERT_EQ(row.size(), 4U) << row[0];
        EXPECT_FALSE(row[2].empty()) << row[0];
        const std::string expected = row[0] == TextOf("IDS_CONFIRM_DELETE")  ? "Yes, No"
                                     : row[0] == TextOf("IDS_CONFIRM_RESET") ? "OK, Cancel"
                                                                             : "OK";
        EXPECT_EQ(row[1], expected) << row[0];
    }
}

TEST(MessageBoxDocumentTest, CaptionIsQuoted) {
    const std::string document = ReadProse(kDocument);
    for (const StringRow& row : StringTable()) {
        if (row.name != "IDS_CAPTION") continue;
        EXPECT_NE(document.find("the caption \"" + row.english + '"'), std::string::npos);
        EXPECT_NE(document.find("the caption \"" + row.japanese + '"'), std::string::npos);
    }
}

TEST(MessageBoxDocumentTest, QuotesOfTheTextAreSentencesOfTheProgram) {
    static const std::regex quote("\"([^\"]+[.?])\"");
    const std::string document = ReadProse(kDocument);
    const std::set<std::string> texts = TextsOfMessageBoxes();
    for (std::sregex_iterator found(document.begin(), document.end(), quote), end; found != end; ++found) {
        EXPECT_TRUE(texts.contains((*found)[1])) << (*found)[1];
    }
}

}  // namespace
}  // namespace kvn::docs
