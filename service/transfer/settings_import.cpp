#include "service/transfer/settings_import.h"

#include <windows.h>

#include <optional>
#include <utility>
#include <variant>

#include "model/file_replacement.h"
#include "model/locale_codec.h"
#include "model/profile_transfer.h"
#include "model/registry_access.h"
#include "model/registry_values.h"
#include "platform/module.h"
#include "platform/texts.h"
#include "platform/unique_resource.h"
#include "resources/resource.h"
#include "service/page/page_search.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"
#include "service/transfer/file_faults.h"
#include "service/transfer/mouse_model.h"
#include "service/transfer/settings_replacement.h"

namespace kvn::service {
namespace {

using Result = SettingsReplacement::Result;

// One import at a time in a session: the registry values of one would not match the file of the other.
class [[nodiscard]] ImportTurn {
public:
    ImportTurn() : mutex(CreateMutexW(nullptr, FALSE, L"Local\\KvnMouseAplImport")) {
        const DWORD waited = mutex ? WaitForSingleObject(mutex.Get(), kPatienceMilliseconds) : WAIT_FAILED;
        isMine = waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED;
    }
    ImportTurn(const ImportTurn&) = delete;
    ImportTurn& operator=(const ImportTurn&) = delete;
    ~ImportTurn() {
        if (isMine) ReleaseMutex(mutex.Get());
    }

    explicit operator bool() const { return isMine; }

private:
    static constexpr DWORD kPatienceMilliseconds = 5'000;
    platform::UniqueKernelObject mutex;
    bool isMine = false;
};

std::wstring NameOf(const MouseModel& mouse) {
    return model::MouseIdsText(mouse.vid, mouse.pid);
}

// An exported file and a profile file are read alike, since an exported one is in ASCII, which every code page
// includes.
std::variant<model::ProfileSet, model::ImportProblem> Parse(std::string bytes) {
    const model::LocaleCodec codec = model::LocaleCodec::OfHostProgram();
    const std::wstring arbitraryKey = platform::LoadText(platform::ThisModule(), IDS_FUNCTION_ARBITRARY_KEY);
    return model::ParseImport(std::move(bytes), model::NewProfileRecord(), {codec, arbitraryKey});
}

Answer Replace(const MouseModel& mouse, model::ProfileSet profiles) {
    SettingsReplacement replacement(mouse);
    const Result result = replacement.Run(std::move(profiles));
    const std::wstring& kept = replacement.KeptFile();
    if (result == Result::NothingChanged) return Fault(IDS_FAULT_IMPORT_NOT_SAVED);
    if (result == Result::NotUndone) return Fault(IDS_FAULT_IMPORT_NOT_UNDONE, kept);
    return {kDone, (kept.empty() ? Text(IDS_BALLOON_IMPORTED_FIRST) : Text(IDS_BALLOON_IMPORTED, kept)) + L'\n'};
}

Answer Import(model::ProfileSet profiles, const MouseModel& attached, const OtherModelQuestion& isOtherModelWanted) {
    const MouseModel modelOfFile{profiles.front().vid, profiles.front().pid};
    if (modelOfFile != attached && !isOtherModelWanted(NameOf(modelOfFile), NameOf(attached))) {
        return {kOtherModel, Text(IDS_FAULT_OTHER_MODEL, NameOf(modelOfFile), NameOf(attached)) + L'\n'};
    }
    // An open page would overwrite the new settings with its own.
    if (IsPageOpen()) return Fault(IDS_FAULT_PAGE_OPEN);
    return Replace(attached, std::move(profiles));
}

}  // namespace

Answer ImportSettings(const std::wstring& file, const OtherModelQuestion& isOtherModelWanted) {
    auto bytes = model::ReadWholeFile(file);
    if (!bytes) return WhyNotReadable(file);
    auto parsed = Parse(std::move(*bytes));
    if (const auto* const problem = std::get_if<model::ImportProblem>(&parsed)) return FaultOf(*problem, file);
    const auto attached = PublishedModel();
    if (!attached) return Fault(IDS_FAULT_NO_MOUSE_KNOWN);
    const ImportTurn turn;
    if (!turn) return Fault(IDS_FAULT_IMPORT_UNDER_WAY);
    return Import(std::get<model::ProfileSet>(std::move(parsed)), *attached, isOtherModelWanted);
}

}  // namespace kvn::service
