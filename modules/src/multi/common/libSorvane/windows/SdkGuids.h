// Identifiers the library uses that mingw-w64's SDK headers do not declare, declared with
// nothing but <guiddef.h> so that the value types need no DirectShow headers.
// The first group is defined in strmiids; the BDA categories are missing from mingw-w64
// altogether, so the library defines them under their Windows SDK names and values.
#pragma once

#include "SorvaneExport.h"
#include <guiddef.h>

EXTERN_C const GUID CLSID_VideoInputDeviceCategory;
EXTERN_C const GUID CLSID_SampleGrabber;
EXTERN_C const GUID CLSID_NullRenderer;

EXTERN_C SORVANE_API const GUID KSCATEGORY_BDA_NETWORK_TUNER;
EXTERN_C SORVANE_API const GUID KSCATEGORY_BDA_RECEIVER_COMPONENT;
EXTERN_C SORVANE_API const GUID KSCATEGORY_BDA_NETWORK_PROVIDER;
EXTERN_C SORVANE_API const GUID KSCATEGORY_BDA_TRANSPORT_INFORMATION;

// The generic BDA network provider, missing from mingw-w64.
EXTERN_C SORVANE_API const GUID CLSID_NetworkProvider;
