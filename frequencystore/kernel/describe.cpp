#include "frequencystore/kernel/describe.h"

namespace Velmara::kernel {

MemberDescription describeMember(const Member& m, const char* accessor)
{
    MemberDescription d{};
    d.name = QLatin1String(accessor);
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
