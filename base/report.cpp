#include "base/report.h"

#include "base/errorhandler.h"
#include "base/logger.h"
#include "base/tallyobject.h"

namespace TALLYFORM {

void report(const ITallyObject& object, const QString& reason, const QString& sourceFile, unsigned short line)
{
    if (const auto& logger = object.GetLogger())
        logger->Log(reason);
    if (ErrorHandler::Instance() & ErrorHandler::traceBit)
        _Q_Trace(reason, sourceFile, line);
}

} // namespace TALLYFORM
