#include "service/transfer/settings_export.h"

#include <utility>

#include "model/file_replacement.h"
#include "model/profile_file.h"
#include "model/profile_transfer.h"
#include "model/registry_access.h"
#include "model/registry_values.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"
#include "service/transfer/file_faults.h"
#include "service/transfer/mouse_model.h"

namespace kvn::service {
namespace {

model::ProfileSet ExportableOf(model::ProfileSet profiles, const MouseModel& mouse) {
    profiles = model::Exportable(std::move(profiles), model::InitialValuesOf(model::NewProfileRecord()));
    profiles.front().vid = static_cast<std::uint16_t>(mouse.vid);
    profiles.front().pid = static_cast<std::uint16_t>(mouse.pid);
    return profiles;
}

Answer Export(const model::ProfileSet& profiles, const std::wstring& file) {
    // A file that cannot be imported is no backup.
    if (const auto problem = model::WhyNotImportable(profiles)) return FaultOf(*problem, file);
    if (!IsWritable(file) || !model::ExportProfileFile(file, profiles)) return WhyNotWritable(file);
    return {kDone, Text(IDS_BALLOON_EXPORTED, file) + L'\n'};
}

}  // namespace

Answer ExportSettings(const std::wstring& file) {
    const auto mouse = PublishedModel();
    if (!mouse) return Fault(IDS_FAULT_NO_MOUSE_KNOWN);
    const std::wstring source = ProfileFilePath(*mouse);
    model::FinishOrRemoveInterruptedSave(source);
    model::ProfileSet profiles;
    if (model::LoadProfileFile(source, profiles) > 0) return Export(ExportableOf(std::move(profiles), *mouse), file);
    if (model::IsMissing(source)) return Fault(IDS_FAULT_NOTHING_TO_EXPORT);
    return Fault(IDS_FAULT_PROFILES_UNREADABLE, source);
}

std::wstring SuggestedExportName() {
    const auto mouse = PublishedModel();
    return (mouse ? model::MouseModelName(mouse->vid, mouse->pid) : std::wstring(L"Mouse")) + L"-settings.xml";
}

}  // namespace kvn::service
