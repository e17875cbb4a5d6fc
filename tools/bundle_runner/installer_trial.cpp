#include "tools/bundle_runner/installer_trial.h"

#include <windows.h>

#include <msi.h>
#include <msiquery.h>

#include <array>
#include <chrono>
#include <utility>

#include "platform/service_protocol.h"
#include "platform/unique_resource.h"
#include "tools/bundle_runner/machine_facts.h"
#include "tools/bundle_runner/program_run.h"

namespace kvn::bundle {
namespace {

constexpr std::chrono::seconds kInstallerPatience{300};
constexpr std::chrono::seconds kPagePatience{60};
constexpr DWORD kRebootWanted = ERROR_SUCCESS_REBOOT_REQUIRED;

using UniqueInstallerHandle = platform::Owned<MSIHANDLE, &MsiCloseHandle>;

// A property of an installer; empty when it has none.
std::wstring InstallerProperty(const std::wstring& installer, const std::wstring& name) {
    UniqueInstallerHandle database;
    UniqueInstallerHandle view;
    UniqueInstallerHandle row;
    const std::wstring query = L"SELECT `Value` FROM `Property` WHERE `Property`='" + name + L"'";
    std::array<wchar_t, 256> value{};
    auto length = static_cast<DWORD>(value.size());
    const bool isRead = MsiOpenDatabaseW(installer.c_str(), MSIDBOPEN_READONLY, database.Receive()) == ERROR_SUCCESS &&
                        MsiDatabaseOpenViewW(database.Get(), query.c_str(), view.Receive()) == ERROR_SUCCESS &&
                        MsiViewExecute(view.Get(), 0) == ERROR_SUCCESS &&
                        MsiViewFetch(view.Get(), row.Receive()) == ERROR_SUCCESS &&
                        MsiRecordGetStringW(row.Get(), 1, value.data(), &length) == ERROR_SUCCESS;
    return isRead ? value.data() : L"";
}

bool IsInstalled(const std::wstring& upgradeCode) {
    std::array<wchar_t, 39> product{};
    return MsiEnumRelatedProductsW(upgradeCode.c_str(), 0, 0, product.data()) == ERROR_SUCCESS;
}

class Trial {
public:
    Trial(std::wstring installerFile, std::wstring programFolder, std::wstring ownFolder)
        : installer(std::move(installerFile)), programs(std::move(programFolder)), folder(std::move(ownFolder)) {}

    std::vector<Step> Run() {
        if (const std::string reason = ReasonAgainst(); !reason.empty()) {
            return {{"Installing", StepOutcome::LeftOut, reason}};
        }
        Execute("Installing", L"/i");
        Check("The product is listed", IsInstalled(UpgradeCode()));
        OpenPage();
        Execute("Removing", L"/x");
        Check("The product is not listed any more", !IsInstalled(UpgradeCode()));
        Check("No service is left running", !HasService());
        return steps;
    }

private:
    std::wstring UpgradeCode() const { return InstallerProperty(installer, L"UpgradeCode"); }

    std::string ReasonAgainst() const {
        if (!IsAdministrator()) return "not started as administrator";
        if (UpgradeCode().empty()) return "the installer cannot be read";
        return IsInstalled(UpgradeCode()) ? "the product is installed already" : "";
    }

    void Check(const char* what, bool isSo, std::string reason = {}) {
        steps.push_back({what, isSo ? StepOutcome::Done : StepOutcome::Failed, std::move(reason)});
    }

    void Execute(const char* what, const wchar_t* action) {
        const ProgramRun run =
            RunProgram(L"msiexec.exe " + std::wstring(action) + L" \"" + installer + L"\" /qn /norestart", folder,
                       folder + L"\\msiexec.txt", kInstallerPatience);
        const bool isDone = run.hasStarted && !run.hasTimedOut && (run.exitCode == 0 || run.exitCode == kRebootWanted);
        Check(what, isDone, isDone ? "" : "msiexec ended with " + std::to_string(run.exitCode));
    }

    // Through the registered handlers, as the Mouse control panel does; the service of the bundle takes the sample
    // mouse.
    void OpenPage() {
        const RunningProgram service(ServiceCommand(L"--mouse 1234:5678:7:1"), programs);
        AwaitService(true);
        const ProgramRun run =
            RunProgram(L"\"" + programs + L"\\control_panel.exe\" --screenshot \"" + folder + L"\\installed.png\"",
                       folder, folder + L"\\control_panel.txt", kPagePatience);
        const bool isDone = run.hasStarted && !run.hasTimedOut && run.exitCode == 0;
        Check("The page opens from where it is installed", isDone, isDone ? "" : run.output);
        const RunningProgram quitting(ServiceCommand(L"--quit"), programs);
        AwaitService(false);
    }

    // A start that finds a running service hands its options over.
    std::wstring ServiceCommand(const wchar_t* options) const {
        return L"\"" + programs + L"\\service\\KvnMouseApl.exe\" " + options;
    }

    static bool HasService() { return FindWindowW(nullptr, platform::kServiceName) != nullptr; }
    static void AwaitService(bool runs) {
        for (int tries = 300; tries > 0 && HasService() != runs; --tries) Sleep(100);
    }

    std::wstring installer;
    std::wstring programs;
    std::wstring folder;
    std::vector<Step> steps;
};

}  // namespace

std::vector<Step> TryInstaller(const std::wstring& installer, const std::wstring& programs,
                               const std::wstring& folder) {
    return Trial(installer, programs, folder).Run();
}

}  // namespace kvn::bundle
