// What is wrong with a file that cannot be read or written, in words.
#pragma once

#include <string>

#include "model/profile_transfer.h"
#include "service/options/answer.h"

namespace kvn::service {

// Why nothing can be written to the path; an answer in any case.
Answer WhyNotWritable(const std::wstring& path);
// Whether something is in the way that can be seen beforehand.
bool IsWritable(const std::wstring& path);

Answer WhyNotReadable(const std::wstring& path);

// The problem in the file at this path.
Answer FaultOf(const model::ImportProblem& problem, const std::wstring& path);

}  // namespace kvn::service
