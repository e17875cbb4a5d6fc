// Registry values about the attached mouse, of any length and content, give a plausible mouse or none.
#include <algorithm>

#include "model/device_record.h"
#include "tests/fuzz/fuzz_input.h"

using namespace kvn;

namespace {

// Fills a buffer as the registry does: from its beginning, with as many bytes as the value has.
template <typename Buffer>
void Fill(fuzz::FuzzInput& input, Buffer& buffer) {
    const std::size_t length = input.Number<std::uint16_t>();
    const auto bytes = input.Take(std::min(length, sizeof buffer));
    if (!bytes.empty()) std::memcpy(&buffer, bytes.data(), bytes.size());
}

model::PublishedDevice PublishedIn(fuzz::FuzzInput input) {
    model::PublishedDevice published;
    Fill(input, published.hasTilt);
    Fill(input, published.buttonCount);
    Fill(input, published.vid);
    Fill(input, published.pid);
    Fill(input, published.mouseFlag);
    Fill(input, published.mouseImage);
    return published;
}

bool IsWithoutZero(const std::wstring& text) {
    return text.find(L'\0') == std::wstring::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const model::PublishedDevice published = PublishedIn({data, size});
    const auto device = model::DeviceFromPublished(published);
    const bool isPlausible = published.hasTilt <= 1 && published.buttonCount <= 7;
    fuzz::Require(device.has_value() == isPlausible, "a mouse is read if its capabilities are in their ranges");
    if (!device) return 0;

    fuzz::Require(device->vid == published.vid && device->pid == published.pid &&
                      device->mouseFlag == published.mouseFlag && device->hasTilt == published.hasTilt &&
                      device->buttonCount == static_cast<std::int32_t>(published.buttonCount),
                  "numbers stay as they are");
    const std::wstring& image = device->mouseImage;
    fuzz::Require(image.size() <= model::kMaxMouseImageLength && IsWithoutZero(image), "a name ends at its zero");
    fuzz::Require(std::equal(image.begin(), image.end(), published.mouseImage.begin()), "a name is the stored one");
    fuzz::Require(image.size() == model::kMaxMouseImageLength || published.mouseImage[image.size()] == L'\0',
                  "a name is whole");
    return 0;
}
