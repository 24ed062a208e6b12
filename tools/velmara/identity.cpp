#include "identity.h"

namespace {

const QString by = QStringLiteral("by");

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
        m_paths = frequencyPaths() << rangeStartPath << rangeStopPath;
}

QString Identity::of(const QVector<MemberValue>& values) const
{
    return textOf(values, [this](const QString& path) { return m_paths.contains(withoutPlaces(path)); });
}

QString labelOf(const QVector<MemberValue>& values)
{
    static const QStringList telling = frequencyPaths()
                                    << rangeStartPath << rangeStopPath << QStringLiteral("FFM_Settings/AnalogDemod")
                                    << QStringLiteral("Type") << QStringLiteral("Comment");
    QStringList label;
    for (const QString& path : telling)
        for (const MemberValue& value : values)
            if (withoutPlaces(value.path) == path)
                label += value.text;
    return label.join(QStringLiteral(", "));
}
