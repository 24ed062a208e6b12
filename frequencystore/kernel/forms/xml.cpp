#include "frequencystore/kernel/forms/xml.h"

#include "base/exceptions.h"

using namespace TALLYFORM;

namespace Velmara::kernel {

void refuseChild(const ITallyObject& self, const Member& m)
{
    throw IncompleteDefinitionException(
        QStringLiteral("Parameters for %1 are not set properly in '%2'.").arg(m.name, self.GetObjectName()),
        Fault::Kind::Incomplete, m.accessor);
}

void refuseUnknown(const ITallyObject& self, const QXmlStreamReader& reader)
{
    const QString name = reader.name().toString();
    throw InvalidXmlException(QStringLiteral("Unknown Tag '%1' in '%2'.").arg(name, self.GetObjectName()),
                              Fault::Kind::Unknown, name);
}

int skipElement(QXmlStreamReader& reader)
{
    const QString name = reader.name().toString();
    int open = 1;
    do {
        reader.readNext();
        open += reader.isStartElement() - reader.isEndElement();
    } while (!reader.atEnd() && reader.name() != name);
    return open;
}

} // namespace Velmara::kernel
