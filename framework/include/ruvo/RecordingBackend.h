#pragma once

#include <ruvo/DiagBackend.h>
#include <deque>
#include <vector>

namespace ruvo {

// Remembers everything a module reports, and answers its questions from a script.
class RUVO_API RecordingBackend : public DiagBackend {
public:
    struct Answer {
        bool displayed;
        bool answered;
        int value;
    };
    struct Prompt {
        kel::String title;
        kel::String text;
        int type;
        int options;
        int looks;
        bool flag;
        uint32_t waitMilliseconds;
    };

    RecordingBackend();

    void libraryRegistered(const kel::String &name) override;
    void eventPosted(const PostedEvent &event) override;
    void progress(const kel::String &text) override;
    void percentDone(int percent) override;
    void resetPercentDone() override;
    bool checkForStop() override;
    bool promptEnabled() override;
    bool displayMessageBox(MessageBox2 &box) override;
    bool waitMessageBox(MessageBox2 &box, uint32_t milliseconds) override;

    // Script.
    void setPromptEnabled(bool enabled);
    void queueAnswer(int value, bool displayed = true, bool answered = true);
    // checkForStop() turns true on its n-th call (1 = the first) and stays true.
    void requestStopAtCheck(int n);

    // Record.
    std::vector<kel::String> libraries;
    std::vector<PostedEvent> events;
    std::vector<kel::String> progressTexts;
    std::vector<int> percents;
    int percentResets;
    int stopChecks;
    std::vector<Prompt> prompts;

private:
    bool m_promptEnabled;
    int m_stopAt;
    std::deque<Answer> m_answers;
};

} // namespace ruvo
