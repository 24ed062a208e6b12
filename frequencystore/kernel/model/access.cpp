#include "frequencystore/kernel/model/access.h"

#include "base/exceptions.h"

#include <algorithm>

using namespace TALLYFORM;

using Kind = Fault::Kind;

namespace Velmara::kernel {

bool isValid(const Member&, const QVector<QString>& texts)
{
    return std::none_of(texts.begin(), texts.end(), [](const QString& text) { return text.isNull(); });
}

void refuse(const ITallyObject& self, const Member& m, double)
{
    const QString range = QStringLiteral("Parameters for %1 are not set within range (%2, %3) in '%4'.");
    throw OutOfRangeException(range.arg(m.field()).arg(m.lower).arg(m.upper).arg(self.GetObjectName()), Kind::BadValue,
                              m.accessor);
}

void refuse(const ITallyObject& self, const Member& m, const QString&)
{
    throw OutOfRangeException(self.GetObjectName()
                                  + QStringLiteral(": Please set %1 properly (origin: Setter).").arg(m.name),
                              Kind::BadValue, m.accessor);
}

void refuseEnum(const Member& m)
{
    throw OutOfRangeException(
        QStringLiteral("enum is not valid (classname=%1,membername=%2)").arg(QLatin1String(m.record), m.field()),
        Kind::BadValue, m.accessor);
}

void refuseContent(const ITallyObject& self, const Member& m, Kind kind)
{
    throw OutOfRangeException(self.GetObjectName() + QStringLiteral(": Please set %1 properly.").arg(m.name), kind,
                              m.accessor);
}

void refuseItem(const ITallyObject& self, const Member& m)
{
    throw IncompleteDefinitionException(
        self.GetObjectName()
            + QStringLiteral(": Tried to append not completely defined or invalid item %1.").arg(m.name),
        Kind::Incomplete, m.accessor);
}

void refuseChoice(const ITallyObject& self)
{
    throw OutOfRangeException(QStringLiteral("Invalid enum value set in '%1'.").arg(self.GetObjectName()),
                              Kind::BadValue);
}

} // namespace Velmara::kernel
