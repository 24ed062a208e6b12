#include "base/fault.h"

namespace TALLYFORM {

QString InputPlace::text() const
{
    QString text = source;
    if (line > 0)
        text += QStringLiteral(", line %1").arg(line);
    if (column >= 0)
        text += QStringLiteral(", column %1").arg(column);
    if (byte >= 0)
        text += QStringLiteral(", byte %1").arg(byte);
    return text;
}

void Fault::addAbove(const QString& name, int index)
{
    const QString step = index < 0 ? name : QStringLiteral("%1[%2]").arg(name).arg(index + 1);
    path = path.isEmpty() ? step : step + QLatin1Char('/') + path;
}

} // namespace TALLYFORM
