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

QString versionIn(XmlPull& in, const QString& expected)
{
    const auto version = in.attribute("Version");
    if (!version)
        return QStringLiteral("");
    if (expected == QLatin1String(version->data(), int(version->size()))) // both are ASCII
        return expected;
    return QString::fromUtf8(version->data(), int(version->size()));
}

void refuseUnknown(const ITallyObject& self, std::string_view element)
{
    const QString name = QString::fromUtf8(element.data(), int(element.size()));
    throw InvalidXmlException(QStringLiteral("Unknown Tag '%1' in '%2'.").arg(name, self.GetObjectName()),
                              Fault::Kind::Unknown, name);
}

int skipElement(XmlPull& in)
{
    const std::string name(in.name());
    for (int open = 1;;) {
        const XmlPull::Tag tag = in.next();
        if (tag == XmlPull::Tag::None)
            return open;
        open += tag == XmlPull::Tag::Start ? 1 : -1;
        if (in.name() == name)
            return open;
    }
}

} // namespace Velmara::kernel
