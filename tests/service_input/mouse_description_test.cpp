#include "service/input/mouse_description.h"

#include <gtest/gtest.h>

namespace kvn::test {
namespace {

using service::DescribeMouse;
using service::IdsOfDeviceName;
using service::MouseIds;

TEST(MouseDescriptionTest, AUsbMouseIsKnownByItsIds) {
    EXPECT_EQ(IdsOfDeviceName(L"\\\\?\\HID#VID_045E&PID_0040#6&1&0&0000#{378de44c-56ef-11d1-bc8c-00a0c91405dd}"),
              (MouseIds{0x045E, 0x0040}));
    EXPECT_EQ(IdsOfDeviceName(L"\\\\?\\hid#vid_845e&pid_0001#0#"), (MouseIds{0x845E, 1}));
}

TEST(MouseDescriptionTest, ABluetoothMouseHasItsVendorInTheLowHalf) {
    EXPECT_EQ(IdsOfDeviceName(L"\\\\?\\HID#{00001124-0000-1000-8000-00805f9b34fb}_VID&0002045e_PID&0745#8&2&0#"),
              (MouseIds{0x045E, 0x0745}));
    EXPECT_EQ(IdsOfDeviceName(L"\\\\?\\HID#{00001812}_Dev_VID&02046d_PID&b012_REV&0011#"), (MouseIds{0x046D, 0xB012}));
}

TEST(MouseDescriptionTest, AMouseWithoutIdsIsNever0) {
    for (const wchar_t* name : {L"", L"\\\\?\\ACPI#PNP0F03#4&1#", L"VID_0000&PID_1234", L"VID_1234&PID_0000",
                                L"VID_12&PID_1234", L"VID_", L"PID&"}) {
        EXPECT_EQ(IdsOfDeviceName(name), (MouseIds{0xFFFF, 0xFFFF})) << name;
    }
}

TEST(MouseDescriptionTest, ThreeToFiveButtonsCountWithoutATilt) {
    EXPECT_EQ(DescribeMouse({L"", 0, false}, 0).buttonCount, 3);
    EXPECT_EQ(DescribeMouse({L"", 4, false}, 0).buttonCount, 4);
    EXPECT_EQ(DescribeMouse({L"", 16, false}, 0).buttonCount, 5);
    EXPECT_EQ(DescribeMouse({L"", 5, false}, 0).hasTilt, 0U);
}

TEST(MouseDescriptionTest, ATiltMakesSeven) {
    EXPECT_EQ(DescribeMouse({L"", 3, true}, 0).buttonCount, 7);
    EXPECT_EQ(DescribeMouse({L"", 8, true}, 0).hasTilt, 1U);
}

TEST(MouseDescriptionTest, AButtonThatWasPressedIsThere) {
    EXPECT_EQ(DescribeMouse({L"", 3, false}, 0b10000).buttonCount, 5);
    EXPECT_EQ(DescribeMouse({L"", 3, false}, 0b01000).buttonCount, 4);
    EXPECT_EQ(DescribeMouse({L"", 5, false}, 0b00001).buttonCount, 5);
}

}  // namespace
}  // namespace kvn::test
