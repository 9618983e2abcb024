#include <ruvo/MessageBox2.h>
#include <ruvo/DiagModule.h>

namespace ruvo {

MessageBox2::MessageBox2(const RuvoString &title, const RuvoString &text, int type, int options, int looks, bool flag)
    : m_title(title), m_text(text), m_type(type), m_options(options), m_looks(looks), m_flag(flag), m_return(0)
{
}

bool MessageBox2::display()
{
    DiagBackend *host = DiagModule::backend();
    return host && host->promptEnabled() && host->displayMessageBox(*this);
}

bool MessageBox2::wait(uint32_t milliseconds)
{
    DiagBackend *host = DiagModule::backend();
    return host && host->waitMessageBox(*this, milliseconds);
}

int MessageBox2::getReturn() const
{
    return m_return;
}
RuvoString MessageBox2::title() const
{
    return m_title;
}
RuvoString MessageBox2::text() const
{
    return m_text;
}
int MessageBox2::type() const
{
    return m_type;
}
int MessageBox2::options() const
{
    return m_options;
}
int MessageBox2::looks() const
{
    return m_looks;
}
bool MessageBox2::flag() const
{
    return m_flag;
}
void MessageBox2::setReturn(int value)
{
    m_return = value;
}

} // namespace ruvo
