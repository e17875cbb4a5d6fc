// The option with which the test program plays the browser that opens the help page.
#pragma once

namespace kvn::end_to_end {

inline constexpr char kRecordOpening[] = "--record-opening";

}  // namespace kvn::end_to_end
