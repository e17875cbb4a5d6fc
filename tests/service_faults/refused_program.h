// The service's whole program, in which a test can refuse memory.
#pragma once

#include <string>

#include "tests/service_faults/refused_memory.h"

namespace kvn::test {

// The environment variable for this. The program removes it, so that the programs that it starts have all memory.
inline constexpr wchar_t kRefusedVariable[] = L"KVN_REFUSED_MEMORY";

// Its value: the affected threads (the first one counts as the test's own), the number of the allocation, and whether
// all later ones are refused too.
inline std::wstring RefusalText(Whose whose, int number, bool isFromThereOn) {
    return (whose == Whose::This ? L"first " : L"others ") + std::to_wstring(number) + (isFromThereOn ? L" all" : L"");
}

}  // namespace kvn::test
