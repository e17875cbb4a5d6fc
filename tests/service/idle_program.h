// Shared by the tests and the idle program.
#pragma once

namespace kvn::service_test {

// The event that it sets once its libraries are loaded.
inline constexpr wchar_t kIdleProgramIsReady[] = L"Local\\KvnIdleProgramIsReady";

}  // namespace kvn::service_test
