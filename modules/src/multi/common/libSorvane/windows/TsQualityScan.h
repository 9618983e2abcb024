// The packet-by-packet score of a block of transport-stream bytes: how many of its whole
// packets are free of the transport error indicator. Packets are only looked for at
// multiples of 188 bytes. The observer hears of every packet (so the library can log them)
// and compiles away when it does nothing.
#pragma once

#include "TsPacketView.h"

namespace sorvane {

class TsQualityScan {
public:
    static const int kNoWholePacket = -2;
    static const int kOutOfSync = -1;

    // Observer: headerFlags(index, byte), packetError(index), outOfSync(index).
    template <class Observer>
    static int score(const unsigned char *data, int length, Observer &observer)
    {
        const int packets = length / TsPacketView::kSize;
        if (packets < 1)
            return kNoWholePacket;
        int errors = 0;
        for (int i = 0; i < packets; ++i) {
            const unsigned char *packet = data + i * TsPacketView::kSize;
            if (packet[0] != TsPacketView::kSyncByte) {
                observer.outOfSync(i);
                return kOutOfSync;
            }
            observer.headerFlags(i, packet[1]);
            if (packet[1] & 0x80) {
                observer.packetError(i);
                ++errors;
            }
        }
        return (packets - errors) * 100 / packets;
    }

    struct Silent {
        void headerFlags(int, unsigned char) {}
        void packetError(int) {}
        void outOfSync(int) {}
    };

    static int score(const unsigned char *data, int length)
    {
        Silent silent;
        return score(data, length, silent);
    }
};

} // namespace sorvane
