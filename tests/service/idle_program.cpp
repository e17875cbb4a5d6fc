// Shows the memory that Windows libraries alone cost a program: loads those that the arguments name, signals that, and
// does nothing for a minute.
#include <windows.h>

#include "platform/unique_resource.h"
#include "tests/service/idle_program.h"

int wmain(int count, wchar_t** arguments) {
    constexpr DWORD kLife = 60'000;
    for (int index = 1; index < count; ++index) LoadLibraryW(arguments[index]);
    GetQueueStatus(QS_ALLINPUT);  // prepares the thread for windows, as some libraries do when they start
    const kvn::platform::UniqueKernelObject ready(
        OpenEventW(EVENT_MODIFY_STATE, FALSE, kvn::service_test::kIdleProgramIsReady));
    SetEvent(ready.Get());
    Sleep(kLife);
    return 0;
}
