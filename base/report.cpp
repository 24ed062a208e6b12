#include "base/report.h"

#include "base/errorhandler.h"
#include "base/logger.h"
#include "base/tallyobject.h"

namespace TALLYFORM {

Refusal::Refusal(const InputPlace& place, const QString& message, Fault::Kind kind, const QString& member)
    : TallyException(message, kind, member)
{
    GetFault().place = place;
}

void report(const ITallyObject& object, const QString& text, SourcePlace place)
{
    // A copy, for the logger may take itself off the object.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    if (const std::shared_ptr<Logger> logger = object.GetLogger())
        logger->Log(text);
    if (ErrorHandler::Instance() & ErrorHandler::traceBit)
        _Q_Trace(text, place.name(), static_cast<unsigned short>(place.line));
}

void report(const ITallyObject& object, const TallyFormException& failure, SourcePlace place)
{
    const QString origin = failure.GetOrigin();
    report(object, origin.isEmpty() ? failure.GetMessage() : origin + QLatin1String(": ") + failure.GetMessage(),
           place);
}

void reportUncarried(const ITallyObject& object, WrittenForm form, SourcePlace place)
{
    const QString uncarried = object.GetValidate() ? QString() : object.FindUncarried(form);
    if (!uncarried.isNull())
        report(object, object.GetObjectName() + QLatin1String(": ") + uncarried, place);
}

} // namespace TALLYFORM
