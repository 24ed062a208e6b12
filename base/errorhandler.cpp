#include "base/errorhandler.h"

#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(traceCategory, "velmara")

} // namespace

ErrorHandler& ErrorHandler::Instance()
{
    static ErrorHandler instance;
    return instance;
}

void _Q_Trace(const QString& message, const QString& sourceFile, unsigned short line)
{
    const QByteArray file = sourceFile.toUtf8();
    QMessageLogger(file.constData(), line, nullptr).warning(traceCategory(), "%s", qUtf8Printable(message));
}
