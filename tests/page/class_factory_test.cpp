#include <gtest/gtest.h>

#include <shobjidl.h>

#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

class ClassFactoryTest : public testing::Test {
protected:
    ModuleUnderTest module;
    ComPointer<IClassFactory> factory = module.Factory();
};

TEST_F(ClassFactoryTest, IsFoundByItsTwoInterfacesOnly) {
    void* object = nullptr;
    EXPECT_EQ(factory->QueryInterface(IID_IClassFactory, &object), S_OK);
    EXPECT_EQ(object, factory.get());
    EXPECT_EQ(factory->Release(), 1U);
    EXPECT_EQ(factory->QueryInterface(IID_IUnknown, &object), S_OK);
    EXPECT_EQ(object, factory.get());
    EXPECT_EQ(factory->Release(), 1U);

    for (const IID& other : {IID_IShellPropSheetExt, kUnknownInterface}) {
        object = &module;
        EXPECT_EQ(factory->QueryInterface(other, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ClassFactoryTest, InstancesAreHandedOutWithOneReference) {
    for (const IID& wanted : {IID_IShellPropSheetExt, IID_IUnknown}) {
        void* object = nullptr;
        ASSERT_EQ(factory->CreateInstance(nullptr, wanted, &object), S_OK);
        auto* const instance = static_cast<IUnknown*>(object);
        EXPECT_EQ(instance->AddRef(), 2U);
        EXPECT_EQ(instance->Release(), 1U);
        EXPECT_EQ(instance->Release(), 0U);
    }
}

TEST_F(ClassFactoryTest, AggregationIsRefusedBeforeTheInterfaceIsLookedAt) {
    void* object = &module;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(factory.get(), kUnknownInterface, &object), CLASS_E_NOAGGREGATION);
}

TEST_F(ClassFactoryTest, RefusedInstancesLeaveNothingBehind) {
    void* object = &module;
    EXPECT_EQ(factory->CreateInstance(nullptr, kUnknownInterface, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    factory.reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(ClassFactoryTest, LocksNoServer) {
    EXPECT_EQ(factory->LockServer(TRUE), E_NOTIMPL);
    EXPECT_EQ(factory->LockServer(FALSE), E_NOTIMPL);
}

TEST_F(ClassFactoryTest, ManyInstancesCanLiveSideBySide) {
    void* objects[5]{};
    for (void*& object : objects) ASSERT_EQ(factory->CreateInstance(nullptr, IID_IShellPropSheetExt, &object), S_OK);
    for (void* object : objects) EXPECT_EQ(static_cast<IUnknown*>(object)->Release(), 0U);
    factory.reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace kvn::test
