#include "common/LabModule.h"

namespace lab {

namespace {
HINSTANCE g_instance = nullptr;
volatile LONG g_serverLocks = 0;
volatile LONG g_liveObjects = 0;
volatile LONG g_liveThreads = 0;
} // namespace

void LabModule::setInstance(HINSTANCE instance)
{
    g_instance = instance;
}
HINSTANCE LabModule::instance()
{
    return g_instance;
}

void LabModule::lockServer(bool lock)
{
    if (lock)
        InterlockedIncrement(&g_serverLocks);
    else
        InterlockedDecrement(&g_serverLocks);
}

bool LabModule::canUnload()
{
    return g_serverLocks == 0 && g_liveObjects == 0;
}

void LabModule::objectCreated()
{
    InterlockedIncrement(&g_liveObjects);
}
void LabModule::objectDestroyed()
{
    InterlockedDecrement(&g_liveObjects);
}
long LabModule::liveObjects()
{
    return g_liveObjects;
}

void LabModule::threadStarted()
{
    InterlockedIncrement(&g_liveThreads);
}
void LabModule::threadEnded()
{
    InterlockedDecrement(&g_liveThreads);
}
long LabModule::liveThreads()
{
    return g_liveThreads;
}

} // namespace lab
