// "Export..." and "Import..." of the menu: a dialog for the file, then the work, on a thread that no other thread waits
// for.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/dialog_thread.h"

namespace kvn::service {

class TransferDialogs {
public:
    // From the dialogs' thread.
    struct Outlets {
        std::function<void()> onImported;
        std::function<void(const std::wstring& text)> onDone;
    };

    explicit TransferDialogs(Outlets chosenOutlets);
    TransferDialogs(const TransferDialogs&) = delete;
    TransferDialogs& operator=(const TransferDialogs&) = delete;
    ~TransferDialogs();

    // One dialog at a time: if one is open, it comes to the front instead.
    void OpenExport();
    void OpenImport();

    // Makes no more calls from now on; an open dialog ends with the program.
    void Close();

private:
    struct State;
    void Open(void (*work)(State& state));

    std::shared_ptr<State> state;
    platform::DialogThread dialog;
};

}  // namespace kvn::service
