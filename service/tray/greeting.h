// The first start of the service by this user.
#pragma once

namespace kvn::service {

// The value of the base key that records it; the page does not know it.
inline constexpr wchar_t kGreetedValue[] = L"ServiceGreeted";

// True once for each user.
bool IsFirstStart();

}  // namespace kvn::service
