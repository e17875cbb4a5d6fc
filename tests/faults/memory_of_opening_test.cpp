// Memory that is refused while the page is created and opened.
#include <cctype>
#include <cstdlib>
#include <thread>
#include <tuple>
#include <utility>

#include "resources/resource.h"
#include "tests/faults/memory_fault_fixture.h"

namespace kvn::test {
namespace {

HRESULT ResultWithoutMemory(const ModuleUnderTest& module, ModuleMemory& memory) {
    void* object = nullptr;
    memory.ExhaustFrom(1);
    const HRESULT result = module.GetClassObject(kServerClassId, IID_IClassFactory, &object);
    EXPECT_TRUE(memory.StopRefusing());
    return result;
}

TEST(FirstExceptionTest, IsThrownWithoutAnyMemory) {
    ModuleUnderTest::DropLoadings();
    const ModuleUnderTest module;
    ModuleMemory memory(module.Handle());
    EXPECT_EQ(ResultWithoutMemory(module, memory), E_OUTOFMEMORY);
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST(FirstExceptionTest, OfAnotherThreadIsThrownWithoutAnyMemory) {
    ModuleUnderTest::DropLoadings();
    const ModuleUnderTest module;
    ModuleMemory memory(module.Handle());
    HRESULT result = S_OK;
    std::thread([&] { result = ResultWithoutMemory(module, memory); }).join();
    EXPECT_EQ(result, E_OUTOFMEMORY);
}

TEST(FirstExceptionTest, OfAnotherThreadIsThrownAfterTheReserveWasUsedOnce) {
    ModuleUnderTest::DropLoadings();
    const ModuleUnderTest module;
    ModuleMemory memory(module.Handle());
    EXPECT_EQ(ResultWithoutMemory(module, memory), E_OUTOFMEMORY);
    // With memory available again, any call refills the reserve.
    module.Factory();
    HRESULT result = S_OK;
    std::thread([&] { result = ResultWithoutMemory(module, memory); }).join();
    EXPECT_EQ(result, E_OUTOFMEMORY);
}

using MemoryOfExtensionTest = MemoryFaultTest;

TEST_F(MemoryOfExtensionTest, ARefusedFactoryIsReported) {
    HRESULT result = S_OK;
    SweepRefusals({[] {}, [&] { result = page.MakeFactory(); },
                   [&] {
                       EXPECT_TRUE(result == S_OK || result == E_OUTOFMEMORY) << result;
                       CloseAndExpectNoLeak();
                   }});
    EXPECT_EQ(result, S_OK);
}

TEST_F(MemoryOfExtensionTest, ARefusedExtensionIsReportedAndARefusedPanelIsMadeLater) {
    HRESULT result = S_OK;
    SweepRefusals({[&] { ASSERT_EQ(page.MakeFactory(), S_OK); }, [&] { result = page.MakeExtension(); },
                   [&] {
                       EXPECT_TRUE(result == S_OK || result == E_OUTOFMEMORY) << result;
                       if (result == S_OK) {
                           EXPECT_EQ(page.AddPages(), S_OK);
                           EXPECT_TRUE(page.WasAdded());
                           page.Open();
                           ExpectSuccessfulApply();
                       }
                       CloseAndExpectNoLeak();
                   }});
    EXPECT_EQ(result, S_OK);
}

TEST_F(MemoryOfExtensionTest, APanelThatIsRefusedTwiceMeansNoPage) {
    HRESULT result = S_OK;
    const auto makeWithoutPanel = [&] {
        ASSERT_EQ(page.MakeFactory(), S_OK);
        memory.Refuse(2, 2);
        ASSERT_EQ(page.MakeExtension(), S_OK);
        EXPECT_TRUE(memory.StopRefusing());
    };
    SweepRefusals({makeWithoutPanel, [&] { result = page.AddPages(); },
                   [&] {
                       EXPECT_EQ(result, page.WasAdded() ? S_OK : E_OUTOFMEMORY);
                       CloseAndExpectNoLeak();
                   }});
    EXPECT_EQ(result, S_OK);
}

// Notices when the parser of the profile file is running, because only that code leaks: it loses its tree if memory is
// refused. The parser begins by skipping white space, and is done when the first text is decoded.
class ParserWatch {
public:
    ParserWatch(HMODULE module, ModuleMemory& memory)
        : read(module,
               [this](HANDLE file, LPVOID bytes, DWORD size, LPDWORD done, LPOVERLAPPED overlapped) -> WINBOOL {
                   isRead = true;
                   return ReadFile(file, bytes, size, done, overlapped);
               }),
          look(module,
               [this, &memory](int character) {
                   if (std::exchange(isRead, false)) memory.BeginCarelessWork();
                   return std::isspace(character);
               }),
          decode(module, [&memory](wchar_t* text, const char* bytes, std::size_t size, _locale_t locale) {
              memory.EndCarelessWork();
              return _mbstowcs_l(text, bytes, size, locale);
          }) {}

private:
    bool isRead = false;  // and not yet parsed
    ReplacedImport<"ReadFile", decltype(ReadFile)> read;
    ReplacedImport<"isspace", int(int)> look;
    ReplacedImport<"_mbstowcs_l", std::size_t(wchar_t*, const char*, std::size_t, _locale_t)> decode;
};

// The rounds of one sweep are split into shares, so that no test takes long.
class MemoryOfOpeningTest : public MemoryFaultTest, public testing::WithParamInterface<std::tuple<bool, int>> {
protected:
    static constexpr int kShares = 6;

    void OpenInEveryRound(const std::function<void()>& prepare, const std::function<void()>& check,
                          const std::function<bool()>& isEnough = {}) {
        const auto [once, share] = GetParam();
        const auto add = [&] {
            prepare();
            page.Add();
        };
        const auto applyAndClose = [&] {
            Apply();
            check();
            CloseAndExpectNoLeak();
        };
        const int made =
            SweepRefusals({once, share + 1, kShares}, {add, [&] { page.Open(); }, applyAndClose, isEnough});
        EXPECT_GT(made, 20);
    }

    // The state after an apply of this page; closes the page.
    SavedState StateAfterApply() {
        page.AddAndOpen();
        ApplyEverything();
        page.Close();
        return State();
    }

    // Expects only these values, some or all of them.
    void ExpectOnlyValuesOf(const SavedState& state) const {
        for (const auto& [name, value] : State().values) {
            const auto found = state.values.find(name);
            ASSERT_NE(found, state.values.end()) << name;
            EXPECT_EQ(value, found->second) << name;
        }
    }

private:
    // A page that could not be set up can be applied, too.
    void Apply() {
        const bool canTell = std::get<0>(GetParam());
        const bool hasPanel = GetWindowLongPtrW(page.Window(), GWLP_USERDATA) != 0;
        hadPanes = page.ButtonPane() != nullptr;
        if (!hadPanes && hasPanel && canTell) {
            EXPECT_EQ(page.Messages(), std::vector<std::wstring>{L"Settings failed."});
        }
        page.ForgetMessages();
        // The contents of an incomplete pane must never be saved.
        if (hadPanes && GetWindowLongPtrW(page.ButtonPane(), GWLP_USERDATA) == 0) {
            SendMessageW(page.Window(), WM_COMMAND, IDC_PANE_RESET, 0);
            page.ForgetMessages();
        }
        EXPECT_TRUE(page.Apply());
        EXPECT_TRUE(page.Messages().empty());
        ExpectNoUnfinishedFile();
    }

    const ParserWatch parser{module.Handle(), memory};

protected:
    bool hadPanes = false;
};

INSTANTIATE_TEST_SUITE_P(InShares, MemoryOfOpeningTest, testing::Combine(testing::Bool(), testing::Range(0, 6)));

TEST_P(MemoryOfOpeningTest, LosesNothingOfTheUsersProfiles) {
    const SavedState whole = StateAfterApply();
    OpenInEveryRound([&] { ForgetValues(); },
                     [&] {
                         EXPECT_EQ(State().file, whole.file);
                         ExpectOnlyValuesOf(whole);
                     });
}

TEST_P(MemoryOfOpeningTest, AFirstDefaultProfileIsWholeOrMissing) {
    ForgetProfiles();
    const SavedState whole = StateAfterApply();
    OpenInEveryRound([&] { ForgetProfiles(); },
                     [&] {
                         EXPECT_EQ(State().file, State().file.empty() ? "" : whole.file);
                         ExpectOnlyValuesOf(whole);
                     },
                     // Once there is a profile, this is an opening like any other.
                     [&] { return hadPanes; });
    // After any fault, the next opening works like the first.
    ForgetProfiles();
    EXPECT_EQ(StateAfterApply(), whole);
}

}  // namespace
}  // namespace kvn::test
