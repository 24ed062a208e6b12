#include "base/exceptions.h"

namespace TALLYFORM {

TallyFormException::TallyFormException(const QString& message) : m_message(message), m_utf8(message.toUtf8()) {}

const char* TallyFormException::what() const noexcept { return m_utf8.constData(); }

QString TallyFormException::detail(const QString& failure) const
{
    const QString text = failure + QLatin1String(": ") + m_message;
    return m_origin.isEmpty() ? text : text + QLatin1String(" (") + m_origin + QLatin1Char(')');
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
