#pragma once

#include <ruvo/DiagBackend.h>
#include <ruvo/Event.h>
#include <ruvo/LocalizedString.h>
#include <ruvo/MessageBox2.h>
#include <ruvo/Parameter.h>
#include <kel/Array.h>

namespace ruvo {

// One declaration a module made, in the order made.
struct Declaration {
    enum Kind { PARAMETER, EVENT, LOCALIZED_STRING };
    Kind kind;
    kel::String key;
    DataType::Type type;
    kel::String description;
    bool flagA;
    bool flagB;
};

// The module API. Every object it creates is owned by the framework for the life of
// the process.
class RUVO_API DiagModule {
public:
    static void registerLibrary(const RuvoString &name);
    static Parameter *createParameter(const RuvoString &key, DataType::Type type, const RuvoString &description,
                                      bool flagA, bool flagB);
    static Event *createEvent(const RuvoString &key);
    static LocalizedString *createLocalizedString(const RuvoString &key);

    static void error(Event *event, const char *file, int line);
    static void warning(Event *event, const char *file, int line);
    static void progress(LocalizedString *text);
    static void percentDone(int percent);
    static void resetPercentDone();
    static bool checkForStop();
    static bool promptEnabled();
    static MessageBox2 *createMessageBox2(const RuvoString &title, const RuvoString &text, int type, int options,
                                          int looks, bool flag);

    // Host side.
    static void setBackend(DiagBackend *backend);
    static DiagBackend *backend();
    static kel::Array<Declaration> declarations();
    static kel::Array<kel::String> registeredLibraries();
    static Parameter *findParameter(const kel::String &key);
    static Event *findEvent(const kel::String &key);
    static LocalizedString *findLocalizedString(const kel::String &key);
    static void unsetAllParameters();
};

} // namespace ruvo
