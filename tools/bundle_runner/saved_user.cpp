#include "tools/bundle_runner/saved_user.h"

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <filesystem>
#include <stdexcept>

#include "platform/unique_resource.h"
#include "resources/server_class.h"
#include "tools/bundle_runner/report_text.h"

namespace kvn::bundle {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kStore[] = L"Software\\KvnMouseTestsSaved";
constexpr wchar_t kIsComplete[] = L"Complete";
constexpr wchar_t kHadFolder[] = L"HadFolder";
constexpr wchar_t kWasThere[] = L"WasThere";
constexpr wchar_t kSavedFolderSuffix[] = L".saved-by-tests";
// Remains of killed tests.
constexpr wchar_t kSandboxes[] = L"Software\\KvnMouseUtilTests";

struct Tree {
    HKEY root;
    std::wstring path;
};

std::wstring ClassKey() {
    std::array<wchar_t, 39> id{};
    StringFromGUID2(resources::kServerClassId, id.data(), static_cast<int>(id.size()));
    return std::wstring(L"Software\\Classes\\CLSID\\") + id.data();
}

std::vector<Tree> Trees() {
    return {{HKEY_CURRENT_USER, L"Software\\KORVEN"},
            {HKEY_LOCAL_MACHINE, ClassKey()},
            {HKEY_LOCAL_MACHINE,
             L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Mouse\\shellex\\PropertySheetHandlers"},
            {HKEY_LOCAL_MACHINE, L"Software\\Classes\\.htm"}};
}

std::wstring StoreOf(std::size_t tree) {
    return std::wstring(kStore) + L"\\" + std::to_wstring(tree);
}

platform::UniqueRegistryKey OpenKey(HKEY root, const std::wstring& path, REGSAM access) {
    platform::UniqueRegistryKey key;
    RegOpenKeyExW(root, path.c_str(), 0, access, key.Receive());
    return key;
}

platform::UniqueRegistryKey MakeKey(HKEY root, const std::wstring& path) {
    platform::UniqueRegistryKey key;
    RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr);
    return key;
}

bool ReadFlag(const std::wstring& path, const wchar_t* name) {
    DWORD flag = 0;
    DWORD bytes = sizeof flag;
    return RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name, RRF_RT_REG_DWORD, nullptr, &flag, &bytes) ==
               ERROR_SUCCESS &&
           flag != 0;
}

void WriteFlag(const std::wstring& path, const wchar_t* name, bool isSet) {
    const DWORD flag = isSet ? 1 : 0;
    if (RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), name, REG_DWORD, &flag, sizeof flag) != ERROR_SUCCESS) {
        throw std::runtime_error("The registry cannot be written.");
    }
}

bool Copy(HKEY from, HKEY to) {
    return RegCopyTreeW(from, nullptr, to) == ERROR_SUCCESS;
}

// Null only if there is no such key: a tree that counts as missing is deleted afterwards.
platform::UniqueRegistryKey OpenToSave(const Tree& tree) {
    platform::UniqueRegistryKey key;
    const LSTATUS opened = RegOpenKeyExW(tree.root, tree.path.c_str(), 0, KEY_READ, key.Receive());
    if (opened == ERROR_SUCCESS || opened == ERROR_FILE_NOT_FOUND) return key;
    throw std::runtime_error("The registry key " + ToUtf8(tree.path) + " cannot be read: error " +
                             std::to_string(opened) + ".");
}

void SaveTree(const Tree& tree, const std::wstring& store) {
    const auto source = OpenToSave(tree);
    const auto target = MakeKey(HKEY_CURRENT_USER, store + L"\\Tree");
    WriteFlag(store, kWasThere, static_cast<bool>(source));
    if (source && !Copy(source.Get(), target.Get())) {
        throw std::runtime_error("A copy of the registry key " + ToUtf8(tree.path) + " cannot be made.");
    }
}

// If we may not write the machine's keys, the tests could not write them either.
bool MayWrite(const Tree& tree) {
    if (tree.root == HKEY_CURRENT_USER) return true;
    return static_cast<bool>(OpenKey(tree.root, L"Software\\Classes", KEY_ALL_ACCESS));
}

bool PutBackTree(const Tree& tree, const std::wstring& store) {
    if (!MayWrite(tree)) return true;
    const LSTATUS deleted = RegDeleteTreeW(tree.root, tree.path.c_str());
    if (deleted != ERROR_SUCCESS && deleted != ERROR_FILE_NOT_FOUND) return false;
    if (!ReadFlag(store, kWasThere)) return true;
    const auto source = OpenKey(HKEY_CURRENT_USER, store + L"\\Tree", KEY_READ);
    const auto target = MakeKey(tree.root, tree.path);
    return source && target && Copy(source.Get(), target.Get());
}

fs::path ProfileFolder() {
    std::array<wchar_t, MAX_PATH> path{};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path.data()))) {
        throw std::runtime_error("Windows has no folder for application data.");
    }
    return fs::path(path.data()) / L"KORVEN";
}

fs::path SavedFolder() {
    return ProfileFolder() += kSavedFolderSuffix;
}

bool PutBackFolder() {
    std::error_code error;
    const bool isAway = fs::exists(SavedFolder(), error);
    if (error) return false;
    // It is the user's own if it was never moved or is back already.
    if (ReadFlag(kStore, kHadFolder) && !isAway) return true;
    fs::remove_all(ProfileFolder(), error);
    if (!error && isAway) fs::rename(SavedFolder(), ProfileFolder(), error);
    return !error;
}

std::vector<std::string> PutBackAll() {
    std::vector<std::string> faults;
    const std::vector<Tree> trees = Trees();
    for (std::size_t tree = 0; tree < trees.size(); ++tree) {
        if (!PutBackTree(trees[tree], StoreOf(tree))) {
            faults.push_back("The registry key " + ToUtf8(trees[tree].path) + " could not be put back. A copy is in " +
                             ToUtf8(StoreOf(tree)) + ".");
        }
    }
    if (!PutBackFolder()) {
        faults.push_back("The folder of the profiles could not be put back from " + ToUtf8(SavedFolder().wstring()) +
                         ".");
    }
    RegDeleteTreeW(HKEY_CURRENT_USER, kSandboxes);
    if (faults.empty()) RegDeleteTreeW(HKEY_CURRENT_USER, kStore);
    return faults;
}

void PutBackWhatWasCutOff() {
    if (ReadFlag(kStore, kIsComplete)) {
        const std::vector<std::string> faults = PutBackAll();
        if (!faults.empty()) throw std::runtime_error(faults.front());
    }
    RegDeleteTreeW(HKEY_CURRENT_USER, kStore);
}

void SaveRegistry() {
    const std::vector<Tree> trees = Trees();
    for (std::size_t tree = 0; tree < trees.size(); ++tree) SaveTree(trees[tree], StoreOf(tree));
}

}  // namespace

SavedUser::SavedUser() {
    PutBackWhatWasCutOff();
    SaveRegistry();
    const bool hasFolder = fs::exists(ProfileFolder());
    WriteFlag(kStore, kHadFolder, hasFolder);
    WriteFlag(kStore, kIsComplete, true);
    std::error_code error;
    if (hasFolder) fs::rename(ProfileFolder(), SavedFolder(), error);
    if (!error) return;
    RegDeleteTreeW(HKEY_CURRENT_USER, kStore);
    throw std::runtime_error("The folder of the profiles is in use: " + ToUtf8(ProfileFolder().wstring()));
}

SavedUser::~SavedUser() {
    if (isAway) PutBack();
}

std::vector<std::string> SavedUser::PutBack() {
    isAway = false;
    return PutBackAll();
}

}  // namespace kvn::bundle
