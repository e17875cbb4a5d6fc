// docs/service-protocol.md agrees with the code.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <regex>
#include <utility>
#include <vector>

#include "model/profile.h"
#include "model/setting_field.h"
#include "model/stroke_recogniser.h"
#include "platform/service_protocol.h"
#include "tests/docs/documents.h"

namespace kvn::docs {
namespace {

std::string ProtocolDocument() {
    return ReadFile("docs/service-protocol.md");
}

std::string ProtocolProse() {
    return ReadProse("docs/service-protocol.md");
}

// The lines between the braces of an enumeration of the protocol's header.
std::string BodyOf(const std::string& enumeration) {
    const std::string header = ReadFile("platform/service_protocol.h");
    const std::size_t begin = header.find('{', header.find("enum class " + enumeration));
    return header.substr(begin, header.find("};", begin) - begin);
}

TEST(ServiceProtocolDocumentTest, NamesTheMessagesAsTheHeaderDoes) {
    static const std::regex enumerator("(\\w+) = (0x[0-9a-f]+), *// (sent|posted)");
    const std::string body = BodyOf("ServiceMessage");
    std::vector<Row> expected;
    for (std::sregex_iterator found(body.begin(), body.end(), enumerator), end; found != end; ++found) {
        expected.push_back(
            {(*found)[1], std::to_string(std::stoi((*found)[2], nullptr, 16)), (*found)[2], (*found)[3]});
    }
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(std::count(body.begin(), body.end(), '=')));

    std::vector<Row> documented;
    for (const Row& row : TableWith(ProtocolDocument(), "name").rows) {
        documented.emplace_back(row.begin(), row.begin() + 4);
        EXPECT_EQ(row[4], "0") << "wParam of " << row[0];
        EXPECT_EQ(row[5], row[0] == "IsButtonHeld" ? "one button" : "0") << "lParam of " << row[0];
        EXPECT_EQ(row[6].empty(), row[3] == "posted") << "reply of " << row[0];
    }
    EXPECT_EQ(documented, expected);
}

TEST(ServiceProtocolDocumentTest, NamesTheRefusal) {
    const Table messages = TableWith(ProtocolDocument(), "name");
    EXPECT_EQ(messages.rows.at(1).at(6).find(std::to_string(platform::kProbeRefused) + ":"), 0U);
}

TEST(ServiceProtocolDocumentTest, NamesTheButtonsAsTheHeaderDoes) {
    static const std::regex enumerator("(\\w+) = (\\d+)");
    const std::string body = BodyOf("ServiceButton");
    std::vector<Row> expected;
    for (std::sregex_iterator found(body.begin(), body.end(), enumerator), end; found != end; ++found) {
        expected.push_back({(*found)[1], (*found)[2]});
    }
    EXPECT_EQ(TableWith(ProtocolDocument(), "button").rows, expected);
}

TEST(ServiceProtocolDocumentTest, NamesTheTitleOfTheWindow) {
    const std::wstring title = platform::kServiceName;
    EXPECT_NE(ProtocolProse().find("titled `" + std::string(title.begin(), title.end()) + '`'), std::string::npos);
}

class RecordDocumentTest : public testing::Test {
protected:
    static Table Offsets() { return TableWith(ProtocolDocument(), "offset"); }

    // The page's values from a record in which only the number at this offset is out of range.
    static model::SettingValues ValuesWithFaultAt(std::size_t offset) {
        std::vector<std::byte> record(kSize);
        for (std::size_t place = 0; place < kSize; place += sizeof(std::int32_t)) {
            const std::int32_t number = place == offset ? 1000 : kGood;
            std::memcpy(record.data() + place, &number, sizeof number);
        }
        return model::InitialValuesFromRecord(record).value();
    }

    static constexpr std::int32_t kGood = 7;  // in every range, and no field's default
    static constexpr std::size_t kSize = model::kSettingFieldCount * sizeof(std::int32_t);
};

TEST_F(RecordDocumentTest, NamesTheOffsetOfEveryField) {
    std::size_t index = 0;
    for (const auto& [offset, value] : Offsets().Columns("offset", "value in the registry")) {
        ASSERT_LT(index, model::kSettingFieldCount);
        const model::SettingFieldRow& row = model::kSettingFields[index++];
        const std::wstring name = RowOf(row.registryValue).name;
        EXPECT_EQ(value, std::string(name.begin(), name.end()));
        const model::SettingValues values = ValuesWithFaultAt(std::stoul(offset));
        for (const model::SettingFieldRow& each : model::kSettingFields) {
            EXPECT_EQ(values[each.field], each.field == row.field ? row.defaultValue : kGood) << value;
        }
    }
    EXPECT_EQ(index, model::kSettingFieldCount);
}

TEST_F(RecordDocumentTest, NamesTheRangeOfEveryField) {
    std::vector<std::string> expected;
    for (const model::SettingFieldRow& row : model::kSettingFields) {
        expected.push_back(std::to_string(row.minimum) + " to " + std::to_string(row.maximum) +
                           (row.mayBeUnset ? ", or " + std::to_string(model::kUnsetValue) : ""));
    }
    EXPECT_EQ(Offsets().Column("range"), expected);
}

TEST_F(RecordDocumentTest, NamesTheSizeAndTheEffectOfAShorterRecord) {
    EXPECT_NE(ProtocolProse().find("`cbData` is " + std::to_string(kSize) + '.'), std::string::npos);
    EXPECT_TRUE(model::InitialValuesFromRecord(std::vector<std::byte>(kSize + 1)).has_value());
    EXPECT_FALSE(model::InitialValuesFromRecord(std::vector<std::byte>(kSize - 1)).has_value());
}

// The value of a constant in a source file.
std::string Constant(const std::string& path, const std::string& name) {
    const std::string source = ReadFile(path);
    const std::regex definition(name + " = (\\d+);");
    std::smatch found;
    return std::regex_search(source, found, definition) ? found[1].str() : name + " is not in " + path;
}

TEST(ServiceProtocolDocumentTest, NamesTheTimesOfTheCode) {
    const std::string attempts = Constant("model/registry_access.cpp", "kReadAttempts");
    const std::string pause = Constant("model/registry_access.cpp", "kReadRetryMilliseconds");
    const std::string interval = Constant("gestures/gesture_edit_dialog.cpp", "kCaptureInterval");
    const std::string document = ProtocolProse();
    EXPECT_NE(document.find("up to " + attempts + " reads, " + pause + " ms apart"), std::string::npos)
        << attempts << ' ' << pause;
    EXPECT_NE(document.find("every " + interval + " ms while"), std::string::npos) << interval;
    EXPECT_NE(document.find("timer of " + interval + " ms"), std::string::npos) << interval;
}

// "(0,0) (60,-5)" as places.
std::vector<model::ScreenPoint> Places(const std::string& text) {
    static const std::regex place("\\((-?\\d+),(-?\\d+)\\)");
    std::vector<model::ScreenPoint> places;
    for (std::sregex_iterator found(text.begin(), text.end(), place), end; found != end; ++found) {
        places.push_back({std::stoi((*found)[1]), std::stoi((*found)[2])});
    }
    return places;
}

std::string LettersOf(const std::vector<model::ScreenPoint>& places) {
    model::StrokeRecogniser recogniser;
    for (const model::ScreenPoint& place : places) recogniser.Take({place, true});
    const model::GestureNotice notice = recogniser.Take({places.back(), false}).value();
    std::string letters;
    for (std::int32_t i = 0; i < notice.count; ++i) {
        letters += "?URDL"[static_cast<std::size_t>(notice.directions[static_cast<std::size_t>(i)])];
    }
    return letters;
}

TEST(ServiceProtocolDocumentTest, RecognisesTheStrokesOfItsTableAsTheCodeDoes) {
    const Table strokes = TableWith(ProtocolDocument(), "positions, one every 100 ms");
    EXPECT_GE(strokes.rows.size(), 6U);
    for (const Row& row : strokes.rows) EXPECT_EQ(LettersOf(Places(row[0])), row[1]) << row[0];
}

TEST(ServiceProtocolDocumentTest, NamesTheValuesOfANewProfile) {
    const auto documented = TableWith(ProtocolDocument(), "value").Columns("value", "in a new profile");
    const model::ProfileRecord record = model::DefaultProfileRecord();
    for (const model::SettingFieldRow& row : model::kSettingFields) {
        const std::wstring name = RowOf(row.registryValue).name;
        const std::string value = std::to_string(record.settings[row.field]);
        const auto line = std::ranges::find(documented, std::string(name.begin(), name.end()),
                                            &std::pair<std::string, std::string>::first);
        ASSERT_NE(line, documented.end()) << value;
        EXPECT_EQ(line->second.substr(0, line->second.find(',')), value);
    }
}

}  // namespace
}  // namespace kvn::docs
