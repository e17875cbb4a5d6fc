#include "bench/import_watch.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>

namespace kvn::bench {
namespace {

struct Detour {
    const char* name = nullptr;
    void** importEntry = nullptr;
    void* original = nullptr;
    bool isTimed = false;
    std::size_t count = 0;
    std::int64_t ticks = 0;
};

// A call that has not returned yet.
struct OpenCall {
    Detour* detour;
    void* returnAddress;
    std::int64_t start;
    std::int64_t ticksOfOthers;
};

std::vector<Detour> detours;
std::vector<OpenCall> openCalls;
DWORD watchedThread = 0;
BYTE* stubs = nullptr;

// mov rax, the detour; mov r11, the common entry; jmp r11. Both registers are free at a function's entry.
constexpr std::size_t kStubBytes = 24;
constexpr std::size_t kCallDepth = 1024;

// A function that reads return addresses on the stack must not find a replaced one.
bool MayBeTimed(std::string_view name) {
    constexpr std::array<std::string_view, 5> kNever{"Rtl", "_setjmp", "longjmp", "RaiseException", "__C_specific"};
    return std::none_of(kNever.begin(), kNever.end(),
                        [=](std::string_view prefix) { return name.starts_with(prefix); });
}

std::int64_t Now() {
    LARGE_INTEGER ticks{};
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart;
}

double MillisecondsOf(std::int64_t ticks) {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(ticks) / static_cast<double>(frequency.QuadPart);
}

}  // namespace
}  // namespace kvn::bench

extern "C" {

void KvnBenchImportEntry();
void KvnBenchImportReturn();

// Records a call, and replaces its return address with KvnBenchImportReturn. Returns the function to continue with.
void* KvnBenchOnCall(kvn::bench::Detour* detour, void** returnAddress) {
    using namespace kvn::bench;
    if (GetCurrentThreadId() != watchedThread) return detour->original;
    ++detour->count;
    if (detour->isTimed && openCalls.size() < openCalls.capacity()) {
        openCalls.push_back({detour, *returnAddress, Now(), 0});
        *returnAddress = reinterpret_cast<void*>(&KvnBenchImportReturn);
    }
    return detour->original;
}

// Records the end of the innermost call, and returns its original return address.
void* KvnBenchOnReturn() {
    using namespace kvn::bench;
    const OpenCall call = openCalls.back();
    openCalls.pop_back();
    const std::int64_t ticks = Now() - call.start;
    call.detour->ticks += ticks - call.ticksOfOthers;
    if (!openCalls.empty()) openCalls.back().ticksOfOthers += ticks;
    return call.returnAddress;
}
}

// Both preserve all registers of arguments and results: rcx, rdx, r8, r9 and xmm0 to xmm3; rax and xmm0.
asm(R"(
    .text
    .globl KvnBenchImportEntry
KvnBenchImportEntry:
    pushq %rcx
    pushq %rdx
    pushq %r8
    pushq %r9
    subq $0x68, %rsp
    movups %xmm0, 0x20(%rsp)
    movups %xmm1, 0x30(%rsp)
    movups %xmm2, 0x40(%rsp)
    movups %xmm3, 0x50(%rsp)
    movq %rax, %rcx
    leaq 0x88(%rsp), %rdx
    call KvnBenchOnCall
    movups 0x20(%rsp), %xmm0
    movups 0x30(%rsp), %xmm1
    movups 0x40(%rsp), %xmm2
    movups 0x50(%rsp), %xmm3
    addq $0x68, %rsp
    popq %r9
    popq %r8
    popq %rdx
    popq %rcx
    jmp *%rax

    .globl KvnBenchImportReturn
KvnBenchImportReturn:
    subq $0x40, %rsp
    movq %rax, 0x20(%rsp)
    movups %xmm0, 0x30(%rsp)
    call KvnBenchOnReturn
    movq %rax, %r11
    movq 0x20(%rsp), %rax
    movups 0x30(%rsp), %xmm0
    addq $0x40, %rsp
    jmp *%r11
)");

namespace kvn::bench {
namespace {

template <typename Visit>
void ForEachNamedImport(HMODULE module, const Visit& visit) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* imported = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; imported->Name != 0; ++imported) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + imported->OriginalFirstThunk);
        auto** entries = reinterpret_cast<void**>(base + imported->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++entries) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            visit(reinterpret_cast<const char*>(&name->Name[0]), entries);
        }
    }
}

// Variables such as _iob are imported as well; only code can be detoured.
bool IsCode(const void* address) {
    MEMORY_BASIC_INFORMATION region{};
    constexpr DWORD kExecutable = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return VirtualQuery(address, &region, sizeof region) != 0 && (region.Protect & kExecutable) != 0;
}

void SetImport(void** entry, void* function) {
    DWORD protection = 0;
    if (!VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection)) return;
    *entry = function;
    VirtualProtect(entry, sizeof *entry, protection, &protection);
}

void WriteStub(BYTE* stub, const Detour& detour) {
    constexpr std::array<BYTE, 2> kMovRax{0x48, 0xB8};
    constexpr std::array<BYTE, 2> kMovR11{0x49, 0xBB};
    constexpr std::array<BYTE, 3> kJmpR11{0x41, 0xFF, 0xE3};
    BYTE* next = stub;
    const auto append = [&next](const void* bytes, std::size_t count) {
        std::memcpy(next, bytes, count);
        next += count;
    };
    const auto argument = reinterpret_cast<std::uintptr_t>(&detour);
    const auto entry = &KvnBenchImportEntry;
    append(kMovRax.data(), kMovRax.size());
    append(&argument, sizeof argument);
    append(kMovR11.data(), kMovR11.size());
    append(&entry, sizeof entry);
    append(kJmpR11.data(), kJmpR11.size());
}

}  // namespace

ImportWatch::ImportWatch(HMODULE module, std::span<const std::string_view> names) {
    watchedThread = GetCurrentThreadId();
    openCalls.reserve(kCallDepth);
    ForEachNamedImport(module, [=](const char* name, void** entry) {
        const bool isMeant = names.empty() || std::ranges::find(names, name) != names.end();
        if (isMeant && IsCode(*entry)) detours.push_back({name, entry, *entry, MayBeTimed(name)});
    });
    const std::size_t bytes = detours.size() * kStubBytes;
    stubs = static_cast<BYTE*>(VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    if (stubs == nullptr) return;
    for (std::size_t i = 0; i < detours.size(); ++i) {
        BYTE* const stub = stubs + i * kStubBytes;
        WriteStub(stub, detours[i]);
        SetImport(detours[i].importEntry, stub);
    }
}

ImportWatch::~ImportWatch() {
    for (const Detour& detour : detours) SetImport(detour.importEntry, detour.original);
    if (stubs != nullptr) VirtualFree(stubs, 0, MEM_RELEASE);
    stubs = nullptr;
    detours.clear();
}

void ImportWatch::Restart() {
    for (Detour& detour : detours) {
        detour.count = 0;
        detour.ticks = 0;
    }
}

std::vector<ImportCalls> ImportWatch::Calls() {
    std::vector<ImportCalls> calls;
    for (const Detour& detour : detours) {
        if (detour.count != 0) calls.push_back({detour.name, detour.count, MillisecondsOf(detour.ticks)});
    }
    std::sort(calls.begin(), calls.end(),
              [](const ImportCalls& a, const ImportCalls& b) { return a.milliseconds > b.milliseconds; });
    return calls;
}

std::size_t ImportWatch::CountOf(std::string_view prefix) {
    std::size_t count = 0;
    for (const Detour& detour : detours) {
        if (std::string_view(detour.name).starts_with(prefix)) count += detour.count;
    }
    return count;
}

std::size_t ImportWatch::Allocations() {
    return CountOf("malloc") + CountOf("calloc") + CountOf("realloc");
}

}  // namespace kvn::bench
