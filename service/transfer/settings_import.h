// Replaces a mouse model's settings with those of a file.
#pragma once

#include <functional>
#include <string>

#include "service/options/answer.h"

namespace kvn::service {

// Asks whether to import a file of another model. Called at most once.
using OtherModelQuestion = std::function<bool(const std::wstring& modelOfFile, const std::wstring& attachedModel)>;

// Imports the settings of the file at this full path for the published mouse: all of them, or nothing changes. The exit
// code is kOtherModel if the answer to the question was no. A running service has to read them afterwards.
Answer ImportSettings(const std::wstring& file, const OtherModelQuestion& isOtherModelWanted);

}  // namespace kvn::service
