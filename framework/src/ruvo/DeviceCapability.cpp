#include <ruvo/DeviceCapability.h>

namespace ruvo {

namespace {

enum Bits : uint32_t {
    VIDEO_CAPTURE = 1u << 0,
    AUDIO_CAPTURE = 1u << 1,
    ANALOG_TV_TUNER = 1u << 2,
    FM_RADIO_TUNER = 1u << 3,
    DIGITAL_TV_TUNER = 1u << 4,
    WEBCAM = 1u << 5,
    DEPTH_CAMERA = 1u << 6,
};

const struct {
    uint32_t bit;
    const char *name;
} kNames[] = {
    {VIDEO_CAPTURE, "VideoCapture"},  {AUDIO_CAPTURE, "AudioCapture"},      {ANALOG_TV_TUNER, "AnalogTVTuner"},
    {FM_RADIO_TUNER, "FMRadioTuner"}, {DIGITAL_TV_TUNER, "DigitalTVTuner"}, {WEBCAM, "Webcam"},
    {DEPTH_CAMERA, "DepthCamera"},
};

} // namespace

DeviceCapability DeviceCapability::VideoCapture()
{
    return DeviceCapability(VIDEO_CAPTURE);
}
DeviceCapability DeviceCapability::AudioCapture()
{
    return DeviceCapability(AUDIO_CAPTURE);
}
DeviceCapability DeviceCapability::AnalogTVTuner()
{
    return DeviceCapability(ANALOG_TV_TUNER);
}
DeviceCapability DeviceCapability::FMRadioTuner()
{
    return DeviceCapability(FM_RADIO_TUNER);
}
DeviceCapability DeviceCapability::DigitalTVTuner()
{
    return DeviceCapability(DIGITAL_TV_TUNER);
}
DeviceCapability DeviceCapability::Webcam()
{
    return DeviceCapability(WEBCAM);
}
DeviceCapability DeviceCapability::DepthCamera()
{
    return DeviceCapability(DEPTH_CAMERA);
}

DeviceCapability::DeviceCapability() : m_bits(0) {}
DeviceCapability::DeviceCapability(uint32_t bits) : m_bits(bits) {}

DeviceCapability DeviceCapability::operator|(const DeviceCapability &other) const
{
    return DeviceCapability(m_bits | other.m_bits);
}

bool DeviceCapability::isCapable(const DeviceCapability &other) const
{
    return other.m_bits != 0 && (m_bits & other.m_bits) == other.m_bits;
}

bool DeviceCapability::intersects(const DeviceCapability &other) const
{
    return (m_bits & other.m_bits) != 0;
}
bool DeviceCapability::isEmpty() const
{
    return m_bits == 0;
}
bool DeviceCapability::operator==(const DeviceCapability &other) const
{
    return m_bits == other.m_bits;
}

RuvoString DeviceCapability::toString() const
{
    kel::String text;
    for (const auto &entry : kNames) {
        if (!(m_bits & entry.bit))
            continue;
        if (!text.isEmpty())
            text += L", ";
        text += kel::String(entry.name);
    }
    return RuvoString(text);
}

} // namespace ruvo
