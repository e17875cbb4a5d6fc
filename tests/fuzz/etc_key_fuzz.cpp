// Any text gives keys of the table, which come back from their own text; and the text of any keys is read back, except
// for the three keys whose names contain separators.
#include <algorithm>

#include "model/etc_key.h"
#include "tests/fuzz/fuzz_input.h"

using namespace kvn;

namespace {

constexpr std::wstring_view kHeading = L"Arbitrary key";

bool IsInTable(model::KeyCode code) {
    return code == model::kNoKey || model::KeyNameOf(code) != nullptr;
}

// Whether the name contains a separator.
bool Separates(model::KeyCode code) {
    return code == 107 || code == 219 || code == 221;
}

bool IsAnyShift(model::KeyCode code) {
    return code == 16 || code == 160 || code == 161;
}

// The keys as in a text: without gaps, the prompt and codes that name no key.
model::EtcKey WithoutGaps(const model::EtcKey& keys) {
    model::EtcKey packed;
    std::copy_if(keys.codes.begin(), keys.codes.end(), packed.codes.begin(),
                 [](model::KeyCode code) { return code != model::kPromptKey && model::KeyNameOf(code) != nullptr; });
    return packed;
}

void RequireReadBack(const model::EtcKey& keys) {
    const std::wstring text = model::EtcKeyToText(keys);
    fuzz::Require(model::TextToEtcKey(text, kHeading) == WithoutGaps(keys), "keys come back from their text");
    fuzz::Require(model::TextToEtcKey(model::ArbitraryKeyLabel(kHeading, keys), kHeading) == WithoutGaps(keys),
                  "keys come back from their label");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    const bool hasHeading = input.Byte() % 2 == 0;
    const model::EtcKey chosen{{input.Byte() - 2, input.Byte() - 2, input.Number<std::int32_t>()}};
    if (std::none_of(chosen.codes.begin(), chosen.codes.end(), Separates)) RequireReadBack(chosen);

    const model::EtcKey read = model::TextToEtcKey(input.Text(), hasHeading ? kHeading : std::wstring_view());
    fuzz::Require(std::all_of(read.codes.begin(), read.codes.end(), IsInTable), "a text gives keys of the table");
    fuzz::Require(std::none_of(read.codes.begin(), read.codes.end(), Separates), "a separating name is never read");
    RequireReadBack(read);
    for (const model::EtcKey& keys : {chosen, read}) {
        model::EtcKey expected = keys;
        std::replace_if(expected.codes.begin(), expected.codes.end(), IsAnyShift, model::kNoKey);
        fuzz::Require(model::WithoutShiftKeys(keys) == expected, "the Shift keys are removed, and nothing else");
    }
    return 0;
}
