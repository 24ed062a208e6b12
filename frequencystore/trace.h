#pragma once

#include "base/errorhandler.h"
#include "base/sourceplace.h"

namespace Velmara {

/// Traces where the mask allows it; the source goes by its name without extension.
inline void trace(const QString& message, SourcePlace place = SourcePlace())
{
    if (ErrorHandler::Instance() & ErrorHandler::traceBit)
        _Q_Trace(message, place.name().section(QLatin1Char('.'), 0, 0), static_cast<unsigned short>(place.line));
}

} // namespace Velmara
