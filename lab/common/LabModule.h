// Module-wide state of sorvanelab.dll: its instance, the server lock and the counts of live lab
// objects and streaming threads that tests read to prove a graph released everything.
#pragma once

#include <windows.h>

namespace lab {

class LabModule {
public:
    static void setInstance(HINSTANCE instance);
    static HINSTANCE instance();

    static void lockServer(bool lock);
    static bool canUnload();

    static void objectCreated();
    static void objectDestroyed();
    static long liveObjects();

    static void threadStarted();
    static void threadEnded();
    static long liveThreads();
};

// Base of every lab COM object: counts it among the live objects from birth to death.
class LiveObject {
public:
    LiveObject() { LabModule::objectCreated(); }
    LiveObject(const LiveObject &) { LabModule::objectCreated(); }
    LiveObject &operator=(const LiveObject &) = default;
    ~LiveObject() { LabModule::objectDestroyed(); }
};

} // namespace lab
