// The three network providers differ only in the network types they tune: the generic one
// (CLSID_NetworkProvider) takes every network type the lab's tuning spaces use, the ATSC and
// DVB-T providers only their own.
#pragma once

#include <windows.h>

#include "lab/BdaGuids.h"

namespace lab {

enum class ProviderKind { Generic, Atsc, Dvbt };

inline bool providerAccepts(ProviderKind kind, const GUID &networkType)
{
    const bool atsc = IsEqualGUID(networkType, kNetworkTypeAtsc) != FALSE;
    const bool dvbt = IsEqualGUID(networkType, kNetworkTypeDvbt) != FALSE;
    const bool cable = IsEqualGUID(networkType, kNetworkTypeDigitalCable) != FALSE;
    switch (kind) {
    case ProviderKind::Generic:
        return atsc || dvbt || cable;
    case ProviderKind::Atsc:
        return atsc;
    case ProviderKind::Dvbt:
        return dvbt;
    }
    return false;
}

} // namespace lab
