#include <windows.h>

#include <commctrl.h>
#include <shobjidl.h>

#include "tests/support/page_fixture.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

class ShellPropSheetExtTest : public PageTest {
protected:
    static BOOL CALLBACK CollectPage(HPROPSHEETPAGE page, LPARAM test) {
        auto* const self = reinterpret_cast<ShellPropSheetExtTest*>(test);
        self->pages.push_back(page);
        if (self->acceptsPages) self->accepted.emplace_back(page);
        return self->acceptsPages;
    }

    ComPointer<IShellPropSheetExt> MakeExtension() const {
        void* object = nullptr;
        EXPECT_EQ(module.Factory()->CreateInstance(nullptr, IID_IShellPropSheetExt, &object), S_OK);
        return ComPointer<IShellPropSheetExt>(static_cast<IShellPropSheetExt*>(object));
    }

    HRESULT AddPages() const { return extension->AddPages(CollectPage, reinterpret_cast<LPARAM>(this)); }

    std::vector<HPROPSHEETPAGE> pages;
    std::vector<platform::Owned<HPROPSHEETPAGE, &DestroyPropertySheetPage>> accepted;
    BOOL acceptsPages = TRUE;
    ComPointer<IShellPropSheetExt> extension = MakeExtension();
};

TEST_F(ShellPropSheetExtTest, IsFoundByItsTwoInterfacesOnly) {
    for (const IID& own : {IID_IShellPropSheetExt, IID_IUnknown}) {
        void* object = nullptr;
        EXPECT_EQ(extension->QueryInterface(own, &object), S_OK);
        EXPECT_EQ(object, extension.get());
        EXPECT_EQ(extension->Release(), 1U);
    }
    for (const IID& other : {IID_IShellExtInit, IID_IClassFactory, kUnknownInterface}) {
        void* object = this;
        EXPECT_EQ(extension->QueryInterface(other, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    extension.reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(ShellPropSheetExtTest, AddsOnePageWhenTheServiceAnswersTheProbe) {
    EXPECT_EQ(AddPages(), S_OK);
    EXPECT_EQ(pages.size(), 1U);
    const ServiceCall probe{0x8003, 0, 0, true};
    EXPECT_EQ(service->Calls(), std::vector<ServiceCall>{probe});
}

TEST_F(ShellPropSheetExtTest, TakesAnyAnswerButMinusOneForAYes) {
    for (const LRESULT reply : {LRESULT{1}, LRESULT{-2}, LRESULT{0x7FFFFFFF}, LRESULT{0xFFFFFFFE}}) {
        service->ReplyTo(ServiceMessage::Probe, reply);
        EXPECT_EQ(AddPages(), S_OK);
    }
    EXPECT_EQ(pages.size(), 4U);
}

TEST_F(ShellPropSheetExtTest, AddsNoPageWhenTheServiceRefuses) {
    service->ReplyTo(ServiceMessage::Probe, -1);
    EXPECT_EQ(AddPages(), S_OK);
    EXPECT_TRUE(pages.empty());
    EXPECT_EQ(service->Calls().size(), 1U);
}

TEST_F(ShellPropSheetExtTest, AddsNoPageWithoutTheService) {
    service.reset();
    EXPECT_EQ(AddPages(), S_OK);
    EXPECT_TRUE(pages.empty());
}

TEST_F(ShellPropSheetExtTest, AsksAgainForEachPage) {
    service->ReplyTo(ServiceMessage::Probe, -1);
    EXPECT_EQ(AddPages(), S_OK);
    service->ReplyTo(ServiceMessage::Probe, 0);
    EXPECT_EQ(AddPages(), S_OK);
    EXPECT_EQ(pages.size(), 1U);
    EXPECT_EQ(service->CountOf(ServiceMessage::Probe), 2U);
}

TEST_F(ShellPropSheetExtTest, DescribesThePageByTheFullStructureAndNoFlags) {
    PROPSHEETPAGEW_V2 described{};
    std::wstring templateName;
    const ReplacedImport<"CreatePropertySheetPageW", decltype(CreatePropertySheetPageW)> create(
        module.Handle(), [&](LPCPROPSHEETPAGEW page) {
            described = *reinterpret_cast<const PROPSHEETPAGEW_V2*>(page);
            templateName = page->pszTemplate;
            return CreatePropertySheetPageW(page);
        });
    EXPECT_EQ(AddPages(), S_OK);
    EXPECT_EQ(described.dwSize, 88U);
    EXPECT_EQ(described.dwFlags, 0U);
    EXPECT_EQ(described.hInstance, module.Handle());
    EXPECT_EQ(templateName, L"KorvenMouseUtil");
    EXPECT_NE(described.pfnDlgProc, nullptr);
    EXPECT_EQ(described.lParam, 0);
}

TEST_F(ShellPropSheetExtTest, ReportsAPageThatCannotBeMade) {
    const ReplacedImport<"CreatePropertySheetPageW", decltype(CreatePropertySheetPageW)> create(
        module.Handle(), [](LPCPROPSHEETPAGEW) { return HPROPSHEETPAGE{}; });
    EXPECT_EQ(AddPages(), E_OUTOFMEMORY);
    EXPECT_TRUE(pages.empty());
}

TEST_F(ShellPropSheetExtTest, DestroysThePageThatTheShellRefuses) {
    std::vector<HPROPSHEETPAGE> destroyed;
    const ReplacedImport<"DestroyPropertySheetPage", decltype(DestroyPropertySheetPage)> destroy(
        module.Handle(), [&](HPROPSHEETPAGE page) {
            destroyed.push_back(page);
            return DestroyPropertySheetPage(page);
        });
    acceptsPages = FALSE;
    EXPECT_EQ(AddPages(), E_FAIL);
    EXPECT_EQ(pages.size(), 1U);
    EXPECT_EQ(destroyed, pages);
}

TEST_F(ShellPropSheetExtTest, PassesTheShellsParameterOn) {
    // CollectPage finds this test by it.
    EXPECT_EQ(AddPages(), S_OK);
    EXPECT_EQ(pages.size(), 1U);
    EXPECT_EQ(extension->AddPages(nullptr, 0), E_POINTER);
}

TEST_F(ShellPropSheetExtTest, ReplacesNoPage) {
    EXPECT_EQ(extension->ReplacePage(0, nullptr, 0), S_OK);
    EXPECT_TRUE(service->Calls().empty());
}

TEST_F(ShellPropSheetExtTest, PageOutlivesItsExtension) {
    EXPECT_EQ(AddPages(), S_OK);
    extension.reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace kvn::test
