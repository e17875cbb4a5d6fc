// Settings from a file in the place of a mouse model's own.
#pragma once

#include <functional>
#include <string>

#include "service/options/answer.h"

namespace kvn::service {

// Whether a file of another model is wanted too: its answer, or its refusal when the user says no. Called once at most.
using OtherModelQuestion = std::function<bool(const std::wstring& modelOfFile, const std::wstring& attachedModel)>;

// Takes the settings of the file at this full path for the published mouse: all of them, or nothing changes. The exit
// code is kOtherModel when the question was answered with no. A running service has to read them afterwards.
Answer ImportSettings(const std::wstring& file, const OtherModelQuestion& isOtherModelWanted);

}  // namespace kvn::service
