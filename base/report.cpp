#include "base/report.h"

#include "base/errorhandler.h"
#include "base/exceptions.h"
#include "base/logger.h"
#include "base/tallyobject.h"

namespace TALLYFORM {

void report(const ITallyObject& object, const QString& reason, const QString& sourceFile, unsigned short line)
{
    if (const std::shared_ptr<Logger> logger = object.GetLogger()) // which may take itself off the object
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

void reportUncarried(const ITallyObject& object, WrittenForm form, const QString& sourceFile, unsigned short line)
{
    const QString uncarried = object.GetValidate() ? QString() : object.FindUncarried(form);
    if (!uncarried.isNull())
        report(object, object.GetObjectName() + QLatin1String(": ") + uncarried, sourceFile, line);
}

} // namespace TALLYFORM
