// The module's exports and the server's count of references.
#include <gtest/gtest.h>

#include <shobjidl.h>

#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

class ExportsTest : public testing::Test {
protected:
    ModuleUnderTest module;
};

TEST_F(ExportsTest, CanUnloadRightAfterLoading) {
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(ExportsTest, CannotUnloadWhileAnythingIsReferenced) {
    void* factory = nullptr;
    ASSERT_EQ(module.GetClassObject(kServerClassId, IID_IClassFactory, &factory), S_OK);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    auto* const classFactory = static_cast<IClassFactory*>(factory);

    void* first = nullptr;
    void* second = nullptr;
    ASSERT_EQ(classFactory->CreateInstance(nullptr, IID_IShellPropSheetExt, &first), S_OK);
    ASSERT_EQ(classFactory->CreateInstance(nullptr, IID_IUnknown, &second), S_OK);
    EXPECT_EQ(classFactory->Release(), 0U);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    EXPECT_EQ(static_cast<IUnknown*>(first)->Release(), 0U);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    EXPECT_EQ(static_cast<IUnknown*>(second)->Release(), 0U);
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(ExportsTest, EveryReferenceCountsForTheServer) {
    const ComPointer<IClassFactory> factory = module.Factory();
    EXPECT_EQ(factory->AddRef(), 2U);
    EXPECT_EQ(factory->AddRef(), 3U);
    EXPECT_EQ(factory->Release(), 2U);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    EXPECT_EQ(factory->Release(), 1U);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
}

TEST_F(ExportsTest, ClassObjectsAreOfTheOwnClassAndTwoInterfacesOnly) {
    struct Row {
        const char* what;
        CLSID classId;
        IID interfaceId;
        HRESULT expected;
    };
    const Row rows[] = {
        {"factory", kServerClassId, IID_IClassFactory, S_OK},
        {"unknown", kServerClassId, IID_IUnknown, S_OK},
        {"another class", IID_IUnknown, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE},
        {"another interface", kServerClassId, IID_IShellPropSheetExt, E_NOINTERFACE},
        {"an interface that nobody knows", kServerClassId, kUnknownInterface, E_NOINTERFACE},
        {"the class is looked at first", kUnknownInterface, kUnknownInterface, CLASS_E_CLASSNOTAVAILABLE},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        void* object = &module;
        EXPECT_EQ(module.GetClassObject(row.classId, row.interfaceId, &object), row.expected);
        EXPECT_EQ(object != nullptr, row.expected == S_OK);
        if (object != nullptr) {
            EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
            EXPECT_EQ(static_cast<IUnknown*>(object)->Release(), 0U);
        }
        EXPECT_EQ(module.CanUnloadNow(), S_OK);
    }
}

TEST_F(ExportsTest, EachClassObjectIsANewOne) {
    const ComPointer<IClassFactory> first = module.Factory();
    const ComPointer<IClassFactory> second = module.Factory();
    EXPECT_NE(second.get(), first.get());
}

TEST_F(ExportsTest, MissingOutPointerIsRefused) {
    EXPECT_EQ(module.GetClassObject(kServerClassId, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(ExportsTest, ControlPanelAppletAnswersNothing) {
    for (UINT message = 0; message <= 20; ++message) {
        EXPECT_EQ(module.ControlPanelApplet(nullptr, message, 0, 0), 0) << message;
        EXPECT_EQ(module.ControlPanelApplet(reinterpret_cast<HWND>(1), message, -1, -1), 0) << message;
    }
}

}  // namespace
}  // namespace kvn::test
