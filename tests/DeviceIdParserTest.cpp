// Identities read from Plug and Play texts: the codes of SetupAPI instance IDs and the
// instance ID, bus and codes a DirectShow device path carries.
#include "FrameworkTest.h"

#include <CaptureUtil.h>
#include <DeviceIdParser.h>

namespace {

using sorvane::CaptureBusType;
using sorvane::DeviceIdParser;

kel::String text(const wchar_t *value)
{
    return kel::String(value);
}

class DeviceIdParserTest : public sorvane::test::FrameworkTest {};

TEST_F(DeviceIdParserTest, UsbAndPciInstanceIdsGiveTheirCodes)
{
    DeviceIdParser::Codes usb;
    EXPECT_EQ(DeviceIdParser::readInstanceIdCodes(text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B"), usb),
              DeviceIdParser::USB_INSTANCE_ID);
    EXPECT_EQ(usb.vendor, text(L"046D"));
    EXPECT_EQ(usb.device, text(L"0825"));
    EXPECT_EQ(usb.subsys, kel::String());
    EXPECT_EQ(usb.rev, kel::String());

    // Instance IDs are compared upper-cased, so PCI IDs are read by the general rule.
    DeviceIdParser::Codes pci;
    EXPECT_EQ(DeviceIdParser::readInstanceIdCodes(text(L"pci\\ven_14f1&dev_8800&subsys_d6180070&rev_05\\4&2a"), pci),
              DeviceIdParser::OTHER_INSTANCE_ID);
    EXPECT_EQ(pci.vendor, text(L"14F1"));
    EXPECT_EQ(pci.device, text(L"8800"));
    EXPECT_EQ(pci.subsys, text(L"D6180070"));
    EXPECT_EQ(pci.rev, text(L"05"));
}

TEST_F(DeviceIdParserTest, AnIdWithoutVendorMarkersLeavesTheVendorEmpty)
{
    DeviceIdParser::Codes codes;
    DeviceIdParser::readInstanceIdCodes(text(L"ROOT\\MEDIA\\0000"), codes);
    EXPECT_TRUE(codes.vendor.isEmpty());
    EXPECT_TRUE(codes.device.isEmpty());

    // A USB-style vendor in a non-USB ID is still read; a marker at the very end gives "".
    DeviceIdParser::readInstanceIdCodes(text(L"HID\\VID_1234&PID_"), codes);
    EXPECT_EQ(codes.vendor, text(L"1234"));
    EXPECT_EQ(codes.device, kel::String());
}

TEST_F(DeviceIdParserTest, CodesStopAtTheFirstCharacterThatIsNoAsciiLetterOrDigit)
{
    kel::String code = text(L"untouched");
    EXPECT_FALSE(sorvane::CaptureUtil::getCodeAfter(text(L"VID_"), text(L"PCI\\VEN_1"), code));
    EXPECT_EQ(code, text(L"untouched"));
    EXPECT_TRUE(DeviceIdParser::codeAfter(text(L"VID_"), text(L"X\\VID_12ab_3"), code));
    EXPECT_EQ(code, text(L"12ab"));
    EXPECT_TRUE(DeviceIdParser::codeAfter(text(L"VID_"), text(L"VID_9\u00c4"), code));
    EXPECT_EQ(code, text(L"9"));
}

TEST_F(DeviceIdParserTest, ADevicePathGivesItsInstanceIdBusAndCodes)
{
    DeviceIdParser::PathIdentity usb;
    ASSERT_TRUE(DeviceIdParser::readDevicePath(
        text(L"\\\\?\\USB#VID_046D&PID_0825&MI_00#7&1A2B&0&0000#{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL"), usb));
    EXPECT_EQ(usb.deviceInstanceId, text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000"));
    EXPECT_EQ(usb.guid,
              text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000\\{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL"));
    EXPECT_EQ(usb.busType, CaptureBusType::USB());
    EXPECT_EQ(usb.codes.vendor, text(L"046D"));
    EXPECT_EQ(usb.codes.device, text(L"0825"));

    DeviceIdParser::PathIdentity ngene;
    ASSERT_TRUE(
        DeviceIdParser::readDevicePath(text(L"\\\\?\\NGENE#VEN_18C3&DEV_0720&SUBSYS_DD001DD4&REV_01#4&1#{X}"), ngene));
    EXPECT_EQ(ngene.busType, CaptureBusType::PCI());
    EXPECT_EQ(ngene.codes.subsys, text(L"DD001DD4"));
    EXPECT_EQ(ngene.codes.rev, text(L"01"));
}

TEST_F(DeviceIdParserTest, TextsThatAreNoDevicePathsLeaveTheIdentityAlone)
{
    DeviceIdParser::PathIdentity identity;
    identity.busType = CaptureBusType::NOTSET();
    // A software filter's display name has no "#" parts.
    EXPECT_FALSE(DeviceIdParser::readDevicePath(text(L"@DEVICE:SW:{860BB310-5D01-11D0-BD3B-00A0C911CE86}\\LAB WEBCAM"),
                                                identity));
    // Three parts but no "\" before the enumerator: the codes are read, the identity is not.
    EXPECT_FALSE(DeviceIdParser::readDevicePath(text(L"USB#VID_1111&PID_2222#1"), identity));
    EXPECT_TRUE(identity.guid.isEmpty());
    EXPECT_TRUE(identity.deviceInstanceId.isEmpty());
    EXPECT_EQ(identity.codes.vendor, text(L"1111"));
    // An unknown enumerator keeps the bus that was there.
    EXPECT_TRUE(DeviceIdParser::readDevicePath(text(L"\\\\?\\ROOT#MEDIA#0000#{X}"), identity));
    EXPECT_EQ(identity.busType, CaptureBusType::NOTSET());
    EXPECT_EQ(identity.deviceInstanceId, text(L"ROOT\\MEDIA\\0000"));
}

} // namespace
