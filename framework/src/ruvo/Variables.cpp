#include <ruvo/Variables.h>

namespace ruvo {

void Variables::set(const RuvoString &name, const Value &value)
{
    m_values.put(name.toKELString(), value);
}

bool Variables::get(const kel::String &name, Value &out) const
{
    return m_values.get(name, out);
}

int Variables::size() const
{
    return m_values.size();
}

kel::String Variables::nameAt(int index) const
{
    return m_values.keyAt(index);
}

Value Variables::valueAt(int index) const
{
    return m_values.valueAt(index);
}

kel::String Variables::substitute(const kel::String &text) const
{
    kel::String result;
    int at = 0;
    while (at < text.length()) {
        const int open = text.find(L'{', at);
        const int close = open == kel::String::npos ? kel::String::npos : text.find(L'}', open);
        if (close == kel::String::npos) {
            result += text.substring(at);
            break;
        }
        result += text.substring(at, open - at);
        const kel::String name = text.substring(open + 1, close - open - 1);
        Value value;
        if (get(name, value))
            result += value.toKELString();
        else
            result += text.substring(open, close - open + 1);
        at = close + 1;
    }
    return result;
}

} // namespace ruvo
