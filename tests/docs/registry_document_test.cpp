// docs/registry.md, docs/function-codes.md and docs/key-names.md agree with the code.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <regex>
#include <set>

#include "model/etc_key.h"
#include "model/function_catalogue.h"
#include "model/key_names.h"
#include "model/profile.h"
#include "model/registry_changes.h"
#include "model/registry_values.h"
#include "model/setting_field.h"
#include "tests/docs/documents.h"

namespace kvn::docs {
namespace {

using model::RegistryType;
using model::RegistryValue;

using Values = std::vector<std::pair<std::string, std::string>>;  // name and type

std::string NameOf(RegistryValue value) {
    return Narrow(RowOf(value).name);
}

std::string TypeOf(RegistryValue value) {
    switch (RowOf(value).type) {
        case RegistryType::String:
            return "REG_SZ";
        case RegistryType::Dword:
            return "REG_DWORD";
        case RegistryType::MultiString:
            return "REG_MULTI_SZ";
    }
    return "unknown";
}

Values Described(const std::vector<RegistryValue>& values) {
    Values described;
    for (const RegistryValue value : values) described.emplace_back(NameOf(value), TypeOf(value));
    return described;
}

std::string RegistryDocument() {
    return ReadFile("docs/registry.md");
}

std::string RegistryProse() {
    return ReadProse("docs/registry.md");
}

// The published values, those that the page writes, and the reserved names.
enum TableIndex { kPublished, kWritten, kReserved };

Table TableOfValues(TableIndex index) {
    return TableWith(RegistryDocument(), "value", index);
}

std::string RangeOf(model::SettingField field) {
    const model::SettingFieldRow& row = RowOf(field);
    return std::to_string(row.minimum) + " to " + std::to_string(row.maximum);
}

// The values that an apply writes if all of them differ.
std::vector<RegistryValue> OrderOfApply() {
    const model::ProfileSettings before = model::DefaultProfileRecord().settings;
    model::ProfileSettings after = before;
    for (std::int32_t& number : after.values.items) ++number;
    for (model::EtcKey& keys : after.etcKeys.items) keys.codes[0] = 'A';
    after.gestures.emplace_back();
    after.applications.emplace_back();
    std::vector<RegistryValue> order;
    for (const model::RegistryWrite& write : ChangedValues(before, after)) order.push_back(write.value);
    return order;
}

TEST(RegistryDocumentTest, NamesTheValuesOfAnApplyInTheirOrder) {
    EXPECT_EQ(TableOfValues(kWritten).Columns("value", "type"), Described(OrderOfApply()));
}

TEST(RegistryDocumentTest, NamesTheRangesOfTheNumbers) {
    using enum model::SettingField;
    const auto ranges = TableOfValues(kWritten).Columns("value", "range");
    const std::map<std::string, std::string> rangeOfValue(ranges.begin(), ranges.end());
    // The sliders of flying scroll allow less than storage does. For them the document gives the sliders' ranges.
    for (const auto field : {Left, Right, Center, Button4, Button5, HorizontalScrollSpeed, TiltLeft, TiltRight}) {
        const std::string name = NameOf(RowOf(field).registryValue);
        EXPECT_EQ(rangeOfValue.at(name), RangeOf(field)) << name;
    }
}

TEST(RegistryDocumentTest, NamesThePublishedValuesInTheOrderOfReading) {
    static const std::regex reading("RegistryValue::(\\w+)");
    const std::string source = ReadFile("model/registry_access.cpp");
    const std::size_t begin = source.find("const bool read =");
    const std::string statement = source.substr(begin, source.find(';', begin) - begin);
    std::vector<std::string> read;
    for (std::sregex_iterator found(statement.begin(), statement.end(), reading), end; found != end; ++found) {
        read.push_back((*found)[1]);
    }
    using enum RegistryValue;
    const std::array<std::pair<const char*, RegistryValue>, 6> enumerators{{{"HasTilt", HasTilt},
                                                                            {"ButtonCount", ButtonCount},
                                                                            {"Vid", Vid},
                                                                            {"Pid", Pid},
                                                                            {"MouseImage", MouseImage},
                                                                            {"MouseFlag", MouseFlag}}};
    std::vector<RegistryValue> order;
    for (const std::string& name : read) {
        for (const auto& [enumerator, value] : enumerators) {
            if (name == enumerator) order.push_back(value);
        }
    }
    ASSERT_EQ(order.size(), enumerators.size());
    EXPECT_EQ(TableOfValues(kPublished).Columns("value", "type"), Described(order));
}

TEST(RegistryDocumentTest, NamesEveryValueOfTheTableOnce) {
    Values documented;
    for (const TableIndex index : {kPublished, kWritten, kReserved}) {
        const Values values = TableOfValues(index).Columns("value", "type");
        documented.insert(documented.end(), values.begin(), values.end());
    }
    std::vector<RegistryValue> all;
    for (const model::RegistryValueRow& row : model::kRegistryValues) all.push_back(row.value);
    const Values expected = Described(all);
    EXPECT_EQ(documented.size(), expected.size());
    EXPECT_EQ(std::set(documented.begin(), documented.end()), std::set(expected.begin(), expected.end()));
}

TEST(RegistryDocumentTest, NamesTheNumbersOfANewModelInTheirOrder) {
    std::string sentence;
    for (const model::RegistryWrite& write : model::AllNumbers({})) {
        sentence += (sentence.empty() ? "`" : ", `") + NameOf(write.value) + '`';
    }
    EXPECT_NE(RegistryProse().find(sentence + ", in this order"), std::string::npos) << sentence;
}

TEST(RegistryDocumentTest, NamesTheKeys) {
    const Table keys = TableWith(RegistryDocument(), "key");
    const std::string modelKey = Narrow(model::kBaseKey) + "\\VIDvvvvPIDpppp";
    EXPECT_EQ(keys.Column("key"),
              (std::vector<std::string>{Narrow(model::kBaseKey), modelKey, Narrow(model::kDefaultBindKey)}));
    EXPECT_NE(RegistryProse().find('`' + Narrow(model::MouseModelName(0x1234, 0x5678)) + '`'), std::string::npos);
    EXPECT_NE(RegistryProse().find('`' + Narrow(model::kDefaultCenterValue) + '`'), std::string::npos);
}

TEST(RegistryDocumentTest, ExplainsHowAListIsStored) {
    EXPECT_EQ(model::GesturesToMultiString({}).size() * 2, 2U);
    EXPECT_NE(RegistryProse().find("empty list is that one null: 2 bytes"), std::string::npos);
}

TEST(FunctionCodesDocumentTest, AreThoseOfTheCatalogue) {
    std::map<std::string, std::string> expected;
    const std::string resources = ReadFile("resources/resource.h");
    for (const model::CatalogueRow& row : model::kFunctionCatalogue) {
        const std::regex definition("#define (IDS_\\w+) " + std::to_string(row.textId) + "\\b");
        std::smatch found;
        ASSERT_TRUE(std::regex_search(resources, found, definition)) << row.textId;
        const std::string text = TextOf(found[1]);
        expected[std::to_string(row.code)] = text == " " ? "(blank)" : text;
    }
    const auto rows = TableWith(ReadFile("docs/function-codes.md"), "code").Columns("code", "function");
    EXPECT_EQ(rows.size(), expected.size());
    EXPECT_EQ((std::map<std::string, std::string>(rows.begin(), rows.end())), expected);
}

// "0 to 54, or -2"
std::string FileRangeOf(const model::SettingFieldRow& row) {
    const std::string range = RangeOf(row.field);
    return row.mayBeUnset ? range + ", or " + std::to_string(model::kUnsetValue) + ", \"Invalid\"" : range;
}

TEST(ProfileFileDocumentTest, NamesTheElementOfEveryNumber) {
    std::map<std::string, std::pair<std::string, std::string>> documented;
    for (const Row& row : TableWith(ReadFile("docs/profile-file.md"), "element").rows) {
        static const std::regex word("\\w+");
        std::sregex_iterator value(row[1].begin(), row[1].end(), word);
        for (std::sregex_iterator name(row[0].begin(), row[0].end(), word), end; name != end; ++name) {
            documented[name->str()] = {value == end ? "" : (value++)->str(), row[2]};
        }
    }
    for (const model::SettingFieldRow& row : model::kSettingFields) {
        const auto expected = std::pair(NameOf(row.registryValue), FileRangeOf(row));
        EXPECT_EQ(documented[row.fileElement], expected) << row.fileElement;
    }
}

TEST(KeyNamesDocumentTest, AreThoseOfTheTableInItsOrder) {
    std::vector<Row> expected;
    for (const model::KeyNameRow& row : model::kKeyNameTable) {
        std::array<char, 8> hex{};
        std::snprintf(hex.data(), hex.size(), "0x%02x", static_cast<unsigned>(row.code));
        expected.push_back({std::to_string(row.code), hex.data(), Narrow(row.name), row.listed ? "yes" : "no"});
    }
    EXPECT_EQ(TableWith(ReadFile("docs/key-names.md"), "code").rows, expected);
}

TEST(KeyNamesDocumentTest, SaysWhatIsLeftOfKeysWhoseNamesSeparate) {
    const Table table = TableWith(ReadFile("docs/key-names.md"), "stored");
    EXPECT_FALSE(table.rows.empty());
    for (const auto& [stored, read] : table.Columns("stored", "what the page reads when it is opened again")) {
        const std::wstring text(stored.begin(), stored.end());
        EXPECT_EQ(Narrow(model::EtcKeyToText(model::TextToEtcKey(text, L"Arbitrary key"))), read) << stored;
    }
}

}  // namespace
}  // namespace kvn::docs
