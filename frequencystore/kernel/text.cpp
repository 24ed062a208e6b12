#include "frequencystore/kernel/text.h"

#include "base/converters.h"
#include "base/exceptions.h"

using namespace TALLYFORM;

namespace Velmara::kernel {

namespace {

QLatin1String store(QStringView text, TextBuffer& buffer)
{
    const QByteArray bytes = text.toLatin1();
    std::copy_n(bytes.constData(), bytes.size(), buffer.data());
    return text.isNull() ? QLatin1String() : QLatin1String(buffer.data(), bytes.size());
}

} // namespace

QLatin1String toText(const Member& m, double value, TextBuffer& buffer)
{
    const QString text = QString::number(value, 'f', m.precision);
    return store(text.size() < m.width ? text.rightJustified(m.width) : text, buffer);
}

QLatin1String toText(const Member&, int value, TextBuffer& buffer) { return store(QString::number(value), buffer); }
QLatin1String toText(const Member&, unsigned int value, TextBuffer& buffer)
{
    return store(QString::number(value), buffer);
}
QLatin1String toText(const Member&, quint64 value, TextBuffer& buffer) { return store(QString::number(value), buffer); }
QLatin1String toText(const Member&, bool value, TextBuffer&) { return QLatin1String(value ? "true" : "false"); }
QLatin1String toText(const Member&, const QDateTime& value, TextBuffer& buffer)
{
    return store(Converters::ToString(value), buffer);
}

void parse(const ITallyObject&, const Member&, QStringView text, double& value) { value = text.toString().toDouble(); }
void parse(const ITallyObject&, const Member&, QStringView text, int& value) { value = text.toString().toInt(); }

/// Negative texts and those beyond an int behave as in a signed member, for the same documents were written by those.
void parse(const ITallyObject&, const Member&, QStringView text, unsigned int& value)
{
    value = static_cast<unsigned int>(text.toString().toInt());
}

void parse(const ITallyObject&, const Member&, QStringView text, quint64& value)
{
    value = static_cast<quint64>(text.toString().toLongLong());
}

void parse(const ITallyObject&, const Member&, QStringView text, QDateTime& value)
{
    value = Converters::ToDateTime(text.toString());
}

void parse(const ITallyObject&, const Member&, QStringView text, QString& value)
{
    value = text.isEmpty() ? QLatin1String("") : text.toString();
}

void parse(const ITallyObject& self, const Member& m, QStringView text, bool& value)
{
    if (!text.isEmpty()) {
        value = text != QLatin1String("0") && text.toString().toLower() != QLatin1String("false");
        return;
    }
    if (m.blank == Member::Blank::Refused && self.GetValidate())
        throw InvalidXmlException(QStringLiteral("Please set a value or a default for the boolean '%1' in '%2'.")
                                      .arg(m.name, self.GetObjectName()));
    value = m.blank == Member::Blank::True;
}

} // namespace Velmara::kernel
