// Messages about files that cannot be read or written.
#pragma once

#include <string>

#include "model/profile_transfer.h"
#include "service/options/answer.h"

namespace kvn::service {

// The reason why nothing can be written to the path; never empty.
Answer WhyNotWritable(const std::wstring& path);
// Checks only for problems that can be seen beforehand.
bool IsWritable(const std::wstring& path);

Answer WhyNotReadable(const std::wstring& path);

// The problem in the file at this path.
Answer FaultOf(const model::ImportProblem& problem, const std::wstring& path);

}  // namespace kvn::service
