// Runs an action when the scope is left, by return or by exception.
#pragma once

#include <boost/function.hpp>

namespace sorvane {

class ScopeExit {
public:
    explicit ScopeExit(const boost::function<void()> &action) : m_action(action) {}
    ~ScopeExit()
    {
        if (m_action)
            m_action();
    }
    ScopeExit(const ScopeExit &) = delete;
    ScopeExit &operator=(const ScopeExit &) = delete;

private:
    boost::function<void()> m_action;
};

} // namespace sorvane
