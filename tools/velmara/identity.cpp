#include "identity.h"

#include <algorithm>

using namespace Velmara;

namespace {

const QString by = "by";

} // namespace

void Identity::addOption(CommandLine& line)
{
    line.addOption({by,
                    "The members in which two entries are equal if they are the same entry, separated by "
                    "commas; their frequency, if not told. Members go by name, or by the path that leads "
                    "to them, as FFM_Settings/Detail/ChannelNo.",
                    "NAMES"});
}

Identity::Identity(const CommandLine& line, const RecordDescription& entry)
{
    for (const QString& name : line.valuesOf(by))
        m_paths += pathsNamed(name, entry);
    if (m_paths.isEmpty())
        m_paths = frequencyPaths() << rangeStartPath << rangeStopPath;
}

QString Identity::of(const QVector<PathValue>& values) const
{
    QVector<PathValue> own;
    std::copy_if(values.begin(), values.end(), std::back_inserter(own),
                 [this](const PathValue& value) { return m_paths.contains(WithoutPlaces(value.path)); });
    return textOf(own);
}

QString labelOf(const QVector<PathValue>& values)
{
    static const QStringList telling = frequencyPaths() << rangeStartPath << rangeStopPath << "FFM_Settings/AnalogDemod"
                                                        << "Type"
                                                        << "Comment";
    return textsAt(telling, values).join(", ");
}
