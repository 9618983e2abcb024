// Stateless helpers of the capture classes: programs that hold the capture hardware,
// media-type copies, pin tests, identifier parsing, the default country, and the text
// dumps of graphs, filters, pins, media types and GUIDs that feed log messages.
#pragma once

#include "SorvaneExport.h"
#include <atlbase.h>
#include <dshow.h>
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CaptureUtil {
public:
    // True when a running process has this executable name. Only the process names are
    // lower-cased, so callers pass lower-case names.
    static bool processIsRunning(const kel::String &exeName);
    // Windows Media Center holds the TV tuners while "ehshell.exe" or "ehrec.exe" runs.
    static bool mediaCenterIsRunning();
    // True when the code's low byte is 31 (ERROR_GEN_FAILURE) and the FastAccess tray
    // program, which holds the camera, runs.
    static bool fastAccessCheck(long code);

    // Graphs are not published in the running object table; kept for callers.
    static long addGraphToRot(IUnknown *graph, unsigned long *registration);
    static void removeGraphFromRot(unsigned long registration);

    // A deep copy in task memory (format block included, owner referenced), or null for a
    // null source or when memory runs out. Free it with deleteMediaType.
    static AM_MEDIA_TYPE *createMediaType(const AM_MEDIA_TYPE *source);
    static void deleteMediaType(AM_MEDIA_TYPE *mediaType);
    // Frees what a media type holds (format block, owner reference) but not the structure.
    static void freeMediaType(AM_MEDIA_TYPE &mediaType);

    static bool isUnconnectedOutputPin(CComPtr<IPin> &pin);

    // ASCII letters and digits only.
    static bool isAlphaNum(kel::Char16 c);
    // The letters and digits right after the first `marker` in `text`; false, and `code`
    // untouched, when the marker is absent.
    static bool getCodeAfter(const kel::String &marker, const kel::String &text, kel::String &code);

    // The telephone country code for the user interface language (1 when unknown).
    static int getDefaultCountryCode();

    // "{XXXXXXXX-...}", or "UNKNOWN" when the system cannot format it.
    static kel::String CLSIDToString(GUID id);
    // The filter's name in its graph; empty when it has none.
    static kel::String filterName(IBaseFilter *filter);

    // Diagnostics for log lines.
    // The SDK name of a DirectShow or BDA identifier, else its registry form.
    static kel::String guidName(const GUID &id);
    static kel::String subTypeToString(const GUID &subType);
    static kel::String formatTypeToString(const GUID &formatType);
    static kel::String mediaTypeToString(const AM_MEDIA_TYPE *mediaType);
    // The name of a tuner input type: cable, antenna, or the current input (-1).
    static kel::String tunerTypeToString(long inputType);
    static kel::String pinToString(IPin *pin);
    static kel::String filterToString(IBaseFilter *filter);
    static kel::String graphToString(IFilterGraph *graph);
};

} // namespace sorvane
