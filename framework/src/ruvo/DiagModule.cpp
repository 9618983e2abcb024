#include <ruvo/DiagModule.h>
#include <kel/mutex.h>

#include <memory>
#include <vector>

namespace ruvo {

namespace {

// Everything modules declared, owned here for the life of the process.
struct ModuleState {
    kel::mutex lock;
    DiagBackend *backend = nullptr;
    kel::Array<Declaration> declarations;
    kel::Array<kel::String> libraries;
    std::vector<std::unique_ptr<Parameter>> parameters;
    std::vector<std::unique_ptr<Event>> events;
    std::vector<std::unique_ptr<LocalizedString>> strings;
    std::vector<std::unique_ptr<MessageBox2>> boxes;
};

ModuleState &state()
{
    static ModuleState instance;
    return instance;
}

void declare(Declaration::Kind kind, const RuvoString &key, DataType::Type type, const RuvoString &description,
             bool flagA, bool flagB)
{
    Declaration declaration;
    declaration.kind = kind;
    declaration.key = key.toKELString();
    declaration.type = type;
    declaration.description = description.toKELString();
    declaration.flagA = flagA;
    declaration.flagB = flagB;
    state().declarations.add(declaration);
}

template <class T>
T *findByKey(const std::vector<std::unique_ptr<T>> &objects, const kel::String &key)
{
    for (const auto &object : objects) {
        if (object->key().toKELString() == key)
            return object.get();
    }
    return nullptr;
}

void post(PostedEvent::Severity severity, Event *event, const char *file, int line)
{
    DiagBackend *host = DiagModule::backend();
    if (!event || !host)
        return;
    PostedEvent posted;
    posted.severity = severity;
    posted.key = event->key().toKELString();
    posted.message = event->localizedMessage().toKELString();
    posted.variables = event->variables();
    posted.file = kel::String(file);
    posted.line = line;
    host->eventPosted(posted);
}

} // namespace

void DiagModule::registerLibrary(const RuvoString &name)
{
    {
        ModuleState &s = state();
        kel::mutex::scoped_lock guard(s.lock);
        s.libraries.add(name.toKELString());
    }
    if (DiagBackend *host = backend())
        host->libraryRegistered(name.toKELString());
}

Parameter *DiagModule::createParameter(const RuvoString &key, DataType::Type type, const RuvoString &description,
                                       bool flagA, bool flagB)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    declare(Declaration::PARAMETER, key, type, description, flagA, flagB);
    s.parameters.emplace_back(new Parameter(key, type, description, flagA, flagB));
    return s.parameters.back().get();
}

Event *DiagModule::createEvent(const RuvoString &key)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    declare(Declaration::EVENT, key, DataType::NONE, RuvoString(), false, false);
    s.events.emplace_back(new Event(key));
    return s.events.back().get();
}

LocalizedString *DiagModule::createLocalizedString(const RuvoString &key)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    declare(Declaration::LOCALIZED_STRING, key, DataType::NONE, RuvoString(), false, false);
    s.strings.emplace_back(new LocalizedString(key));
    return s.strings.back().get();
}

void DiagModule::error(Event *event, const char *file, int line)
{
    post(PostedEvent::ERROR_EVENT, event, file, line);
}

void DiagModule::warning(Event *event, const char *file, int line)
{
    post(PostedEvent::WARNING_EVENT, event, file, line);
}

void DiagModule::progress(LocalizedString *text)
{
    DiagBackend *host = backend();
    if (host && text)
        host->progress(text->localizedString().toKELString());
}

void DiagModule::percentDone(int percent)
{
    if (DiagBackend *host = backend())
        host->percentDone(percent);
}

void DiagModule::resetPercentDone()
{
    if (DiagBackend *host = backend())
        host->resetPercentDone();
}

bool DiagModule::checkForStop()
{
    DiagBackend *host = backend();
    return host && host->checkForStop();
}

bool DiagModule::promptEnabled()
{
    DiagBackend *host = backend();
    return host && host->promptEnabled();
}

MessageBox2 *DiagModule::createMessageBox2(const RuvoString &title, const RuvoString &text, int type, int options,
                                           int looks, bool flag)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    s.boxes.emplace_back(new MessageBox2(title, text, type, options, looks, flag));
    return s.boxes.back().get();
}

void DiagModule::setBackend(DiagBackend *backend)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    s.backend = backend;
}

DiagBackend *DiagModule::backend()
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    return s.backend;
}

kel::Array<Declaration> DiagModule::declarations()
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    return s.declarations;
}

kel::Array<kel::String> DiagModule::registeredLibraries()
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    return s.libraries;
}

Parameter *DiagModule::findParameter(const kel::String &key)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    return findByKey(s.parameters, key);
}

Event *DiagModule::findEvent(const kel::String &key)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    return findByKey(s.events, key);
}

LocalizedString *DiagModule::findLocalizedString(const kel::String &key)
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    return findByKey(s.strings, key);
}

void DiagModule::unsetAllParameters()
{
    ModuleState &s = state();
    kel::mutex::scoped_lock guard(s.lock);
    for (auto &parameter : s.parameters)
        parameter->unset();
}

} // namespace ruvo
