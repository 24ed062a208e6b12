#include "base/report.h"

#include "base/errorhandler.h"
#include "base/exceptions.h"
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

void report(const ITallyObject& object, TallyFormException& failure, const QString& origin, const QString& sourceFile,
            unsigned short line)
{
    failure.SetOrigin(origin);
    report(object, origin + QLatin1String(": ") + failure.GetMessage(), sourceFile, line);
}

} // namespace TALLYFORM
