// The part of the Intel RealSense SDK's C++ interface this library uses to list depth cameras,
// written from the vendor's published interface description: the session that hands out
// implementations, the video-capture interface and its device record. The runtime is loaded at
// run time (libpxcsession.dll), so only the layout matters here: the order of the virtual
// functions (one table slot each, as the vendor's compiler lays them out), the calling
// convention and the structure members with their sizes. Nothing of the SDK is linked.
//
// Only the leading slots the library calls are declared; an object of the real runtime has more
// after them, which is harmless for callers.
#pragma once

#include <cstdint>

#define PXCAPI __stdcall

typedef wchar_t pxcCHAR;
typedef int16_t pxcI16;
typedef int32_t pxcI32;
typedef int32_t pxcBool;
typedef int32_t pxcUID;
typedef float pxcF32;

// Results of SDK calls: 0 is success, negative values are errors, positive ones warnings.
typedef pxcI32 pxcStatus;
const pxcStatus PXC_STATUS_NO_ERROR = 0;
const pxcStatus PXC_STATUS_FEATURE_UNSUPPORTED = -1;
const pxcStatus PXC_STATUS_ITEM_UNAVAILABLE = -3;
const pxcStatus PXC_STATUS_DEVICE_FAILED = -201;
const pxcStatus PXC_STATUS_INIT_FAILED = -503;

struct PXCPointF32 {
    pxcF32 x;
    pxcF32 y;
};

// Every SDK object: a query for another of its interfaces by interface id, and Release.
class PXCBase {
public:
    static const pxcUID CUID = 0;

    virtual void *PXCAPI QueryInstance(pxcUID cuid) = 0;
    virtual void PXCAPI Release() = 0;

protected:
    // The vendor's virtual destructor occupies the slot after Release (one slot with the
    // vendor's compiler). Callers never use it; it is declared so that the derived
    // interfaces' slots sit where the runtime has them.
    virtual void PXCAPI destructorSlot() = 0;
};

// A video-capture implementation: the cameras one capture module sees.
class PXCCapture : public PXCBase {
public:
    static const pxcUID CUID = static_cast<pxcUID>(0x83F72A50);

    // Bit flags of the streams a camera has.
    enum StreamType {
        STREAM_TYPE_ANY = 0,
        STREAM_TYPE_COLOR = 0x0001,
        STREAM_TYPE_DEPTH = 0x0002,
        STREAM_TYPE_IR = 0x0004,
        STREAM_TYPE_LEFT = 0x0008,
        STREAM_TYPE_RIGHT = 0x0010
    };

    enum DeviceModel {
        DEVICE_MODEL_GENERIC = 0x00000000,
        DEVICE_MODEL_F200 = 0x0020000E,
        DEVICE_MODEL_R200 = 0x0020000F,
        DEVICE_MODEL_SR300 = 0x00200010,
        DEVICE_MODEL_R200_ENHANCED = 0x0020001F
    };

    enum DeviceOrientation {
        DEVICE_ORIENTATION_ANY = 0x0,
        DEVICE_ORIENTATION_USER_FACING = 0x1,
        DEVICE_ORIENTATION_WORLD_FACING = 0x2
    };

    enum RotationAngle {
        ROTATION_ANY = 0x0,
        ROTATION_0_DEGREE = 0x1,
        ROTATION_90_DEGREE = 0x2,
        ROTATION_180_DEGREE = 0x4,
        ROTATION_270_DEGREE = 0x8
    };

    // One camera as the capture module reports it.
    struct DeviceInfo {
        pxcCHAR name[224];    // friendly name
        pxcCHAR serial[32];   // serial number
        pxcCHAR did[256];     // device identifier (symbolic name)
        pxcI32 firmware[4];   // major, minor, revision, build
        PXCPointF32 location; // millimetres from the display's lower left corner
        DeviceModel model;
        DeviceOrientation orientation;
        StreamType streams; // StreamType flags or-ed together
        pxcI32 didx;        // index within its capture module
        pxcI32 duid;        // identifier within the session
        RotationAngle rotation;
        pxcI32 reserved[13];
    };

    // The record of camera `didx` (from 0); fails past the last camera.
    virtual pxcStatus PXCAPI QueryDeviceInfo(pxcI32 didx, DeviceInfo *dinfo) = 0;
};

// The SDK session: lists the implementations installed with the runtime and creates them.
class PXCSession : public PXCBase {
public:
    static const pxcUID CUID = static_cast<pxcUID>(0x20534553); // 'S','E','S',' '

    struct ImplVersion {
        pxcI16 major;
        pxcI16 minor;
    };

    enum ImplGroup { IMPL_GROUP_ANY = 0, IMPL_GROUP_SENSOR = 0x00000004 };

    enum ImplSubgroup {
        IMPL_SUBGROUP_ANY = 0,
        IMPL_SUBGROUP_AUDIO_CAPTURE = 0x00000001,
        IMPL_SUBGROUP_VIDEO_CAPTURE = 0x00000002
    };

    // The description of one implementation; zeroed members of a query template match anything.
    struct ImplDesc {
        ImplGroup group;
        ImplSubgroup subgroup;
        pxcUID algorithm;
        pxcUID iuid; // implementation id
        ImplVersion version;
        pxcI32 reserved2;
        pxcI32 merit;
        pxcI32 vendor;
        pxcUID cuids[4]; // interfaces the implementation offers
        pxcCHAR friendlyName[256];
        pxcI32 reserved[12];
    };

    virtual ImplVersion PXCAPI QueryVersion() = 0;
    // The description of the `idx`-th implementation (from 0) that matches `templat`; fails
    // past the last one.
    virtual pxcStatus PXCAPI QueryImpl(ImplDesc *templat, pxcI32 idx, ImplDesc *desc) = 0;
    // Creates the implementation `desc` describes and returns its interface `cuid`.
    virtual pxcStatus PXCAPI CreateImpl(ImplDesc *desc, pxcUID cuid, void **instance) = 0;
};

// The runtime's one factory export, "PXCSession_CreateExt": the SDK interface version, three
// reserved values, whether the local runtime is asked for, one more reserved value, and where
// the new session goes.
typedef pxcStatus(PXCAPI *PXCSessionCreateExtFunction)(pxcI32 version, pxcI32 reserved1, pxcI32 reserved2,
                                                       pxcI32 reserved3, pxcBool localRuntime, pxcI32 reserved4,
                                                       PXCSession **session);
