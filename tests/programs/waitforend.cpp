// Stays alive until told to end, so tests can see it in the process list under any name.
// Usage: waitforend <ready event> <end event>. Signals the first once running, then waits
// for the second (at most a minute, so a failed test never leaves it behind).
#include <windows.h>

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    HANDLE ready = OpenEventA(EVENT_MODIFY_STATE, FALSE, argv[1]);
    HANDLE end = OpenEventA(SYNCHRONIZE, FALSE, argv[2]);
    if (!ready || !end)
        return 3;
    SetEvent(ready);
    const DWORD waited = WaitForSingleObject(end, 60000);
    CloseHandle(ready);
    CloseHandle(end);
    return waited == WAIT_OBJECT_0 ? 0 : 4;
}
