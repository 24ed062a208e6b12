#include "frequencystore/kernel/forms/carriage.h"

#include "base/exceptions.h"
#include "frequencystore/kernel/bytes/xmlsink.h"

#include <QXmlStreamReader>

namespace Velmara::kernel {

QString reasonAgainst(const Member&, const QString& text, WrittenForm form)
{
    if (form == WrittenForm::Xml)
        return canXmlCarry(text) ? QString() : QStringLiteral("A character that XML cannot carry.");
    return text.isValidUtf16() ? QString() : QStringLiteral("A character that UTF-8 cannot carry.");
}

QString reasonAgainst(const Member& m, const QDateTime& time, WrittenForm)
{
    TextBuffer buffer;
    const bool isLost = time.isValid() && toText(m, time, buffer).isNull();
    return isLost ? QStringLiteral("A date-time that has no text.") : QString();
}

QString reasonAgainstNameless(const Member& m, int value)
{
    const bool isLost = value != -1 && m.nameAt(value).isNull();
    return isLost ? QStringLiteral("A value that has no name.") : QString();
}

/// A prefix is no part of the name to them.
QString reasonAgainstName(const QString& name)
{
    QXmlStreamReader reader(QLatin1Char('<') + name + QLatin1String("/>"));
    reader.setNamespaceProcessing(false);
    const bool isName = reader.readNextStartElement() && reader.name() == name && reader.attributes().isEmpty();
    return isName ? QString() : QStringLiteral("'%1' is no name of an element.").arg(name);
}

void refuseName(const QString& reason) { throw TALLYFORM::OutOfRangeException(reason, Fault::Kind::Uncarried); }

} // namespace Velmara::kernel
