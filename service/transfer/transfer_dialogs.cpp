#include "service/transfer/transfer_dialogs.h"

#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/com_pointer.h"
#include "platform/critical_section.h"
#include "platform/system_library.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"
#include "service/transfer/settings_export.h"
#include "service/transfer/settings_import.h"

namespace kvn::service {

struct TransferDialogs::State {
    explicit State(Outlets chosenOutlets) : outlets(std::move(chosenOutlets)) {}

    // Does nothing once the owner has closed.
    template <typename Report>
    void Notify(const Report& report) {
        const std::lock_guard lock(section);
        if (!isClosed) report(outlets);
    }

    const Outlets outlets;
    platform::CriticalSection section;
    bool isClosed = false;
};

namespace {

constexpr std::size_t kLongestPath = 32'767;
constexpr wchar_t kDialogLibrary[] = L"comdlg32.dll";
constexpr wchar_t kExtension[] = L"xml";

using FileDialog = BOOL WINAPI(OPENFILENAMEW*);

// Pairs of a text and a pattern, each with a final zero.
std::wstring Filter() {
    return Text(IDS_FILE_TYPE_SETTINGS) + L'\0' + L"*.xml" + L'\0' + Text(IDS_FILE_TYPE_ALL) + L'\0' + L"*.*" + L'\0';
}

// The full path that the user has chosen; nothing if the user chose none.
std::optional<std::wstring> ChooseFile(const char* dialog, const std::wstring& suggestion, DWORD flags) {
    auto* const choose = platform::SystemFunction<FileDialog>(kDialogLibrary, dialog);
    if (choose == nullptr) return std::nullopt;
    const std::wstring filter = Filter();
    std::wstring path(kLongestPath, L'\0');
    std::ranges::copy(suggestion, path.begin());
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.lpstrFilter = filter.c_str();
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrDefExt = kExtension;
    request.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | flags;
    if (!choose(&request)) return std::nullopt;
    return path.substr(0, path.find(L'\0'));
}

int ShowBox(const std::wstring& text, UINT style) {
    return MessageBoxW(nullptr, text.c_str(), Text(IDS_SERVICE_CAPTION).c_str(), style | MB_SETFOREGROUND);
}

bool AskForOtherModel(const std::wstring& modelOfFile, const std::wstring& attachedModel) {
    return ShowBox(Text(IDS_QUESTION_OTHER_MODEL, modelOfFile, attachedModel),
                   MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

}  // namespace

TransferDialogs::TransferDialogs(Outlets chosenOutlets) : state(std::make_shared<State>(std::move(chosenOutlets))) {}

TransferDialogs::~TransferDialogs() {
    Close();
}

void TransferDialogs::Close() {
    const std::lock_guard lock(state->section);
    state->isClosed = true;
}

void TransferDialogs::OpenExport() {
    Open([](State& shared) {
        const auto file = ChooseFile("GetSaveFileNameW", SuggestedExportName(), OFN_OVERWRITEPROMPT);
        if (!file) return;
        const Answer answer = ExportSettings(*file);
        if (answer.exitCode != kDone) {
            ShowBox(answer.text, MB_OK | MB_ICONWARNING);
        } else {
            shared.Notify([&](const Outlets& outlets) { outlets.onDone(answer.text); });
        }
    });
}

void TransferDialogs::OpenImport() {
    Open([](State& shared) {
        const auto file = ChooseFile("GetOpenFileNameW", {}, OFN_FILEMUSTEXIST);
        if (!file) return;
        const Answer answer = ImportSettings(*file, AskForOtherModel);
        if (answer.exitCode == kFailed) ShowBox(answer.text, MB_OK | MB_ICONWARNING);
        if (answer.exitCode != kDone) return;
        shared.Notify([&](const Outlets& outlets) {
            outlets.onImported();
            outlets.onDone(answer.text);
        });
    });
}

void TransferDialogs::Open(void (*work)(State& state)) {
    dialog.Open([shared = state, work] {
        const platform::ComApartment apartment;
        work(*shared);
    });
}

}  // namespace kvn::service
