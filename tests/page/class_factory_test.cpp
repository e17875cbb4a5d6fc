#include <gtest/gtest.h>

#include <shobjidl.h>

#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

constexpr IID kUnknownInterface = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};

class ClassFactoryTest : public testing::Test {
protected:
    ModuleUnderTest module;
    ComPointer<IClassFactory> factory = module.Factory();
};

TEST_F(ClassFactoryTest, IsFoundByItsTwoInterfacesOnly) {
    void* object = nullptr;
    EXPECT_EQ(S_OK, factory->QueryInterface(IID_IClassFactory, &object));
    EXPECT_EQ(factory.get(), object);
    EXPECT_EQ(1U, factory->Release());
    EXPECT_EQ(S_OK, factory->QueryInterface(IID_IUnknown, &object));
    EXPECT_EQ(factory.get(), object);
    EXPECT_EQ(1U, factory->Release());

    for (const IID& other : {IID_IShellPropSheetExt, kUnknownInterface}) {
        object = &module;
        EXPECT_EQ(E_NOINTERFACE, factory->QueryInterface(other, &object));
        EXPECT_EQ(nullptr, object);
    }
    EXPECT_EQ(E_POINTER, factory->QueryInterface(IID_IUnknown, nullptr));
}

TEST_F(ClassFactoryTest, InstancesAreHandedOutWithOneReference) {
    for (const IID& wanted : {IID_IShellPropSheetExt, IID_IUnknown}) {
        void* object = nullptr;
        ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, wanted, &object));
        auto* const instance = static_cast<IUnknown*>(object);
        EXPECT_EQ(2U, instance->AddRef());
        EXPECT_EQ(1U, instance->Release());
        EXPECT_EQ(0U, instance->Release());
    }
}

TEST_F(ClassFactoryTest, AggregationIsRefusedBeforeTheInterfaceIsLookedAt) {
    void* object = &module;
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(factory.get(), IID_IUnknown, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(factory.get(), kUnknownInterface, &object));
}

TEST_F(ClassFactoryTest, RefusedInstancesLeaveNothingBehind) {
    void* object = &module;
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, kUnknownInterface, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IClassFactory, &object));
    EXPECT_EQ(E_POINTER, factory->CreateInstance(nullptr, IID_IUnknown, nullptr));
    factory.reset();
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

TEST_F(ClassFactoryTest, LocksNoServer) {
    EXPECT_EQ(E_NOTIMPL, factory->LockServer(TRUE));
    EXPECT_EQ(E_NOTIMPL, factory->LockServer(FALSE));
}

TEST_F(ClassFactoryTest, ManyInstancesCanLiveSideBySide) {
    void* objects[5]{};
    for (void*& object : objects) ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IShellPropSheetExt, &object));
    for (void* object : objects) EXPECT_EQ(0U, static_cast<IUnknown*>(object)->Release());
    factory.reset();
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

}  // namespace
}  // namespace kvn::test
