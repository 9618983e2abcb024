// A webcam under test: besides preview and recording it grabs a number of raw frames. It
// picks one pixel-format family the camera offers and tries that family's capabilities from
// the largest frame down, rebuilding the graph after each recoverable failure, until enough
// frames arrive. It also reads the camera's privacy shutter and leaves it open.
#pragma once

#include "CaptureBase.h"
#include "MediaTypeOwner.h"
#include "ScopedHandle.h"
#include "SorvaneExport.h"

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <vector>

namespace sorvane {

class SORVANE_API Webcam : public CaptureBase {
public:
    // How to read the frames getFrames returns.
    struct SORVANE_API FrameInfo {
        // Values of `format`.
        enum {
            FORMAT_UNKNOWN = 0,
            FORMAT_RGB24 = 1, // also MJPG, with isJpeg set
            FORMAT_YUY2 = 2,
            FORMAT_UYVY = 3
        };

        FrameInfo();

        int32_t width;
        int32_t height; // always positive; see bottomUp
        int32_t format;
        bool isJpeg;
        bool bottomUp; // RGB24 rows stored from the bottom line up
    };
    typedef std::vector<boost::shared_ptr<unsigned char>> FrameList;

    // captureDelay: milliseconds of video dropped after the first sample, while the
    // camera's exposure settles.
    Webcam(const ruvo::DiagDevice &device, const kel::String &name, unsigned int captureDelay);
    Webcam(const Webcam &other);
    Webcam &operator=(const Webcam &other);
    ~Webcam() override;

    // Grabs `count` frames, retrying whole attempts as preview and recording do.
    virtual void captureFrames(unsigned long long count);
    // The frames of the last capture (shared, not copied) and their description.
    virtual FrameList getFrames(FrameInfo &info);

    // Orders capabilities largest frame first: wider, then taller.
    static bool compareCapabilities(const AM_MEDIA_TYPE *a, const AM_MEDIA_TYPE *b);

protected:
    void setupDevice() override;
    void setupSampleGrabber() override;
    void doRenderToFile() override;
    void cleanUpCOMInterfaces() override;
    bool isRecoverable(const CaptureException &e) override;

    virtual void doCaptureFrames(unsigned long long count);
    // Wires source -> sample grabber -> null renderer for the capability in m_mediaType.
    virtual void renderToSaver();

public:
    // The camera's privacy control while a graph is built; values stay untouched when the
    // camera has none.
    virtual void getPrivacy(long &value, long &flags);
    virtual void setPrivacy(long value, long flags);

protected:
    void percentCallback(unsigned long long groupSize, unsigned long long index, int percent);

    ScopedHandle m_srcHandle;
    CComPtr<ISampleGrabberCB> m_sampleGrabberCallback;
    MediaTypeOwner m_mediaType;
    FrameList m_frames;
    uint32_t m_captureDelay;
    // Set only by getPrivacy, never cleared: clean-up reopens only a shutter a caller has read.
    bool privacySupported;
    long m_privacyRestoreValue;
    long m_privacyRestoreFlags;

private:
    CComPtr<IAMStreamConfig> findStreamConfig();
    int capabilityCount(IAMStreamConfig *streamConfig);
    void captureWithCapability(IAMStreamConfig *streamConfig, const AM_MEDIA_TYPE *capability, unsigned long long count,
                               unsigned long long groupSize, unsigned long long index);
    void attachCallback(unsigned long long count);
    void detachCallback();
    void takeFramesFromCallback(unsigned long long count);
    // False when a pin is missing or a connection is refused; nothing is left connected then.
    bool connectDirect();
    void renderThroughRenderStream();
    void copyFrom(const Webcam &other);
};

} // namespace sorvane
