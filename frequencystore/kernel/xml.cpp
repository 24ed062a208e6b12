#include "frequencystore/kernel/xml.h"

#include "base/exceptions.h"

using namespace TALLYFORM;

namespace Velmara::kernel {

void XmlWriter::demandContent(const Member& m, const ITallyObject& child) const
{
    if (m_self.GetValidate() && !child.HasData())
        throw IncompleteDefinitionException(
            QStringLiteral("Parameters for %1 are not set properly in '%2'.").arg(m.name, m_self.GetObjectName()));
}

void refuseUnknown(const ITallyObject& self, const QXmlStreamReader& reader)
{
    throw InvalidXmlException(
        QStringLiteral("Unknown Tag '%1' in '%2'.").arg(reader.name().toString(), self.GetObjectName()));
}

void skipElement(QXmlStreamReader& reader)
{
    const QString name = reader.name().toString();
    do
        reader.readNext();
    while (!reader.atEnd() && reader.name() != name);
}

} // namespace Velmara::kernel
