#include "frequencystore/kernel/model/describe.h"

#include "base/converters.h"
#include "base/exceptions.h"

using namespace TALLYFORM;

namespace Velmara::kernel {

namespace {

void refuseUnless(bool isValue, const Member& m, const QString& text)
{
    if (!isValue)
        throw OutOfRangeException(QStringLiteral("'%1' is no value of %2.").arg(text, m.name), Fault::Kind::BadValue,
                                  m.accessor);
}

/// Throws unless a member can do what is asked of it.
void demand(bool isPossible, const Member& m, const char* reason)
{
    if (!isPossible)
        throw TallyException(
            QStringLiteral("%1 of %2 %3.").arg(m.accessor, QLatin1String(m.record), QLatin1String(reason)),
            Fault::Kind::Other, m.accessor);
}

OpenMember openItem(const FieldAccess& access, ITallyObject& record, int index)
{
    const OpenMember open = access.open(record);
    demand(index >= 0 && index < access.operations.count(open.field), access.member, "has no such item");
    return open;
}

void putText(const MemberDescription& d, ITallyObject& record, const QString& text)
{
    demand(d.access->operations.put, d.access->member, "holds no values");
    d.access->operations.put(d.access->open(record), text);
}

void putRecord(const MemberDescription& d, ITallyObject& to, const ITallyObject& record)
{
    demand(d.holdsRecords() && d.record().isOf(record), d.access->member, "holds no such records");
    d.access->operations.putRecord(d.access->open(to), record);
}

} // namespace

void valueOf(const Member& m, const QString& text, double& value)
{
    bool isNumber = false;
    value = toDouble(QStringView(text).trimmed(), &isNumber);
    refuseUnless(isNumber, m, text);
}

void valueOf(const Member& m, const QString& text, int& value)
{
    bool isNumber = false;
    value = toInt(text, &isNumber);
    refuseUnless(isNumber, m, text);
}

void valueOf(const Member& m, const QString& text, unsigned int& value)
{
    bool isNumber = false;
    value = text.toUInt(&isNumber);
    refuseUnless(isNumber, m, text);
}

void valueOf(const Member& m, const QString& text, quint64& value)
{
    bool isNumber = false;
    value = text.toULongLong(&isNumber);
    refuseUnless(isNumber, m, text);
}

void valueOf(const Member& m, const QString& text, bool& value)
{
    value = text == QLatin1String("true");
    refuseUnless(value || text == QLatin1String("false"), m, text);
}

void valueOf(const Member& m, const QString& text, QDateTime& value)
{
    value = Converters::ToDateTime(text);
    refuseUnless(value.isValid(), m, text);
}

MemberDescription describeMember(const Member& m)
{
    MemberDescription d{};
    d.name = m.accessor;
    d.element = m.name;
    d.tag = m.tag;
    d.bit = m.bit;
    d.need = m.isMandatory()   ? MemberDescription::Need::Mandatory
           : m.isAlternative() ? MemberDescription::Need::Alternative
                               : MemberDescription::Need::Optional;
    d.form = MemberDescription::Form(m.form);
    if (m.isBounded)
        d.range = {m.lower, m.upper};
    d.decimals = m.precision;
    d.width = m.width;
    if (m.names) {
        d.names = m.names();
        d.identifiers = splitNames(m.identifiers);
    }
    d.isMarkedByDefault = m.isMarked;
    return d;
}

ChoiceDescription describeChoice(const ChoiceGroup& group)
{
    return {QString::fromLatin1(group.name), group.names(), group.isMandatory};
}

} // namespace Velmara::kernel

namespace Velmara {

using namespace kernel;

bool MemberDescription::isSet(const ITallyObject& record) const { return access->peek(record); }

QStringList MemberDescription::texts(const ITallyObject& record) const
{
    QStringList list;
    const void* const field = access->operations.text ? access->peek(record) : nullptr;
    for (int i = 0; field && i < access->operations.count(field); ++i)
        list += access->operations.text(access->member, field, i);
    return list;
}

QVector<const ITallyObject*> MemberDescription::children(const ITallyObject& record) const
{
    QVector<const ITallyObject*> list;
    const void* const field = access->operations.child ? access->peek(record) : nullptr;
    for (int i = 0; field && i < access->operations.count(field); ++i)
        list += access->operations.child(field, i);
    return list;
}

void MemberDescription::set(ITallyObject& record, const QString& text) const
{
    demand(!isList, access->member, "is a list");
    putText(*this, record, text);
}

void MemberDescription::set(ITallyObject& record, const ITallyObject& child) const
{
    demand(!isList, access->member, "is a list");
    putRecord(*this, record, child);
}

void MemberDescription::append(ITallyObject& record, const QString& text) const
{
    demand(isList, access->member, "is no list");
    putText(*this, record, text);
}

void MemberDescription::append(ITallyObject& record, const ITallyObject& item) const
{
    demand(isList, access->member, "is no list");
    putRecord(*this, record, item);
}

ITallyObject& MemberDescription::edit(ITallyObject& record, int index) const
{
    demand(holdsRecords(), access->member, "holds no records");
    return access->operations.edit(openItem(*access, record, index), index);
}

void MemberDescription::remove(ITallyObject& record, int index) const
{
    demand(isList, access->member, "is no list");
    access->operations.remove(openItem(*access, record, index), index);
}

void MemberDescription::reset(ITallyObject& record) const { access->operations.clear(access->open(record)); }

} // namespace Velmara
