#pragma once

#include "base/tallybase_export.h"

#include <QString>

namespace TALLYFORM {

/// Where an object tells its caller why an operation answered with false.
class TALLYBASE_EXPORT Logger
{
public:
    Logger() = default;
    virtual ~Logger();
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    /// Takes one message for people.
    virtual void Log(const QString& message) = 0;
};

} // namespace TALLYFORM
