// The settings that the service sends, of any length and content: eleven numbers in their ranges or none.
#include <vector>

#include "model/profile.h"
#include "tests/fuzz/fuzz_input.h"

using namespace kvn;

namespace {

constexpr std::size_t kNumberBytes = 4;

std::int32_t LittleEndian(const std::uint8_t* bytes) {
    std::uint32_t number = 0;
    for (std::size_t index = kNumberBytes; index-- > 0;) number = number << 8 | bytes[index];
    return static_cast<std::int32_t>(number);
}

// The ranges, written a second time.
bool IsGood(std::size_t index, std::int32_t number) {
    if (index == 5) return number >= 1 && number <= 8;
    return (number >= 0 && number <= 54) || (index == 10 && number == -2);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // At an odd address, since the record comes from another program.
    std::vector<std::uint8_t> shifted(size + 1);
    if (size > 0) std::memcpy(shifted.data() + 1, data, size);
    const auto values = model::InitialValuesFromRecord(std::as_bytes(std::span(shifted).subspan(1)));

    fuzz::Require(values.has_value() == (size >= kNumberBytes * model::kSettingFieldCount), "a whole record is read");
    if (!values) return 0;
    for (std::size_t index = 0; index < model::kSettingFieldCount; ++index) {
        const std::int32_t sent = LittleEndian(data + kNumberBytes * index);
        fuzz::Require(!IsGood(index, sent) || values->items[index] == sent, "a good number is taken");
        fuzz::Require(IsGood(index, values->items[index]), "an initial value is never out of its range");
    }
    return 0;
}
