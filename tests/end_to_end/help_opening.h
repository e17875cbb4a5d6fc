// The option with which the test program plays the browser that a help page is opened in.
#pragma once

namespace kvn::end_to_end {

inline constexpr char kRecordOpening[] = "--record-opening";

}  // namespace kvn::end_to_end
