#include <windows.h>

#include <commctrl.h>
#include <shobjidl.h>

#include "tests/support/page_fixture.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

constexpr IID kUnknownInterface = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};

class ShellPropSheetExtTest : public PageTest {
protected:
    static BOOL CALLBACK CollectPage(HPROPSHEETPAGE page, LPARAM test) {
        auto* const self = reinterpret_cast<ShellPropSheetExtTest*>(test);
        self->pages.push_back(page);
        return self->acceptsPages;
    }

    ComPointer<IShellPropSheetExt> MakeExtension() const {
        void* object = nullptr;
        EXPECT_EQ(S_OK, module.Factory()->CreateInstance(nullptr, IID_IShellPropSheetExt, &object));
        return ComPointer<IShellPropSheetExt>(static_cast<IShellPropSheetExt*>(object));
    }

    HRESULT AddPages() const { return extension->AddPages(CollectPage, reinterpret_cast<LPARAM>(this)); }

    void TearDown() override {
        if (!acceptsPages) return;
        for (const HPROPSHEETPAGE page : pages) DestroyPropertySheetPage(page);
    }

    std::vector<HPROPSHEETPAGE> pages;
    BOOL acceptsPages = TRUE;
    ComPointer<IShellPropSheetExt> extension = MakeExtension();
};

TEST_F(ShellPropSheetExtTest, IsFoundByItsTwoInterfacesOnly) {
    for (const IID& own : {IID_IShellPropSheetExt, IID_IUnknown}) {
        void* object = nullptr;
        EXPECT_EQ(S_OK, extension->QueryInterface(own, &object));
        EXPECT_EQ(extension.get(), object);
        EXPECT_EQ(1U, extension->Release());
    }
    for (const IID& other : {IID_IShellExtInit, IID_IClassFactory, kUnknownInterface}) {
        void* object = this;
        EXPECT_EQ(E_NOINTERFACE, extension->QueryInterface(other, &object));
        EXPECT_EQ(nullptr, object);
    }
    EXPECT_EQ(S_FALSE, module.CanUnloadNow());
    extension.reset();
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

TEST_F(ShellPropSheetExtTest, AddsOnePageWhenTheServiceAnswersTheProbe) {
    EXPECT_EQ(S_OK, AddPages());
    EXPECT_EQ(1U, pages.size());
    const ServiceCall probe{0x8003, 0, 0, true};
    EXPECT_EQ(std::vector<ServiceCall>{probe}, service->Calls());
}

TEST_F(ShellPropSheetExtTest, TakesAnyAnswerButMinusOneForAYes) {
    for (const LRESULT reply : {LRESULT{1}, LRESULT{-2}, LRESULT{0x7FFFFFFF}, LRESULT{0xFFFFFFFE}}) {
        service->ReplyTo(ServiceMessage::Probe, reply);
        EXPECT_EQ(S_OK, AddPages());
    }
    EXPECT_EQ(4U, pages.size());
}

TEST_F(ShellPropSheetExtTest, AddsNoPageWhenTheServiceRefuses) {
    service->ReplyTo(ServiceMessage::Probe, -1);
    EXPECT_EQ(S_OK, AddPages());
    EXPECT_TRUE(pages.empty());
    EXPECT_EQ(1U, service->Calls().size());
}

TEST_F(ShellPropSheetExtTest, AddsNoPageWithoutTheService) {
    service.reset();
    EXPECT_EQ(S_OK, AddPages());
    EXPECT_TRUE(pages.empty());
}

TEST_F(ShellPropSheetExtTest, AsksAgainForEachPage) {
    service->ReplyTo(ServiceMessage::Probe, -1);
    EXPECT_EQ(S_OK, AddPages());
    service->ReplyTo(ServiceMessage::Probe, 0);
    EXPECT_EQ(S_OK, AddPages());
    EXPECT_EQ(1U, pages.size());
    EXPECT_EQ(2U, service->CountOf(ServiceMessage::Probe));
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
    EXPECT_EQ(S_OK, AddPages());
    EXPECT_EQ(88U, described.dwSize);
    EXPECT_EQ(0U, described.dwFlags);
    EXPECT_EQ(module.Handle(), described.hInstance);
    EXPECT_EQ(L"KorvenMouseUtil", templateName);
    EXPECT_NE(nullptr, described.pfnDlgProc);
    EXPECT_EQ(0, described.lParam);
}

TEST_F(ShellPropSheetExtTest, ReportsAPageThatCannotBeMade) {
    const ReplacedImport<"CreatePropertySheetPageW", decltype(CreatePropertySheetPageW)> create(
        module.Handle(), [](LPCPROPSHEETPAGEW) { return HPROPSHEETPAGE{}; });
    EXPECT_EQ(E_OUTOFMEMORY, AddPages());
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
    EXPECT_EQ(E_FAIL, AddPages());
    EXPECT_EQ(1U, pages.size());
    EXPECT_EQ(pages, destroyed);
}

TEST_F(ShellPropSheetExtTest, PassesTheShellsParameterOn) {
    // CollectPage finds this test by it.
    EXPECT_EQ(S_OK, AddPages());
    EXPECT_EQ(1U, pages.size());
    EXPECT_EQ(E_POINTER, extension->AddPages(nullptr, 0));
}

TEST_F(ShellPropSheetExtTest, ReplacesNoPage) {
    EXPECT_EQ(S_OK, extension->ReplacePage(0, nullptr, 0));
    EXPECT_TRUE(service->Calls().empty());
}

TEST_F(ShellPropSheetExtTest, PageOutlivesItsExtension) {
    EXPECT_EQ(S_OK, AddPages());
    extension.reset();
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

}  // namespace
}  // namespace kvn::test
