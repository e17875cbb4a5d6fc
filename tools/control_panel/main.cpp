// Plays the shell's part for the Mouse control panel: shows the property sheet with the pages of every registered
// handler.
#include <windows.h>

#include <shellapi.h>

#include <exception>
#include <string>
#include <vector>

#include "tools/control_panel/handlers.h"
#include "tools/control_panel/host_error.h"
#include "tools/control_panel/host_options.h"
#include "tools/control_panel/page_provider.h"
#include "tools/control_panel/page_registration.h"
#include "tools/control_panel/sheet.h"
#include "tools/control_panel/sheet_actions.h"

namespace kvn::control_panel {
namespace {

struct Sources {
    std::vector<PageProvider> providers;
    std::wstring complaints;  // one line for each handler that could not be used
};

// As in the shell, a handler that fails does not stop the others.
template <typename Load>
void Collect(Sources& sources, std::vector<Page>& pages, Load load) {
    try {
        PageProvider provider = load();
        provider.AddPagesTo(pages);
        sources.providers.push_back(std::move(provider));
    } catch (const HostError& error) {
        sources.complaints += L"\n" + error.text;
    }
}

Sources CollectPages(const Options& options, std::vector<Page>& pages) {
    Sources sources;
    if (!options.dll.empty()) {
        Collect(sources, pages, [&options] { return PageProvider::FromLibrary(options.dll); });
        return sources;
    }
    const std::vector<Handler> handlers = FindMouseHandlers();
    if (handlers.empty())
        sources.complaints = L"\nNo property-sheet handler is registered for the Mouse control panel.";
    for (const Handler& handler : handlers) {
        Collect(sources, pages, [&handler] { return PageProvider::FromHandler(handler); });
    }
    return sources;
}

void ShowMouseProperties(const Options& options) {
    const SheetApartment apartment;
    std::vector<Page> pages;
    const Sources sources = CollectPages(options, pages);
    if (pages.empty()) {
        const wchar_t* const hint = sources.complaints.empty()
                                        ? L"\nThe handler offers its page only while the KvnMouseApl service runs."
                                        : L"";
        throw HostError{L"The Mouse control panel has no page to show." + sources.complaints + hint};
    }
    const SheetDriver driver(options);
    ShowSheet(std::move(pages));
    driver.CheckOutcome();
}

void Run(const Options& options) {
    switch (options.action) {
        case Action::Register:
            return RegisterPage(options.dll);
        case Action::Unregister:
            return UnregisterPage();
        case Action::ShowSheet:
            return ShowMouseProperties(options);
    }
}

std::vector<std::wstring> Arguments() {
    int count = 0;
    const LocalText<wchar_t**> texts(CommandLineToArgvW(GetCommandLineW(), &count));
    if (!texts) throw HostError{DescribeError(GetLastError())};
    return {texts.Get() + 1, texts.Get() + count};
}

int Report(const HostError& error, bool isInteractive) {
    WriteErrorLine(error.text);
    if (isInteractive) MessageBoxW(nullptr, error.text.c_str(), SheetTitle(), MB_OK | MB_ICONEXCLAMATION);
    return error.exitCode;
}

int Main() {
    bool isInteractive = false;
    try {
        const Options options = ParseOptions(Arguments());
        isInteractive = options.IsInteractive();
        Run(options);
        return 0;
    } catch (const HostError& error) {
        return Report(error, isInteractive);
    } catch (const std::exception&) {
        return Report({L"Out of memory."}, isInteractive);
    }
}

}  // namespace
}  // namespace kvn::control_panel

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    return kvn::control_panel::Main();
}
