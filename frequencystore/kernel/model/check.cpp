#include "frequencystore/kernel/model/check.h"

#include "base/exceptions.h"

using namespace TALLYFORM;

namespace Velmara::kernel {

using Kind = Fault::Kind;

void ChoiceChecker::fail(const QString& text, Kind kind, const QString& member) const
{
    throw IncompleteDefinitionException(m_self.GetObjectName() + QStringLiteral(":Check failed. ") + text, kind,
                                        member);
}

void ChoiceChecker::failUnchosen() const
{
    fail(QStringLiteral("The mandatory choice %1 is not initialized").arg(QLatin1String(m_group.name)), Kind::Missing,
         QString());
}

void ChoiceChecker::failValue(const Member& m) const
{
    fail(QStringLiteral("%1 is not set").arg(m.field()), Kind::Missing, m.accessor);
}

void ChoiceChecker::failRecord(const Member& m) const
{
    const QString optionalLacks = QStringLiteral(
        "The optional member (choice element) %1 is set, but mandatory data of the member is not set.");
    const QString mandatoryLacks = QStringLiteral("Mandatory data of the member (choice element) %1 is not set.");
    const QString mandatoryMissing = QStringLiteral("The mandatory member (choice element) %1 is not set.");
    const bool isSet = m_data.isSet(m);
    const QString& text = !m_group.isMandatory ? optionalLacks : isSet ? mandatoryLacks : mandatoryMissing;
    fail(text.arg(m.field()), isSet ? Kind::Incomplete : Kind::Missing, m.accessor);
}

} // namespace Velmara::kernel
