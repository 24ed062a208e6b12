#include "identity.h"

namespace {

const QString by = QStringLiteral("by");
const QString frequencies = QStringLiteral("FFM_Settings/Frequency,ShortTime_Settings/Frequency,"
                                           "ShortTime_Settings/Range/StartFreq,ShortTime_Settings/Range/StopFreq");

} // namespace

void Identity::addOption(CommandLine& line)
{
    line.addValue({by}, QStringLiteral("NAMES"),
                  QStringLiteral("The members in which two entries are equal if they are the same entry, parted by "
                                 "commas; their frequency, if not told. Members go by name, or by the path that leads "
                                 "to them, as FFM_Settings/Detail/ChannelNo."));
}

Identity::Identity(const CommandLine& line, const Velmara::RecordDescription& entry)
{
    const QStringList names = line.isSet(by) ? line.values(by) : QStringList();
    for (const QString& name : names)
        m_paths += pathsNamed(name, entry);
    if (names.isEmpty())
        m_paths = entry.name == QLatin1String("DetectionResult") ? QStringList(QStringLiteral("Frequency"))
                                                                 : frequencies.split(QLatin1Char(','));
}

QString Identity::of(const QVector<MemberValue>& values) const
{
    QString identity;
    for (const MemberValue& value : values)
        if (m_paths.contains(withoutPlaces(value.path)))
            identity += value.path + QLatin1Char('=') + value.text + QLatin1Char('\n');
    return identity;
}

QString labelOf(const QVector<MemberValue>& values)
{
    static const QStringList telling{
        QStringLiteral("Frequency"),
        QStringLiteral("FFM_Settings/Frequency"),
        QStringLiteral("ShortTime_Settings/Range/StartFreq"),
        QStringLiteral("ShortTime_Settings/Range/StopFreq"),
        QStringLiteral("FFM_Settings/AnalogDemod"),
        QStringLiteral("Type"),
        QStringLiteral("Comment"),
    };
    QStringList label;
    for (const QString& path : telling)
        for (const MemberValue& value : values)
            if (value.path == path)
                label += value.text;
    return label.join(QStringLiteral(", "));
}
