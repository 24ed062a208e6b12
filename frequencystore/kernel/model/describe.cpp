#include "frequencystore/kernel/model/describe.h"

#include "base/converters.h"
#include "base/exceptions.h"

#include <typeinfo>

using namespace TALLYFORM;

namespace Velmara::kernel {

namespace {

void refuseUnless(bool isValue, const Member& m, const QString& text)
{
    if (!isValue)
        throw OutOfRangeException(QStringLiteral("'%1' is no value of %2.").arg(text, m.name), Fault::Kind::BadValue,
                                  m.accessor);
}

/// Throws unless a member is of the kind that an operation is for.
void demandUse(const Member& m, bool isFitting)
{
    if (!isFitting)
        throw TallyException(QStringLiteral("%1 of %2 cannot be used so.").arg(m.accessor, QLatin1String(m.record)),
                             Fault::Kind::Other, m.accessor);
}

void demandIndex(const FieldAccess& access, const OpenMember& open, int index)
{
    demandUse(access.member, index >= 0 && index < access.operations.count(open.field));
}

/// Records may be handed over as one that a member holds only if they are of its class.
void putRecord(const MemberDescription& d, ITallyObject& to, const ITallyObject& record)
{
    const auto& put = d.access->operations.putRecord;
    demandUse(d.access->member, put && typeid(record) == typeid(*d.record().make()));
    put(d.access->open(to), record);
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
    demandUse(access->member, !isList && access->operations.put);
    access->operations.put(access->open(record), text);
}

void MemberDescription::set(ITallyObject& record, const ITallyObject& child) const
{
    demandUse(access->member, !isList);
    putRecord(*this, record, child);
}

void MemberDescription::append(ITallyObject& record, const QString& text) const
{
    demandUse(access->member, isList && access->operations.put);
    access->operations.put(access->open(record), text);
}

void MemberDescription::append(ITallyObject& record, const ITallyObject& item) const
{
    demandUse(access->member, isList);
    putRecord(*this, record, item);
}

ITallyObject& MemberDescription::edit(ITallyObject& record, int index) const
{
    demandUse(access->member, access->operations.edit);
    const OpenMember open = access->open(record);
    demandIndex(*access, open, index);
    return access->operations.edit(open, index);
}

void MemberDescription::remove(ITallyObject& record, int index) const
{
    demandUse(access->member, isList);
    const OpenMember open = access->open(record);
    demandIndex(*access, open, index);
    access->operations.remove(open, index);
}

void MemberDescription::reset(ITallyObject& record) const { access->operations.clear(access->open(record)); }

} // namespace Velmara
