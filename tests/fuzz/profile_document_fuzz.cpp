// Any bytes as a profile file: checked profiles or none; profiles that were read are written and read again without
// loss.
#include <algorithm>

#include "model/profile_document.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/written_document.h"
#include "tests/model/checked_profiles.h"
#include "tests/model/test_codecs.h"

using namespace kvn;

namespace {

constexpr wchar_t kHeading[] = L"Arbitrary key";

model::ProfileSet Loaded(const std::string& document, const model::TextCodec& codec) {
    return model::ParseProfileDocument(document, model::DefaultProfileRecord(), {codec, kHeading});
}

// A text has only the used keys.
model::EtcKey WithoutGaps(const model::EtcKey& keys) {
    model::EtcKey packed;
    std::copy_if(keys.codes.begin(), keys.codes.end(), packed.codes.begin(),
                 [](model::KeyCode code) { return code != model::kNoKey && code != model::kPromptKey; });
    return packed;
}

// The profiles as a file stores them: with one set of ids and one selection for all.
model::ProfileSet Storable(model::ProfileSet profiles) {
    for (model::ProfileRecord& record : profiles) {
        record.vid = profiles.front().vid;
        record.pid = profiles.front().pid;
        record.selectedIndex = profiles.front().selectedIndex;
        for (model::EtcKey& keys : record.settings.etcKeys.items) keys = WithoutGaps(keys);
        for (model::GestureEntry& gesture : record.settings.gestures) gesture.etcKey = WithoutGaps(gesture.etcKey);
    }
    return profiles;
}

// Windows counts a character beyond the first 65536 as two, and so do the file's limits.
bool IsNarrow(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t character) { return character <= 0xFFFF; });
}

bool HasNarrowTexts(const model::ProfileRecord& record) {
    const auto& programs = record.settings.applications;
    const auto& gestures = record.settings.gestures;
    return IsNarrow(record.name) &&
           std::all_of(programs.begin(), programs.end(),
                       [](const auto& program) { return IsNarrow(program.name) && IsNarrow(program.path); }) &&
           std::all_of(gestures.begin(), gestures.end(),
                       [](const auto& gesture) { return IsNarrow(gesture.stroke) && IsNarrow(gesture.memo); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const model::test::LatinCodec latin;
    static const model::test::DoubleByteCodec doubleByte;
    fuzz::FuzzInput input(data, size);
    // The first byte, a character that can be typed, chooses the code page.
    const model::TextCodec& codec = input.Byte() % 2 == 0 ? static_cast<const model::TextCodec&>(latin) : doubleByte;
    const model::ProfileSet profiles = Loaded(input.Bytes(), codec);
    const std::string fault = model::test::FaultOf(profiles);
    fuzz::Require(fault.empty(), fault);
    if (profiles.empty() || !std::all_of(profiles.begin(), profiles.end(), HasNarrowTexts)) return 0;

    const std::string written = fuzz::Written(profiles, codec);
    const model::ProfileSet again = Loaded(written, codec);
    fuzz::Require(again == Storable(profiles), "profiles come back from their file");
    fuzz::Require(fuzz::Written(again, codec) == written, "what is read again is written alike");
    return 0;
}
