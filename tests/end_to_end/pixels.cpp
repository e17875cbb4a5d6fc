#include "tests/end_to_end/pixels.h"

#include <algorithm>

#include "tests/end_to_end/process.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"

namespace kvn::end_to_end {
namespace {

// Stays loaded for the next reader.
HMODULE ProbeModule() {
    static const HMODULE module = LoadLibraryW((ProgramFolder() + kPixelProbeModule).c_str());
    if (module == nullptr) throw StoryError("pixel_probe.dll cannot be loaded");
    return module;
}

HOOKPROC ProbeProcedure() {
    return reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(ProbeModule(), kPixelHook)));
}

}  // namespace

std::size_t CountDifferences(const Pixels& left, const Pixels& right) {
    if (left.colours.size() != right.colours.size()) return std::max(left.colours.size(), right.colours.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < left.colours.size(); ++i) count += left.colours[i] != right.colours[i] ? 1U : 0U;
    return count;
}

PixelReader::PixelReader(HWND windowToRead)
    : window(windowToRead),
      mapping(
          CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(SharedPixels), kSharedPixels)) {
    if (mapping) shared = static_cast<SharedPixels*>(MapViewOfFile(mapping.Get(), FILE_MAP_WRITE, 0, 0, 0));
    if (shared == nullptr) throw StoryError("there is no memory for pixels");
    hook.Reset(
        SetWindowsHookExW(WH_CALLWNDPROC, ProbeProcedure(), ProbeModule(), GetWindowThreadProcessId(window, nullptr)));
    if (!hook) throw StoryError("the pixels of " + Describe(window) + " cannot be reached");
}

PixelReader::~PixelReader() {
    UnmapViewOfFile(shared);
}

Pixels PixelReader::Read() const {
    shared->width = 0;
    Send(window, RegisterWindowMessageW(kReadPixelsMessage));
    if (shared->width == 0) throw StoryError("the pixels of " + Describe(window) + " were not read");
    const auto count = static_cast<std::ptrdiff_t>(shared->width) * shared->height;
    return {shared->width, shared->height, {shared->pixels.begin(), shared->pixels.begin() + count}};
}

}  // namespace kvn::end_to_end
