#pragma once

#include "base/logger.h"

#include <QStringList>

/// Keeps what it is told.
class Recorder : public TALLYFORM::Logger
{
public:
    void Log(const QString& message) override { m_messages += message; }

    QStringList m_messages;
};
