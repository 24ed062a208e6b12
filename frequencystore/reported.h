#pragma once

#include "base/exceptions.h"

namespace Velmara {

/// Does something that fills a report and throws on failure; the report then tells the reason.
template <class Report, class Action> Report reported(Action action)
{
    Report report;
    try {
        action(report);
        report.isComplete = true;
    } catch (const TALLYFORM::TallyException& failure) {
        report.error = failure.GetMessage();
    }
    return report;
}

} // namespace Velmara
