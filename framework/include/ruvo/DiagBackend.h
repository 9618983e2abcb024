#pragma once

#include <ruvo/Variables.h>
#include <cstdint>

namespace ruvo {

class MessageBox2;

// An event as it was when posted: the key, its text and variables at that moment.
struct PostedEvent {
    enum Severity { ERROR_EVENT, WARNING_EVENT };
    Severity severity;
    kel::String key;
    kel::String message;
    Variables variables;
    kel::String file;
    int line;
};

// What a host does with a test's output and questions. DiagModule forwards to the
// installed backend; with none installed output is dropped and prompts are off.
class RUVO_API DiagBackend {
public:
    virtual ~DiagBackend();

    virtual void libraryRegistered(const kel::String &name);
    virtual void eventPosted(const PostedEvent &event);
    virtual void progress(const kel::String &text);
    virtual void percentDone(int percent);
    virtual void resetPercentDone();
    virtual bool checkForStop();
    virtual bool promptEnabled();
    // The host shows the box; false when it cannot.
    virtual bool displayMessageBox(MessageBox2 &box);
    // The host waits for the user's answer and stores it with box.setReturn().
    virtual bool waitMessageBox(MessageBox2 &box, uint32_t milliseconds);
};

} // namespace ruvo
