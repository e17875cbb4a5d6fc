#include "service/options/help_text.h"

#include "model/enum_array.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

constexpr std::size_t kHelpColumn = 30;

constexpr model::EnumArray<UsageFault, unsigned, 6> kFaultTexts{{IDS_FAULT_UNKNOWN_OPTION, IDS_FAULT_VALUE_MISSING,
                                                                 IDS_FAULT_VALUE_BAD, IDS_FAULT_QUIT_STANDS_ALONE,
                                                                 IDS_FAULT_STANDS_ALONE, IDS_FAULT_YES_WITHOUT_IMPORT}};

// A long option has its explanation on the next line.
std::wstring OptionLine(const OptionHelp& option) {
    std::wstring line = L"  " + std::wstring(option.name);
    if (!option.valueName.empty()) line += L' ' + std::wstring(option.valueName);
    if (line.size() + 2 > kHelpColumn) line += L'\n' + std::wstring(kHelpColumn, L' ');
    const std::size_t start = line.rfind(L'\n') + 1;
    if (line.size() - start < kHelpColumn) line.append(kHelpColumn - (line.size() - start), L' ');
    return line + Text(option.textId) + L'\n';
}

}  // namespace

std::wstring HelpText() {
    std::wstring text = L"KvnMouseApl [OPTIONS]\n\n" + Text(IDS_USAGE) + L"\n\n";
    for (const OptionHelp& option : ListedOptions()) text += OptionLine(option);
    return text;
}

std::wstring ErrorText(const UsageError& error) {
    return Text(kFaultTexts[error.fault], error.option, error.value) + L'\n';
}

}  // namespace kvn::service
