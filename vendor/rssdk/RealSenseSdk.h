// The Intel RealSense SDK for Windows, as far as libSorvane calls it to list depth cameras:
// declared here in our own words after the vendor's published headers (pxcdefs.h, pxcstatus.h,
// pxcbase.h, pxcsession.h, pxccapture.h, pxcimage.h) of the SDK 2016 R3 release, API version
// 11.0 in its pxcversion.h. The runtime (libpxcsession.dll) is built by the vendor with MSVC
// and loaded at run time, so what has to agree is its binary layout: the order of the virtual
// functions (one table slot each), their arguments, and the structure members with their sizes
// and offsets. The checks at the end of this file hold the structures
// to the published numbers; the lab's stand-in runtime declares the tables on its own, so a
// slot out of place here fails its tests.
//
// The slots and structures used here are the same in every SDK release for Windows: DeviceInfo
// is 1120 bytes in all of them, and "rotation" and "connectionType" are reserved words (zero)
// in the releases before they were named. Each interface is declared up to the last virtual
// function the library calls or a neighbour of it; the vendor's objects have more slots after
// those, which callers never reach.
#pragma once

#include <cstddef>
#include <cstdint>

// On x64 Windows there is a single calling convention; the vendor spells it out for 32-bit.
#define PXCAPI __stdcall

typedef wchar_t pxcCHAR; // UTF-16
typedef int16_t pxcI16;
typedef int32_t pxcI32;
typedef int32_t pxcUID; // an interface or implementation id, often four characters packed
typedef int32_t pxcBool;
typedef int32_t pxcEnum;
typedef float pxcF32;

// Results of SDK calls: 0 is success, negative values are errors, positive ones warnings.
enum pxcStatus {
    PXC_STATUS_NO_ERROR = 0,
    PXC_STATUS_FEATURE_UNSUPPORTED = -1,
    PXC_STATUS_PARAM_UNSUPPORTED = -2,
    PXC_STATUS_ITEM_UNAVAILABLE = -3,
    PXC_STATUS_HANDLE_INVALID = -101,
    PXC_STATUS_ALLOC_FAILED = -102,
    PXC_STATUS_DEVICE_FAILED = -201,
    PXC_STATUS_DEVICE_LOST = -202,
    PXC_STATUS_DEVICE_BUSY = -203,
    PXC_STATUS_INIT_FAILED = -503
};

struct PXCPointF32 {
    pxcF32 x;
    pxcF32 y;
};

// Every SDK object: exactly two virtual functions, a query for another of its interfaces by
// interface id and Release. No virtual destructor: objects are given back with Release only.
class PXCBase {
public:
    static const pxcUID CUID = 0;

    // This object as interface `cuid`, or null when it has no such interface.
    virtual void *PXCAPI QueryInstance(pxcUID cuid) = 0;
    virtual void PXCAPI Release() = 0;

    PXCBase(const PXCBase &) = delete;
    PXCBase &operator=(const PXCBase &) = delete;

protected:
    PXCBase() = default;
    ~PXCBase() = default;

private:
    void operator delete(void *);
};

// Images: only the rotation values, which a camera record carries. The image interface's own
// functions are not used.
class PXCImage : public PXCBase {
public:
    static const pxcUID CUID = 0x24740F76;

    // How a camera is mounted, in degrees clockwise.
    enum Rotation {
        ROTATION_0_DEGREE = 0,
        ROTATION_90_DEGREE = 90,
        ROTATION_180_DEGREE = 180,
        ROTATION_270_DEGREE = 270
    };

protected:
    ~PXCImage() = default;
};

// A video-capture implementation: the cameras one capture module sees.
class PXCCapture : public PXCBase {
public:
    static const pxcUID CUID = static_cast<pxcUID>(0x83F72A50);

    // One camera, opened for streaming; not used here.
    class Device;

    // Bit flags of the streams a camera has.
    enum StreamType {
        STREAM_TYPE_ANY = 0,
        STREAM_TYPE_COLOR = 0x0001,
        STREAM_TYPE_DEPTH = 0x0002,
        STREAM_TYPE_IR = 0x0004,
        STREAM_TYPE_LEFT = 0x0008,
        STREAM_TYPE_RIGHT = 0x0010,
        STREAM_TYPE_AUX_COLOR = 0x0020 // a second colour camera
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

    enum ConnectionType {
        CONNECTION_TYPE_UNKNOWN = 0,
        CONNECTION_TYPE_USB_INTEGRATED = 1, // built into the computer
        CONNECTION_TYPE_USB_PERIPHERAL = 2  // plugged in
    };

    // One camera as the capture module reports it.
    struct DeviceInfo {
        pxcCHAR name[224];    // friendly name
        pxcCHAR serial[32];   // serial number
        pxcCHAR did[256];     // device identifier (its symbolic link name)
        pxcI32 firmware[4];   // major, minor, revision, build
        PXCPointF32 location; // millimetres from the display's lower left corner
        DeviceModel model;
        DeviceOrientation orientation;
        StreamType streams;            // StreamType flags or-ed together
        pxcI32 didx;                   // index within its capture module
        pxcI32 duid;                   // identifier, unique within the session
        PXCImage::Rotation rotation;   // how the camera is mounted
        ConnectionType connectionType; // how it is attached
        pxcI32 reserved[11];
    };

    // How many cameras this module sees.
    virtual pxcI32 PXCAPI QueryDeviceNum() = 0;
    // The record of camera `didx` (from 0); fails past the last camera.
    virtual pxcStatus PXCAPI QueryDeviceInfo(pxcI32 didx, DeviceInfo *dinfo) = 0;
    // Opens camera `didx` for streaming; not used here.
    virtual Device *PXCAPI CreateDevice(pxcI32 didx) = 0;

protected:
    ~PXCCapture() = default;
};

// The SDK session: lists the implementations installed with the runtime and creates them.
class PXCSession : public PXCBase {
public:
    static const pxcUID CUID = static_cast<pxcUID>(0x20534553); // "SES "

    struct ImplVersion {
        pxcI16 major;
        pxcI16 minor;
    };

    enum ImplGroup { IMPL_GROUP_ANY = 0, IMPL_GROUP_SENSOR = 0x00000004 };

    // Subgroups of IMPL_GROUP_SENSOR.
    enum ImplSubgroup {
        IMPL_SUBGROUP_ANY = 0,
        IMPL_SUBGROUP_AUDIO_CAPTURE = 0x00000001,
        IMPL_SUBGROUP_VIDEO_CAPTURE = 0x00000002
    };

    // The description of one implementation; zero members of a query template match anything.
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

    // The runtime's version. MSVC, which built the runtime, returns a structure from a member
    // function through a hidden pointer after `this`; mingw's g++ would expect it in a register,
    // so outside MSVC the slot is declared as the runtime has it.
#if defined(_MSC_VER)
    virtual ImplVersion PXCAPI QueryVersion() = 0;
#else
    virtual ImplVersion *PXCAPI QueryVersion(ImplVersion *version) = 0;
#endif
    // The description of the `idx`-th implementation (from 0) that matches `templat`; fails
    // past the last one.
    virtual pxcStatus PXCAPI QueryImpl(ImplDesc *templat, pxcI32 idx, ImplDesc *desc) = 0;
    // Creates the implementation `desc` (or, without one, `iuid`) describes and returns its
    // interface `cuid`.
    virtual pxcStatus PXCAPI CreateImpl(ImplDesc *desc, pxcUID iuid, pxcUID cuid, void **instance) = 0;

    // The common form: the implementation chosen by its description alone. Not a slot.
    pxcStatus CreateImpl(ImplDesc *desc, pxcUID cuid, void **instance)
    {
        return CreateImpl(desc, 0, cuid, instance);
    }

protected:
    ~PXCSession() = default;
};

// The runtime's one factory export, "PXCSession_CreateExt", as the SDK's own session glue
// (libpxc.cpp) calls it: the SDK version the caller was built for, a reserved value, the
// options (1 asks for the local runtime), another reserved value, and where the new session
// goes.
typedef pxcStatus(PXCAPI *PXCSessionCreateExtFunction)(pxcI32 versionMajor, pxcI32 versionMinor, pxcI32 versionBuild,
                                                       pxcI32 reserved, pxcEnum options, pxcI32 reserved2,
                                                       PXCSession **session);

// The published layout, member by member.
static_assert(sizeof(pxcCHAR) == 2, "pxcCHAR is a UTF-16 unit");
static_assert(sizeof(pxcStatus) == 4 && sizeof(PXCImage::Rotation) == 4 && sizeof(PXCCapture::StreamType) == 4 &&
                  sizeof(PXCCapture::DeviceModel) == 4 && sizeof(PXCCapture::DeviceOrientation) == 4 &&
                  sizeof(PXCCapture::ConnectionType) == 4 && sizeof(PXCSession::ImplGroup) == 4 &&
                  sizeof(PXCSession::ImplSubgroup) == 4,
              "SDK enumerations are 32-bit");
static_assert(sizeof(PXCCapture::DeviceInfo) == 1120, "DeviceInfo is 1120 bytes");
static_assert(offsetof(PXCCapture::DeviceInfo, name) == 0, "DeviceInfo::name");
static_assert(offsetof(PXCCapture::DeviceInfo, serial) == 448, "DeviceInfo::serial");
static_assert(offsetof(PXCCapture::DeviceInfo, did) == 512, "DeviceInfo::did");
static_assert(offsetof(PXCCapture::DeviceInfo, firmware) == 1024, "DeviceInfo::firmware");
static_assert(offsetof(PXCCapture::DeviceInfo, location) == 1040, "DeviceInfo::location");
static_assert(offsetof(PXCCapture::DeviceInfo, model) == 1048, "DeviceInfo::model");
static_assert(offsetof(PXCCapture::DeviceInfo, orientation) == 1052, "DeviceInfo::orientation");
static_assert(offsetof(PXCCapture::DeviceInfo, streams) == 1056, "DeviceInfo::streams");
static_assert(offsetof(PXCCapture::DeviceInfo, didx) == 1060, "DeviceInfo::didx");
static_assert(offsetof(PXCCapture::DeviceInfo, duid) == 1064, "DeviceInfo::duid");
static_assert(offsetof(PXCCapture::DeviceInfo, rotation) == 1068, "DeviceInfo::rotation");
static_assert(offsetof(PXCCapture::DeviceInfo, connectionType) == 1072, "DeviceInfo::connectionType");
static_assert(offsetof(PXCCapture::DeviceInfo, reserved) == 1076, "DeviceInfo::reserved");
static_assert(sizeof(PXCSession::ImplDesc) == 608, "ImplDesc is 608 bytes");
static_assert(offsetof(PXCSession::ImplDesc, group) == 0, "ImplDesc::group");
static_assert(offsetof(PXCSession::ImplDesc, subgroup) == 4, "ImplDesc::subgroup");
static_assert(offsetof(PXCSession::ImplDesc, algorithm) == 8, "ImplDesc::algorithm");
static_assert(offsetof(PXCSession::ImplDesc, iuid) == 12, "ImplDesc::iuid");
static_assert(offsetof(PXCSession::ImplDesc, version) == 16, "ImplDesc::version");
static_assert(offsetof(PXCSession::ImplDesc, reserved2) == 20, "ImplDesc::reserved2");
static_assert(offsetof(PXCSession::ImplDesc, merit) == 24, "ImplDesc::merit");
static_assert(offsetof(PXCSession::ImplDesc, vendor) == 28, "ImplDesc::vendor");
static_assert(offsetof(PXCSession::ImplDesc, cuids) == 32, "ImplDesc::cuids");
static_assert(offsetof(PXCSession::ImplDesc, friendlyName) == 48, "ImplDesc::friendlyName");
static_assert(offsetof(PXCSession::ImplDesc, reserved) == 560, "ImplDesc::reserved");
// An object is its table pointer alone: no data members the runtime would not have.
static_assert(sizeof(PXCBase) == sizeof(void *) && sizeof(PXCSession) == sizeof(void *) &&
                  sizeof(PXCCapture) == sizeof(void *),
              "SDK interfaces hold nothing but their table");
