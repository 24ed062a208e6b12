#include "frequencystore/kernel/check.h"

#include "base/exceptions.h"

using namespace TALLYFORM;

namespace Velmara::kernel {

void ChoiceChecker::fail(const QString& text) const
{
    throw IncompleteDefinitionException(m_self.GetObjectName() + QStringLiteral(":Check failed. ") + text);
}

void ChoiceChecker::failUnchosen() const
{
    fail(QStringLiteral("The mandatory choice %1 is not initialized").arg(QLatin1String(m_group.name)));
}

void ChoiceChecker::failValue(const Member& m) const { fail(QStringLiteral("%1 is not set").arg(m.field())); }

void ChoiceChecker::failRecord(const Member& m) const
{
    const QString optionalLacks = QStringLiteral(
        "The optional member (choice element) %1 is set, but mandatory data of the member is not set.");
    const QString mandatoryLacks = QStringLiteral("Mandatory data of the member (choice element) %1 is not set.");
    const QString mandatoryMissing = QStringLiteral("The mandatory member (choice element) %1 is not set.");
    const QString& text = !m_group.isMandatory ? optionalLacks : m_data.isSet(m) ? mandatoryLacks : mandatoryMissing;
    fail(text.arg(m.field()));
}

} // namespace Velmara::kernel
