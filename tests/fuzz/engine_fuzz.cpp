// Any history of a mouse and of changes around it: the service's engine answers as the second one does, and keeps its
// promises.
#include "tests/fuzz/fuzz_input.h"
#include "tests/service_engine/engine_comparison.h"
#include "tests/service_engine/input_maker.h"

using namespace kvn;

namespace {

// The second engine looks back at the whole history, so it must not be long.
constexpr int kLongest = 400;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    service::InputMaker maker([&](std::uint32_t below) {
        return below <= 0x100 ? input.Byte() % below : input.Number<std::uint32_t>() % below;
    });
    service::EngineComparison both;
    for (int count = 0; count < kLongest && !input.IsAtEnd(); ++count) {
        const std::string broken = both.Hear(maker.Next());
        fuzz::Require(broken.empty(), broken);
    }
    return 0;
}
