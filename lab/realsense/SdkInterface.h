// The Intel RealSense SDK's binary interface as the stand-in runtime serves it, declared by the
// lab on its own from the vendor's published headers (pxcbase.h, pxcsession.h, pxccapture.h,
// pxcdefs.h, pxcimage.h of the SDK 2016 R3 release, API version 11.0) and from nothing of
// libSorvane's, so that a library whose declaration strays from the published layout meets a
// runtime that keeps to it, and a test fails.
//
// An SDK object is what the vendor's compiler (MSVC) makes of its classes: a pointer to a table
// of functions, each taking the object first. The tables are written out here slot by slot in
// the published order, as plain structures of function pointers, so no C++ class layout rule
// stands between the lab and the published order. Slots past the ones a caller of this kind
// uses are filled with traps that record the call.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lab {
namespace realsense {
namespace sdk {

typedef int32_t Status; // 0 success, negative an error
const Status kNoError = 0;
const Status kFeatureUnsupported = -1;
const Status kItemUnavailable = -3;
const Status kDeviceFailed = -201;
const Status kInitFailed = -503;

// Interface ids (QueryInstance, CreateImpl).
const int32_t kBaseInterface = 0;
const int32_t kSessionInterface = 0x20534553; // "SES "
const int32_t kCaptureInterface = static_cast<int32_t>(0x83F72A50);

// Implementation groups and subgroups of an implementation description.
const int32_t kSensorGroup = 0x4;
const int32_t kAudioCaptureSubgroup = 0x1;
const int32_t kVideoCaptureSubgroup = 0x2;

// Camera record values.
const int32_t kModelGeneric = 0;
const int32_t kModelF200 = 0x0020000E;
const int32_t kModelR200 = 0x0020000F;
const int32_t kModelSR300 = 0x00200010;
const int32_t kModelR200Enhanced = 0x0020001F;
const int32_t kOrientationAny = 0;
const int32_t kOrientationUserFacing = 1;
const int32_t kOrientationWorldFacing = 2;
const int32_t kStreamColor = 0x01;
const int32_t kStreamDepth = 0x02;
const int32_t kStreamIr = 0x04;
const int32_t kStreamLeft = 0x08;
const int32_t kStreamRight = 0x10;
const int32_t kStreamAuxColor = 0x20;
const int32_t kConnectionUnknown = 0;
const int32_t kConnectionUsbIntegrated = 1;
const int32_t kConnectionUsbPeripheral = 2;
// A record's rotation is in degrees clockwise: 0, 90, 180 or 270.

struct Version {
    int16_t major;
    int16_t minor;
};

// PXCSession::ImplDesc.
struct ImplementationDescription {
    int32_t group;
    int32_t subgroup;
    int32_t algorithm;
    int32_t iuid;
    Version version;
    int32_t reserved2;
    int32_t merit;
    int32_t vendor;
    int32_t cuids[4];
    wchar_t friendlyName[256];
    int32_t reserved[12];
};

// PXCCapture::DeviceInfo.
struct CameraRecord {
    wchar_t name[224];
    wchar_t serial[32];
    wchar_t did[256];
    int32_t firmware[4];
    float location[2];
    int32_t model;
    int32_t orientation;
    int32_t streams;
    int32_t didx;
    int32_t duid;
    int32_t rotation;
    int32_t connectionType;
    int32_t reserved[11];
};

// Slots that callers of the stand-in must not reach: they record the call and fail.
typedef Status (*StatusTrap)(void *self);
typedef void *(*PointerTrap)(void *self);

// PXCBase: exactly these two slots, no destructor slot.
struct BaseTable {
    void *(*queryInstance)(void *self, int32_t cuid);
    void (*release)(void *self);
};

// PXCSession.
struct SessionTable {
    BaseTable base;
    // MSVC hands a structure back from a member function through a pointer after the object.
    Version *(*queryVersion)(void *self, Version *result);
    Status (*queryImpl)(void *self, ImplementationDescription *templat, int32_t idx, ImplementationDescription *desc);
    Status (*createImpl)(void *self, ImplementationDescription *desc, int32_t iuid, int32_t cuid, void **instance);
    StatusTrap queryModuleDesc;
    PointerTrap createImage;
    PointerTrap createAudio;
    StatusTrap loadImplFromFile;
    StatusTrap unloadImplFromFile;
};

// PXCCapture.
struct CaptureTable {
    BaseTable base;
    int32_t (*queryDeviceNum)(void *self);
    Status (*queryDeviceInfo)(void *self, int32_t didx, CameraRecord *dinfo);
    PointerTrap createDevice; // opens a camera for streaming, which the lab does not offer
    StatusTrap subscribeToCaptureCallbacks;
    StatusTrap unsubscribeToCaptureCallbacks;
};

// An SDK object: its table first, as callers see it, then the stand-in object it belongs to.
template <class Table>
struct Object {
    const Table *table;
    void *owner;
};

// "PXCSession_CreateExt": the SDK version the caller was built for (major, minor, build), a
// reserved value, the options (1: the local runtime), another reserved value, the new session.
typedef Status (*SessionFactory)(int32_t versionMajor, int32_t versionMinor, int32_t versionBuild, int32_t reserved,
                                 int32_t options, int32_t reserved2, void **session);

// The published layout: slot numbers and byte offsets.
constexpr size_t slot(size_t index)
{
    return index * sizeof(void *);
}
static_assert(offsetof(SessionTable, base) == slot(0) && offsetof(SessionTable, queryVersion) == slot(2) &&
                  offsetof(SessionTable, queryImpl) == slot(3) && offsetof(SessionTable, createImpl) == slot(4) &&
                  offsetof(SessionTable, queryModuleDesc) == slot(5) &&
                  offsetof(SessionTable, unloadImplFromFile) == slot(9),
              "PXCSession's slots");
static_assert(offsetof(CaptureTable, queryDeviceNum) == slot(2) && offsetof(CaptureTable, queryDeviceInfo) == slot(3) &&
                  offsetof(CaptureTable, createDevice) == slot(4),
              "PXCCapture's slots");
static_assert(sizeof(BaseTable) == slot(2), "PXCBase has two slots");
static_assert(sizeof(wchar_t) == 2, "UTF-16 text");
static_assert(sizeof(CameraRecord) == 1120 && offsetof(CameraRecord, serial) == 448 &&
                  offsetof(CameraRecord, did) == 512 && offsetof(CameraRecord, firmware) == 1024 &&
                  offsetof(CameraRecord, location) == 1040 && offsetof(CameraRecord, model) == 1048 &&
                  offsetof(CameraRecord, orientation) == 1052 && offsetof(CameraRecord, streams) == 1056 &&
                  offsetof(CameraRecord, didx) == 1060 && offsetof(CameraRecord, duid) == 1064 &&
                  offsetof(CameraRecord, rotation) == 1068 && offsetof(CameraRecord, connectionType) == 1072 &&
                  offsetof(CameraRecord, reserved) == 1076,
              "DeviceInfo as published");
static_assert(sizeof(ImplementationDescription) == 608 && offsetof(ImplementationDescription, iuid) == 12 &&
                  offsetof(ImplementationDescription, version) == 16 &&
                  offsetof(ImplementationDescription, cuids) == 32 &&
                  offsetof(ImplementationDescription, friendlyName) == 48 &&
                  offsetof(ImplementationDescription, reserved) == 560,
              "ImplDesc as published");

} // namespace sdk
} // namespace realsense
} // namespace lab
