#include <windows.h>

#include <unknwn.h>

#include <array>

#include "bench/benches.h"
#include "bench/stopwatch.h"
#include "platform/com_pointer.h"
#include "resources/server_class.h"
#include "tests/support/owning_types.h"

namespace kvn::bench {
namespace {

constexpr wchar_t kOurs[] = L"KvnMouseUtil.dll";
constexpr wchar_t kEmpty[] = L"kvn_empty_com.dll";
constexpr int kRounds = 25;
constexpr double kLoadingLimit = 5;
constexpr double kSizeLimit = 25;

// Loads the DLL, gets its class factory and unloads it, as COM does. False if that fails.
bool LoadOnce(const wchar_t* dll) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    test::UniqueModule module(LoadLibraryW(dll));
    if (!module) return false;
    const auto getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(module.Get(), "DllGetClassObject")));
    platform::ComPointer<IClassFactory> factory;
    const HRESULT result =
        getClassObject(resources::kServerClassId, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive()));
    factory.Reset();
    module.Reset();
    return SUCCEEDED(result) && GetModuleHandleW(dll) == nullptr;
}

double KilobytesOf(const wchar_t* dll) {
    std::array<wchar_t, MAX_PATH> path{};
    WIN32_FILE_ATTRIBUTE_DATA data{};
    SearchPathW(nullptr, dll, nullptr, MAX_PATH, path.data(), nullptr);
    GetFileAttributesExW(path.data(), GetFileExInfoStandard, &data);
    return static_cast<double>(data.nFileSizeLow) / 1024;
}

}  // namespace

void BenchLoading(Report& report) {
    if (!LoadOnce(kOurs) || !LoadOnce(kEmpty)) return report.AddMissing("loading, without the two DLLs");
    report.Compare(
        "load, give the factory, unload", "a COM DLL that does nothing", kLoadingLimit, kRounds,
        [] { return Measure([] { LoadOnce(kOurs); }); }, [] { return Measure([] { LoadOnce(kEmpty); }); });
    report.Add(
        {"size of the DLL", "KB", KilobytesOf(kOurs), "a COM DLL that does nothing", KilobytesOf(kEmpty), kSizeLimit});
}

}  // namespace kvn::bench
