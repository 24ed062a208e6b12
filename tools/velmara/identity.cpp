#include "identity.h"

using namespace Velmara;

namespace {

const QString by = QStringLiteral("by");

} // namespace

void Identity::addOption(CommandLine& line)
{
    line.addValue({by}, QStringLiteral("NAMES"),
                  QStringLiteral("The members in which two entries are equal if they are the same entry, separated by "
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

QString Identity::of(const QVector<PathValue>& values) const
{
    return textOf(values, [this](const QString& path) { return m_paths.contains(WithoutPlaces(path)); });
}

QString labelOf(const QVector<PathValue>& values)
{
    static const QStringList telling = frequencyPaths()
                                    << rangeStartPath << rangeStopPath << QStringLiteral("FFM_Settings/AnalogDemod")
                                    << QStringLiteral("Type") << QStringLiteral("Comment");
    QStringList label;
    for (const QString& path : telling)
        for (const PathValue& value : values)
            if (WithoutPlaces(value.path) == path)
                label += value.text;
    return label.join(QStringLiteral(", "));
}
