#include "frequencystore/kernel/model/member.h"

#include <QObject>

#include <algorithm>

namespace Velmara::kernel {

QString Member::field() const { return QStringLiteral("m_") + QChar(name.front()).toLower() + name.mid(1); }

QStringList splitNames(const char* labels)
{
    const QString text = QString::fromLatin1(labels);
    if (text.contains(QLatin1Char('|')))
        return text.split(QLatin1Char('|'));
    return text.simplified().split(QStringLiteral(", "));
}

const QString& Member::nameAt(int value) const
{
    static const QString none;
    const QStringList& list = names();
    return value >= 0 && value < list.size() ? list.at(value) : none;
}

template <class Text> static int placeOf(Text text, const QStringList& list)
{
    const auto name = std::find(list.begin(), list.end(), text);
    return name == list.end() ? -1 : int(name - list.begin());
}

int Member::valueOf(QStringView text) const { return placeOf(text, names()); }
int Member::valueOf(QLatin1String text) const { return placeOf(text, names()); }

QStringList translated(const QStringList& names)
{
    QStringList list;
    for (const QString& name : names)
        list += QObject::tr(name.toUtf8().constData(), nullptr, -1);
    return list;
}

} // namespace Velmara::kernel
