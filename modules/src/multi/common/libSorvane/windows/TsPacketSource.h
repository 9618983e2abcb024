// Something that hands out transport-stream packets one at a time (the packet buffer).
#pragma once

namespace sorvane {

class TsPacketSource {
public:
    // Copies the next 188-byte packet into `packet`; false when there is none.
    virtual bool getNextPacket(unsigned char *packet) = 0;

protected:
    ~TsPacketSource() {}
};

} // namespace sorvane
