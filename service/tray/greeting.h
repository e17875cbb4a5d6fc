// The user's first start of the service.
#pragma once

namespace kvn::service {

// The value of the base key that records the first start; the page does not use it.
inline constexpr wchar_t kGreetedValue[] = L"ServiceGreeted";

// True once for each user.
bool IsFirstStart();

}  // namespace kvn::service
