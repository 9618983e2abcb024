#include "LogCapture.h"

namespace sorvane {
namespace test {

LogCapture::LogCapture() : m_previousPriority(kel::LogFactory::getPriority())
{
    kel::LogFactory::setPriority(kel::LOG_DETAIL);
    kel::LogFactory::setSink([this](const kel::String &category, int priority, const kel::String &message) {
        std::lock_guard<std::mutex> guard(m_lock);
        m_lines.push_back(Line{category, priority, message});
    });
}

LogCapture::~LogCapture()
{
    kel::LogFactory::setSink(kel::LogFactory::Sink());
    kel::LogFactory::setPriority(m_previousPriority);
}

std::vector<LogCapture::Line> LogCapture::lines() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_lines;
}

std::vector<LogCapture::Line> LogCapture::find(const kel::String &text) const
{
    std::vector<Line> found;
    for (const Line &line : lines()) {
        if (line.message.contains(text))
            found.push_back(line);
    }
    return found;
}

bool LogCapture::contains(const kel::String &text) const
{
    return !find(text).empty();
}

void LogCapture::clear()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_lines.clear();
}

} // namespace test
} // namespace sorvane
