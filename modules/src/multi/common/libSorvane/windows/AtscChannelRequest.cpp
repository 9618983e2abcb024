#include "AtscChannelRequest.h"
#include "CaptureLog.h"
#include "LogTexts.h"

#include <atlbase.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

} // namespace

bool AtscChannelRequest::tune(ITuner *tuner, ITuningSpace *space, long channel, long minorChannel, ILocator *locator,
                              const Texts &texts)
{
    CComPtr<ITuneRequest> request;
    HRESULT hr = space->CreateTuneRequest(&request);
    if (FAILED(hr) || !request) {
        SORVANE_LOG_ERROR(texts.createFailed << hrText(hr));
        return false;
    }
    CComPtr<IATSCChannelTuneRequest> channelRequest;
    request.QueryInterface(&channelRequest);
    if (!channelRequest) {
        SORVANE_LOG_ERROR("Cannot get an IATSCChannelTuneRequest from an ITuneRequest instance.");
        return false;
    }
    if (!setChannel(channelRequest, channel, minorChannel, locator, texts))
        return false;
    hr = tuner->put_TuneRequest(channelRequest);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR(LogTexts::TUNE_REFUSED << hrText(hr));
        return false;
    }
    return true;
}

bool AtscChannelRequest::setChannel(IATSCChannelTuneRequest *request, long channel, long minorChannel,
                                    ILocator *locator, const Texts &texts)
{
    HRESULT hr = request->put_Channel(channel);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR(texts.channelFailed << hrText(hr));
        return false;
    }
    if (texts.minorChannelFailed && FAILED(hr = request->put_MinorChannel(minorChannel))) {
        SORVANE_LOG_ERROR(texts.minorChannelFailed << hrText(hr));
        return false;
    }
    if (locator && FAILED(hr = request->put_Locator(locator))) {
        SORVANE_LOG_ERROR(texts.locatorFailed << hrText(hr));
        return false;
    }
    return true;
}

} // namespace sorvane
