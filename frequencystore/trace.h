#pragma once

#include "base/errorhandler.h"

namespace Velmara {

/// Traces where the mask allows it.
inline void trace(const QString& message, const QString& sourceFile, int line)
{
    if (ErrorHandler::Instance() & ErrorHandler::traceBit)
        _Q_Trace(message, sourceFile, static_cast<unsigned short>(line));
}

} // namespace Velmara
