#include "tests/service_faults/refused_program.h"

#include <windows.h>

#include <array>
#include <cwchar>

namespace kvn::test {
namespace {

// Runs before the program's main function.
const struct Refusal {
    Refusal() {
        std::array<wchar_t, 32> value{};
        if (GetEnvironmentVariableW(kRefusedVariable, value.data(), static_cast<DWORD>(value.size())) == 0) return;
        SetEnvironmentVariableW(kRefusedVariable, nullptr);
        const Whose whose = value.front() == L'f' ? Whose::This : Whose::Others;
        const int number = static_cast<int>(std::wcstol(std::wcschr(value.data(), L' '), nullptr, 10));
        const bool isFromThereOn = std::wcsstr(value.data(), L"all") != nullptr;
        (isFromThereOn ? RefusedMemory::RefuseFrom : RefusedMemory::RefuseOne)(whose, number);
    }
} refusal;

}  // namespace
}  // namespace kvn::test
