#include <ruvo/RecordingBackend.h>
#include <ruvo/MessageBox2.h>

namespace ruvo {

RecordingBackend::RecordingBackend() : percentResets(0), stopChecks(0), m_promptEnabled(false), m_stopAt(0) {}

void RecordingBackend::libraryRegistered(const kel::String &name)
{
    libraries.push_back(name);
}
void RecordingBackend::eventPosted(const PostedEvent &event)
{
    events.push_back(event);
}
void RecordingBackend::progress(const kel::String &text)
{
    progressTexts.push_back(text);
}
void RecordingBackend::percentDone(int percent)
{
    percents.push_back(percent);
}
void RecordingBackend::resetPercentDone()
{
    ++percentResets;
}

bool RecordingBackend::checkForStop()
{
    ++stopChecks;
    return m_stopAt > 0 && stopChecks >= m_stopAt;
}

bool RecordingBackend::promptEnabled()
{
    return m_promptEnabled;
}

bool RecordingBackend::displayMessageBox(MessageBox2 &box)
{
    Prompt prompt;
    prompt.title = box.title().toKELString();
    prompt.text = box.text().toKELString();
    prompt.type = box.type();
    prompt.options = box.options();
    prompt.looks = box.looks();
    prompt.flag = box.flag();
    prompt.waitMilliseconds = 0;
    prompts.push_back(prompt);
    if (m_answers.empty() || m_answers.front().displayed)
        return true;
    m_answers.pop_front();
    return false;
}

bool RecordingBackend::waitMessageBox(MessageBox2 &box, uint32_t milliseconds)
{
    if (!prompts.empty())
        prompts.back().waitMilliseconds = milliseconds;
    if (m_answers.empty())
        return false;
    const Answer answer = m_answers.front();
    m_answers.pop_front();
    if (!answer.answered)
        return false;
    box.setReturn(answer.value);
    return true;
}

void RecordingBackend::setPromptEnabled(bool enabled)
{
    m_promptEnabled = enabled;
}

void RecordingBackend::queueAnswer(int value, bool displayed, bool answered)
{
    Answer answer;
    answer.displayed = displayed;
    answer.answered = answered;
    answer.value = value;
    m_answers.push_back(answer);
}

void RecordingBackend::requestStopAtCheck(int n)
{
    m_stopAt = n;
}

} // namespace ruvo
