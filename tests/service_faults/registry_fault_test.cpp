// The service while registry calls fail.
#include <windows.h>

#include "tests/faults/failed_call.h"
#include "tests/service_faults/application_fixture.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

class ServiceRegistryFaultTest : public ApplicationTest {
protected:
    // Starts the service with the first call of the function failing, then the second, and so on.
    template <typename Refusing>
    void StartWithRefusals(const Refusing& refuse) {
        constexpr int kStep = 3;
        for (FailedCall call; call.number == 0 || call.WasReached();) {
            call = {call.number + kStep, 0};
            SCOPED_TRACE(call.number);
            {
                const auto import = refuse(GetModuleHandleW(nullptr), call);
                ASSERT_NE(import, nullptr);
                EXPECT_TRUE(Start());
                EXPECT_EQ(Probe(), 1);
                EXPECT_NE(StatusText().find(L"hook=alive"), std::wstring::npos);
                End();
            }
        }
    }
};

TEST_F(ServiceRegistryFaultTest, AKeyThatCannotBeOpenedIsNoReasonNotToDriveTheMouse) {
    StartWithRefusals(FailingWith<"RegOpenKeyExW">(RegOpenKeyExW, LSTATUS{ERROR_ACCESS_DENIED}));
}

TEST_F(ServiceRegistryFaultTest, AKeyThatCannotBeMadeIsNoReasonNotToDriveTheMouse) {
    StartWithRefusals(FailingWith<"RegCreateKeyExW">(RegCreateKeyExW, LSTATUS{ERROR_ACCESS_DENIED}));
}

TEST_F(ServiceRegistryFaultTest, AValueThatCannotBeWrittenIsNoReasonNotToDriveTheMouse) {
    StartWithRefusals(FailingWith<"RegSetValueExW">(RegSetValueExW, LSTATUS{ERROR_ACCESS_DENIED}));
}

TEST_F(ServiceRegistryFaultTest, AValueThatCannotBeReadIsNoReasonNotToDriveTheMouse) {
    StartWithRefusals(FailingWith<"RegQueryValueExW">(RegQueryValueExW, LSTATUS{ERROR_ACCESS_DENIED}));
}

}  // namespace
}  // namespace kvn::test
