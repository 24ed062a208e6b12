#include "base/exceptions.h"

namespace TALLYFORM {

TallyFormException::TallyFormException(const QString& message, Fault::Kind kind, const QString& member)
    : TallyFormException(Fault{.kind = kind, .member = member, .message = message})
{}

TallyFormException::TallyFormException(const Fault& fault) : m_fault(fault), m_utf8(fault.message.toUtf8()) {}

const char* TallyFormException::what() const noexcept { return m_utf8.constData(); }

QString TallyFormException::detail(const QString& failure) const
{
    const QString text = failure + QLatin1String(": ") + GetMessage(), origin = GetOrigin();
    return origin.isEmpty() ? text : text + QLatin1String(" (") + origin + QLatin1Char(')');
}

QString TallyFormException::GetDetail() const { return detail(QStringLiteral("TallyFormException")); }

QString TallyException::GetDetail() const { return detail(QStringLiteral("TallyException")); }

QString OutOfRangeException::GetDetail() const { return detail(QStringLiteral("OutOfRangeException")); }

QString BinaryParsingException::GetDetail() const { return detail(QStringLiteral("BinaryParsingException")); }

QString InvalidXmlException::GetDetail() const { return detail(QStringLiteral("InvalidXmlException")); }

QString IncompleteDefinitionException::GetDetail() const
{
    return detail(QStringLiteral("IncompleteDefinitionException"));
}

} // namespace TALLYFORM
