#include <windows.h>

#include <shlobj.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/benches.h"
#include "bench/stopwatch.h"
#include "platform/com_pointer.h"
#include "profiles/start_menu_programs.h"

namespace kvn::bench {
namespace {

using platform::ComPointer;

// Among a hundred shortcuts, the few that all users share weigh more.
struct CountRow {
    int count;
    double limit;
};
constexpr std::array<CountRow, 3> kCounts{{{100, 1.2}, {1'000, 1.2}, {3'000, 1.2}}};
constexpr int kQuickCount = 1'000;
constexpr int kShortcutsOfFolder = 20;
constexpr int kRounds = 11;
constexpr wchar_t kFolder[] = L"bench-start-menu";
constexpr wchar_t kShellFolders[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
constexpr wchar_t kValue[] = L"Programs";

// While it lives, this process finds the user's program folder elsewhere. The folder of all users stays in place; the
// bare loop leaves out its few shortcuts.
class OwnStartMenu {
public:
    explicit OwnStartMenu(const std::wstring& folder) {
        RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                        key.Receive(), nullptr);
        RegOverridePredefKey(HKEY_CURRENT_USER, key.Get());
        const auto bytes = static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t));
        RegSetKeyValueW(HKEY_CURRENT_USER, kShellFolders, kValue, REG_SZ, folder.c_str(), bytes);
    }
    OwnStartMenu(const OwnStartMenu&) = delete;
    OwnStartMenu& operator=(const OwnStartMenu&) = delete;
    ~OwnStartMenu() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        key.Reset();
        RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    }

private:
    static constexpr wchar_t kKey[] = L"Software\\KvnMouseUtilBench";
    platform::UniqueRegistryKey key;
};

struct Link {
    ComPointer<IShellLinkW> link;
    ComPointer<IPersistFile> file;

    bool Create() {
        return SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                          reinterpret_cast<void**>(link.Receive()))) &&
               SUCCEEDED(link.Get()->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file.Receive())));
    }
};

// Makes this many shortcuts, twenty to a folder, and returns their paths.
std::vector<std::wstring> MakeShortcuts(const std::wstring& folder, int count) {
    std::vector<std::wstring> files;
    for (int i = 0; i < count; ++i) {
        const std::wstring maker = folder + L"\\Maker " + std::to_wstring(i / kShortcutsOfFolder);
        std::filesystem::create_directories(maker);
        files.push_back(maker + L"\\Program " + std::to_wstring(i) + L".lnk");
        Link made;
        if (!made.Create()) return {};
        made.link.Get()->SetPath((L"C:\\Program Files\\Maker\\Program" + std::to_wstring(i) + L".exe").c_str());
        made.file.Get()->Save(files.back().c_str(), TRUE);
    }
    return files;
}

// The work that no gathering can avoid.
void ReadBarely(const std::vector<std::wstring>& files) {
    for (const std::wstring& file : files) {
        Link read;
        std::array<wchar_t, MAX_PATH> target{};
        WIN32_FIND_DATAW data{};
        if (read.Create() && SUCCEEDED(read.file.Get()->Load(file.c_str(), STGM_SHARE_DENY_WRITE))) {
            read.link.Get()->GetPath(target.data(), MAX_PATH, &data, 0);
        }
    }
}

void BenchCount(Report& report, const std::wstring& folder, const CountRow& row) {
    const std::vector<std::wstring> files = MakeShortcuts(folder, row.count);
    const OwnStartMenu menu(folder);
    std::size_t found = 0;
    report.Compare(
        "gather " + std::to_string(row.count) + " shortcuts", "the bare shell links of the same files", row.limit,
        kRounds,
        [&] {
            return Measure([&] {
                std::vector<model::ApplicationEntry> programs;
                profiles::AppendStartMenuPrograms(nullptr, programs);
                found = programs.size();
            });
        },
        [&] { return Measure([&] { ReadBarely(files); }); });
    if (found < files.size() || files.empty()) report.AddMissing("gathering, which has not found all shortcuts");
}

}  // namespace

void BenchStartMenu(Report& report) {
    const platform::ComApartment apartment;
    for (const CountRow& row : kCounts) {
        if (report.IsQuick() && row.count > kQuickCount) break;
        const std::filesystem::path folder = std::filesystem::absolute(kFolder);
        BenchCount(report, folder.wstring(), row);
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
}

}  // namespace kvn::bench
