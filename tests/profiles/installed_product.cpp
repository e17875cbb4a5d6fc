#include "tests/profiles/installed_product.h"

#include <windows.h>

#include <msi.h>
#include <msiquery.h>
#include <objbase.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "platform/unique_resource.h"

namespace kvn::test {
namespace {

constexpr wchar_t kProduct[] = L"{5A1C9E07-6B34-4D2F-9A83-0C7E51D2B6F4}";
constexpr wchar_t kComponent[] = L"{E20B7C15-38D9-4A66-B1F0-97A3C4D85E21}";
constexpr wchar_t kFeature[] = L"Program";
constexpr wchar_t kProgramFile[] = L"program.exe";

using UniqueInstallerHandle = platform::Owned<MSIHANDLE, &MsiCloseHandle>;

void Require(UINT result, const char* what) {
    if (result != ERROR_SUCCESS) throw std::runtime_error(std::string(what) + " failed: " + std::to_string(result));
}

void Execute(MSIHANDLE database, const std::wstring& statement) {
    UniqueInstallerHandle view;
    Require(MsiDatabaseOpenViewW(database, statement.c_str(), view.Receive()), "a statement");
    Require(MsiViewExecute(view.Get(), 0), "a statement's execution");
    MsiViewClose(view.Get());
}

void AddTables(MSIHANDLE database, const std::wstring& target) {
    const std::wstring statements[] = {
        L"CREATE TABLE `Property` (`Property` CHAR(72) NOT NULL, `Value` CHAR(0) NOT NULL LOCALIZABLE PRIMARY KEY "
        L"`Property`)",
        L"CREATE TABLE `Directory` (`Directory` CHAR(72) NOT NULL, `Directory_Parent` CHAR(72), `DefaultDir` CHAR(255) "
        L"NOT NULL LOCALIZABLE PRIMARY KEY `Directory`)",
        L"CREATE TABLE `Component` (`Component` CHAR(72) NOT NULL, `ComponentId` CHAR(38), `Directory_` CHAR(72) NOT "
        L"NULL, `Attributes` SHORT NOT NULL, `Condition` CHAR(255), `KeyPath` CHAR(72) PRIMARY KEY `Component`)",
        L"CREATE TABLE `Feature` (`Feature` CHAR(38) NOT NULL, `Feature_Parent` CHAR(38), `Title` CHAR(64), "
        L"`Description` CHAR(255), `Display` SHORT, `Level` SHORT NOT NULL, `Directory_` CHAR(72), `Attributes` SHORT "
        L"NOT NULL PRIMARY KEY `Feature`)",
        L"CREATE TABLE `FeatureComponents` (`Feature_` CHAR(38) NOT NULL, `Component_` CHAR(72) NOT NULL PRIMARY KEY "
        L"`Feature_`, `Component_`)",
        L"CREATE TABLE `File` (`File` CHAR(72) NOT NULL, `Component_` CHAR(72) NOT NULL, `FileName` CHAR(255) NOT NULL "
        L"LOCALIZABLE, `FileSize` LONG NOT NULL, `Version` CHAR(72), `Language` CHAR(20), `Attributes` SHORT, "
        L"`Sequence` SHORT NOT NULL PRIMARY KEY `File`)",
        L"CREATE TABLE `Media` (`DiskId` SHORT NOT NULL, `LastSequence` SHORT NOT NULL, `DiskPrompt` CHAR(64), "
        L"`Cabinet` CHAR(255), `VolumeLabel` CHAR(32), `Source` CHAR(72) PRIMARY KEY `DiskId`)",
        L"CREATE TABLE `InstallExecuteSequence` (`Action` CHAR(72) NOT NULL, `Condition` CHAR(255), `Sequence` SHORT "
        L"PRIMARY KEY `Action`)",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('ProductCode', '" + std::wstring(kProduct) + L"')",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('ProductName', 'Kvn test product')",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('ProductVersion', '1.0.0')",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('ProductLanguage', '1033')",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('Manufacturer', 'Kvn tests')",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('ALLUSERS', '1')",
        L"INSERT INTO `Property` (`Property`, `Value`) VALUES ('INSTALLDIR', '" + target + L"')",
        L"INSERT INTO `Directory` (`Directory`, `Directory_Parent`, `DefaultDir`) VALUES ('TARGETDIR', '', "
        L"'SourceDir')",
        L"INSERT INTO `Directory` (`Directory`, `Directory_Parent`, `DefaultDir`) VALUES ('INSTALLDIR', 'TARGETDIR', "
        L"'.')",
        L"INSERT INTO `Component` (`Component`, `ComponentId`, `Directory_`, `Attributes`, `Condition`, `KeyPath`) "
        L"VALUES ('Program', '" +
            std::wstring(kComponent) + L"', 'INSTALLDIR', 0, '', 'Program')",
        L"INSERT INTO `Feature` (`Feature`, `Feature_Parent`, `Title`, `Description`, `Display`, `Level`, "
        L"`Directory_`, `Attributes`) VALUES ('" +
            std::wstring(kFeature) + L"', '', '', '', 1, 1, 'INSTALLDIR', 0)",
        L"INSERT INTO `FeatureComponents` (`Feature_`, `Component_`) VALUES ('" + std::wstring(kFeature) +
            L"', 'Program')",
        L"INSERT INTO `File` (`File`, `Component_`, `FileName`, `FileSize`, `Version`, `Language`, `Attributes`, "
        L"`Sequence`) VALUES ('Program', 'Program', '" +
            std::wstring(kProgramFile) + L"', 4, '', '', 0, 1)",
        L"INSERT INTO `Media` (`DiskId`, `LastSequence`, `DiskPrompt`, `Cabinet`, `VolumeLabel`, `Source`) VALUES (1, "
        L"1, '', '', '', '')"};
    for (const std::wstring& statement : statements) Execute(database, statement);

    struct Action {
        const wchar_t* name;
        int sequence;
    };
    for (const Action& action :
         {Action{L"CostInitialize", 800}, Action{L"FileCost", 900}, Action{L"CostFinalize", 1000},
          Action{L"InstallValidate", 1400}, Action{L"InstallInitialize", 1500}, Action{L"ProcessComponents", 1600},
          Action{L"UnpublishFeatures", 1800}, Action{L"RemoveFiles", 3500}, Action{L"InstallFiles", 4000},
          Action{L"RegisterProduct", 6100}, Action{L"PublishFeatures", 6300}, Action{L"PublishProduct", 6400},
          Action{L"InstallFinalize", 6600}}) {
        Execute(database, L"INSERT INTO `InstallExecuteSequence` (`Action`, `Condition`, `Sequence`) VALUES ('" +
                              std::wstring(action.name) + L"', '', " + std::to_wstring(action.sequence) + L")");
    }
}

void AddSummary(MSIHANDLE database) {
    constexpr UINT kTemplate = 7;
    constexpr UINT kPackageCode = 9;
    constexpr UINT kSchema = 14;
    constexpr UINT kSourceType = 15;
    UniqueInstallerHandle summary;
    Require(MsiGetSummaryInformationW(database, nullptr, 4, summary.Receive()), "the summary");
    MsiSummaryInfoSetPropertyW(summary.Get(), kTemplate, VT_LPSTR, 0, nullptr, L"x64;1033");
    MsiSummaryInfoSetPropertyW(summary.Get(), kPackageCode, VT_LPSTR, 0, nullptr,
                               L"{0D6F3B92-74AE-4C18-8E5B-2A91F7C3D064}");
    MsiSummaryInfoSetPropertyW(summary.Get(), kSchema, VT_I4, 200, nullptr, nullptr);
    MsiSummaryInfoSetPropertyW(summary.Get(), kSourceType, VT_I4, 0, nullptr, nullptr);
    Require(MsiSummaryInfoPersist(summary.Get()), "the summary's storing");
}

// Windows Installer's short form of a GUID: five characters for each 32 bits, the least significant first.
std::wstring ShortForm(const wchar_t* text) {
    constexpr wchar_t kDigits[] =
        L"!$%&'()*+,-.0123456789=?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[]^_`abcdefghijklmnopqrstuvwxyz{}~";
    constexpr std::uint32_t kBase = 85;
    GUID guid{};
    CLSIDFromString(text, &guid);
    std::array<std::uint32_t, 4> words{};
    std::memcpy(words.data(), &guid, sizeof guid);
    std::wstring form;
    for (std::uint32_t word : words) {
        for (int digit = 0; digit < 5; ++digit, word /= kBase) form += kDigits[word % kBase];
    }
    return form;
}

}  // namespace

InstalledProduct::InstalledProduct(const ScratchFolder& folder) {
    const std::wstring package = folder.PathOf(L"package\\product.msi");
    const std::wstring target = folder.PathOf(L"installed");
    folder.AddFile(L"package\\program.exe", "none");
    {
        UniqueInstallerHandle database;
        Require(MsiOpenDatabaseW(package.c_str(), reinterpret_cast<LPCWSTR>(MSIDBOPEN_CREATE), database.Receive()),
                "the package");
        AddTables(database.Get(), target + L"\\");
        AddSummary(database.Get());
        Require(MsiDatabaseCommit(database.Get()), "the package's storing");
    }
    MsiSetInternalUI(INSTALLUILEVEL_NONE, nullptr);
    Require(MsiInstallProductW(package.c_str(), L""), "the installation");
    program = target + L"\\" + kProgramFile;
}

InstalledProduct::~InstalledProduct() {
    MsiConfigureProductW(kProduct, INSTALLLEVEL_DEFAULT, INSTALLSTATE_ABSENT);
}

std::wstring InstalledProduct::AdvertisedTarget() const {
    return L"::{9db1186e-40df-11d1-aa8c-00c04fb67863}:" + ShortForm(kProduct) + kFeature + L">" +
           ShortForm(kComponent) + L"::";
}

}  // namespace kvn::test
