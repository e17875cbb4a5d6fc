// Saves two versions of a list in turn to one path, until it is killed or the test that started it has ended.
// Arguments: the path, the name of the shared counts, and the process id of the test.
#include <windows.h>

#include <shellapi.h>

#include <string>

#include "model/profile_file.h"
#include "tests/model_windows/endless_saver.h"
#include "tests/support/owning_types.h"

int main() {
    using namespace kvn;
    int count = 0;
    const kvn::test::UniqueArguments words(CommandLineToArgvW(GetCommandLineW(), &count));
    if (count != 4) return 2;
    wchar_t* const* const arguments = words.Get();
    const std::wstring path = arguments[1];
    const model::test::SharedSaveCounts counts(arguments[2]);
    const platform::UniqueKernelObject test(OpenProcess(SYNCHRONIZE, FALSE, std::stoul(arguments[3])));

    const auto versions = model::test::AlternatingVersions();
    while (WaitForSingleObject(test.Get(), 0) == WAIT_TIMEOUT) {
        const LONG number = InterlockedIncrement(&counts->begun);
        const bool saved = model::SaveProfileFile(path, versions[static_cast<std::size_t>(number) % versions.size()]);
        InterlockedIncrement(saved ? &counts->saved : &counts->refused);
    }
    return 1;
}
