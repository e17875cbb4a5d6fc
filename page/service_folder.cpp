#include "page/service_folder.h"

#include <windows.h>

#include "platform/service_messages.h"
#include "platform/window_program.h"

namespace kvn::page {
namespace {

constexpr DWORD kMaxModulePath = 540;

}  // namespace

std::wstring ServiceFolder() {
    const std::wstring program = platform::ProgramOfWindow(platform::FindService(), kMaxModulePath);
    const std::size_t end = program.find(platform::kServiceName);
    return end == std::wstring::npos ? std::wstring() : program.substr(0, end);
}

}  // namespace kvn::page
