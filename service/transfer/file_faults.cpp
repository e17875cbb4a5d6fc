#include "service/transfer/file_faults.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "model/enum_array.h"
#include "model/file_replacement.h"
#include "model/xml_guard.h"
#include "platform/item_limit.h"
#include "platform/number_text.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

using model::ImportFault;

constexpr std::size_t kMaxShownLength = 80;

constexpr model::EnumArray<ImportFault, unsigned, 8> kTexts{
    {IDS_FAULT_FILE_BROKEN, IDS_FAULT_FILE_FOREIGN, IDS_FAULT_IMPORT_MISSING, IDS_FAULT_IMPORT_TWICE,
     IDS_FAULT_IMPORT_NUMBER, IDS_FAULT_IMPORT_TEXT, IDS_FAULT_IMPORT_TOO_MANY, IDS_FAULT_IMPORT_NAME}};

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsInFolder(const std::wstring& path) {
    return IsFolder(path.substr(0, path.find_last_of(L"\\/") + 1));
}

bool IsTooLarge(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return false;
    return data.nFileSizeHigh != 0 || data.nFileSizeLow > model::kMaxXmlBytes;
}

// Puts the text on one line and limits its length, since it may come from anywhere.
std::wstring Shown(std::wstring text) {
    text.resize(std::min(text.size(), kMaxShownLength));
    return OnOneLine(std::move(text));
}

std::wstring PlaceOf(const model::ImportProblem& problem) {
    if (problem.profile == 0) return problem.element;
    const std::wstring name = Shown(problem.profileName);
    return Text(IDS_PLACE_IN_PROFILE, problem.element,
                name.empty() ? platform::NumberText(static_cast<int>(problem.profile)) : name);
}

}  // namespace

bool IsWritable(const std::wstring& path) {
    return !IsFolder(path) && IsInFolder(path) && !model::IsReadOnly(path);
}

Answer WhyNotWritable(const std::wstring& path) {
    if (IsFolder(path)) return Fault(IDS_FAULT_IS_FOLDER, path);
    if (!IsInFolder(path)) return Fault(IDS_FAULT_NO_FOLDER, path);
    if (model::IsReadOnly(path)) return Fault(IDS_FAULT_FILE_READ_ONLY, path);
    return Fault(IDS_FAULT_FILE_NOT_WRITTEN, path);
}

Answer WhyNotReadable(const std::wstring& path) {
    if (IsFolder(path)) return Fault(IDS_FAULT_IS_FOLDER, path);
    if (model::IsMissing(path)) return Fault(IDS_FAULT_FILE_MISSING, path);
    return Fault(IsTooLarge(path) ? IDS_FAULT_FILE_TOO_LARGE : IDS_FAULT_FILE_UNREADABLE, path);
}

Answer FaultOf(const model::ImportProblem& problem, const std::wstring& path) {
    const unsigned textId = kTexts[problem.fault];
    switch (problem.fault) {
        case ImportFault::Broken:
        case ImportFault::Foreign:
            return Fault(textId, path);
        case ImportFault::NameIsTaken:
            return Fault(textId, Shown(problem.profileName));
        case ImportFault::TooManyItems:
            return Fault(textId, PlaceOf(problem), platform::NumberText(platform::kItemLimit));
        default:
            return Fault(textId, PlaceOf(problem), Shown(problem.value));
    }
}

}  // namespace kvn::service
