// Libraries of Windows are loaded from its own folder: a file of the same name beside the host is not loaded.
#include "platform/system_library.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/unique_resource.h"
#include "tests/support/module_under_test.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

constexpr wchar_t kDecoy[] = L"kvn_decoy.dll";
constexpr char kExport[] = "DllCanUnloadNow";

std::filesystem::path PathOf(HMODULE module) {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(module, path, MAX_PATH);
    return path;
}

TEST(SystemLibraryTest, IsNeverTheOneBesideTheHost) {
    const ModuleUnderTest module;
    const std::filesystem::path decoy = PathOf(nullptr).replace_filename(kDecoy);
    std::filesystem::copy_file(PathOf(module.Handle()), decoy, std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(platform::FindSystemFunction(kDecoy, kExport), nullptr);
    EXPECT_EQ(GetModuleHandleW(kDecoy), nullptr);

    UniqueModule byName(LoadLibraryW(kDecoy));
    EXPECT_TRUE(byName) << "the bare name finds it";
    byName.Reset();
    std::filesystem::remove(decoy);
}

TEST(SystemLibraryTest, IsFoundInTheFolderOfWindows) {
    EXPECT_NE(platform::FindSystemFunction(L"imm32.dll", "ImmAssociateContextEx"), nullptr);
    EXPECT_EQ(platform::FindSystemFunction(L"imm32.dll", "NoSuchFunction"), nullptr);
}

}  // namespace
}  // namespace kvn::test
