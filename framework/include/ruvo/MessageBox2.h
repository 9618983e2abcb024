#pragma once

#include <ruvo/RuvoString.h>
#include <cstdint>

namespace ruvo {

// A question put to the user through the host. Owned by the framework.
class RUVO_API MessageBox2 {
public:
    MessageBox2(const RuvoString &title, const RuvoString &text, int type, int options, int looks, bool flag);

    // False when the host cannot show it (prompts off, no user).
    bool display();
    // False when no answer came within `milliseconds`.
    bool wait(uint32_t milliseconds);
    int getReturn() const;

    RuvoString title() const;
    RuvoString text() const;
    int type() const;
    int options() const;
    int looks() const;
    bool flag() const;
    void setReturn(int value);

private:
    RuvoString m_title;
    RuvoString m_text;
    int m_type;
    int m_options;
    int m_looks;
    bool m_flag;
    int m_return;
};

} // namespace ruvo
