// Every command of the host, in the order --help lists them.
#pragma once

#include "Command.h"
#include "DemoCommand.h"
#include "DepthCommand.h"
#include "DigitalScanCommand.h"
#include "FmCommand.h"
#include "FormatsCommand.h"
#include "ListCommand.h"
#include "PreviewCommand.h"
#include "RecordCommand.h"
#include "TvCommand.h"
#include "WebcamCommand.h"

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class CommandSet {
public:
    CommandSet();
    CommandSet(const CommandSet &) = delete;
    CommandSet &operator=(const CommandSet &) = delete;

    // Null when there is no such command.
    Command *find(const std::wstring &name);
    // "list, webcam, ...".
    std::wstring names() const;
    // The program's --help.
    std::wstring help() const;
    // A command's --help, with the options every command takes.
    std::wstring help(const Command &command) const;

private:
    ListCommand m_list;
    WebcamCommand m_webcam;
    PreviewCommand m_preview;
    RecordCommand m_record;
    TvCommand m_tv;
    FmCommand m_fm;
    DemoCommand m_demo;
    DepthCommand m_depth;
    FormatsCommand m_formats;
    DigitalScanCommand m_atsc{CaptureClasses::DigitalKind::ATSC};
    DigitalScanCommand m_clearqam{CaptureClasses::DigitalKind::CLEARQAM};
    DigitalScanCommand m_dvbt{CaptureClasses::DigitalKind::DVBT};
    DigitalScanCommand m_ocur{CaptureClasses::DigitalKind::OCUR};
    std::vector<Command *> m_all;
};

} // namespace diag
} // namespace sorvane
