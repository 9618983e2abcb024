#include <ruvo/DiagBackend.h>

namespace ruvo {

DiagBackend::~DiagBackend() {}
void DiagBackend::libraryRegistered(const kel::String &) {}
void DiagBackend::eventPosted(const PostedEvent &) {}
void DiagBackend::progress(const kel::String &) {}
void DiagBackend::percentDone(int) {}
void DiagBackend::resetPercentDone() {}
bool DiagBackend::checkForStop()
{
    return false;
}
bool DiagBackend::promptEnabled()
{
    return false;
}
bool DiagBackend::displayMessageBox(MessageBox2 &)
{
    return false;
}
bool DiagBackend::waitMessageBox(MessageBox2 &, uint32_t)
{
    return false;
}

} // namespace ruvo
