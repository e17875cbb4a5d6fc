// Any bytes as a file to import: a problem, or profiles that keep every rule. Imported profiles are exported and
// imported again without loss, under another code page too.
#include <algorithm>
#include <variant>

#include "model/ascii_codec.h"
#include "model/profile_transfer.h"
#include "platform/item_limit.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/written_document.h"
#include "tests/model/checked_profiles.h"
#include "tests/model/test_codecs.h"

using namespace kvn;

namespace {

constexpr wchar_t kHeading[] = L"Arbitrary key";

model::ProfileSet Imported(const std::string& document, const model::TextCodec& codec) {
    auto import = model::ParseImport(document, model::DefaultProfileRecord(), {codec, kHeading});
    auto* const profiles = std::get_if<model::ProfileSet>(&import);
    return profiles == nullptr ? model::ProfileSet{} : std::move(*profiles);
}

std::string Exported(const model::ProfileSet& profiles) {
    return fuzz::Written(profiles, model::AsciiCodec());
}

bool HasRoom(std::size_t count) {
    return count <= static_cast<std::size_t>(platform::kItemLimit);
}

void RequireRules(const model::ProfileSet& profiles) {
    const std::string fault = model::test::FaultOf(profiles);
    fuzz::Require(fault.empty(), fault);
    fuzz::Require(HasRoom(profiles.size()), "there are not too many profiles");
    const auto selected = static_cast<std::size_t>(profiles.front().selectedIndex);
    fuzz::Require(selected < profiles.size(), "a profile is selected");
    for (const model::ProfileRecord& record : profiles) {
        const model::ProfileSettings& settings = record.settings;
        fuzz::Require(!record.name.empty(), "a profile has a name");
        fuzz::Require(HasRoom(settings.applications.size()) && HasRoom(settings.gestures.size()), "lists have room");
        fuzz::Require(std::ranges::all_of(settings.gestures,
                                          [](const model::GestureEntry& gesture) {
                                              return gesture.function >= model::kFunctionNone &&
                                                     gesture.function <= model::kMaxFunctionCode;
                                          }),
                      "a gesture has a function");
        fuzz::Require(model::CheckedSettings(settings.values) == settings.values, "numbers are in their ranges");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const model::test::LatinCodec latin;
    static const model::test::DoubleByteCodec doubleByte;
    fuzz::FuzzInput input(data, size);
    // The first byte, a character that can be typed, chooses the code page.
    const bool isLatin = input.Byte() % 2 == 0;
    const model::TextCodec& codec = isLatin ? static_cast<const model::TextCodec&>(latin) : doubleByte;
    const model::TextCodec& other = isLatin ? static_cast<const model::TextCodec&>(doubleByte) : latin;
    const model::ProfileSet profiles = Imported(input.Bytes(), codec);
    if (profiles.empty()) return 0;

    RequireRules(profiles);
    fuzz::Require(!model::WhyNotImportable(profiles), "what was imported can be imported again");
    const std::string exported = Exported(profiles);
    fuzz::Require(std::ranges::all_of(exported, [](char byte) { return byte > 0; }), "an export is in ASCII");
    const model::ProfileSet again = Imported(exported, other);
    fuzz::Require(!again.empty() && Exported(again) == exported, "an export is taken without loss");
    return 0;
}
