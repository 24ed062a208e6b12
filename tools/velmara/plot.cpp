#include "commands.h"
#include "identity.h"
#include "picture.h"
#include "scale.h"
#include "terminal.h"

#include <base/files.h>

#include <QFileInfo>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

const QString output = QStringLiteral("output"), colourBy = QStringLiteral("colour-by");

/// The first of some values that an entry has; null without one.
QString first(const QVector<MemberValue>& values, const QStringList& paths)
{
    for (const QString& path : paths)
        for (const MemberValue& value : values)
            if (withoutPlaces(value.path) == path)
                return value.text;
    return {};
}

QString label(const QVector<MemberValue>& values, double frequency)
{
    const QString name
        = first(values, {QStringLiteral("Comment"), QStringLiteral("ID"), QStringLiteral("Type")}).left(40);
    return name.isEmpty() ? frequencyText(frequency) : frequencyText(frequency) + QStringLiteral(" ") + name;
}

/// The ranges that an entry occupies: around its frequencies, or the one that it names.
QVector<Bar> barsOf(const QVector<MemberValue>& values, const QStringList& groups)
{
    const QString from = first(values, {QStringLiteral("ShortTime_Settings/Range/StartFreq")});
    const QString to = first(values, {QStringLiteral("ShortTime_Settings/Range/StopFreq")});
    const QString group = first(values, groups);
    const QString groupName = group.isEmpty() ? QStringLiteral("(none)") : group;
    if (!from.isNull() && !to.isNull())
        return {{from.toDouble(), to.toDouble(), label(values, from.toDouble()), groupName}};
    static const QStringList frequencies{QStringLiteral("Frequency"), QStringLiteral("FFM_Settings/Frequency"),
                                         QStringLiteral("ShortTime_Settings/Frequency")};
    const double half = first(values, {QStringLiteral("Bandwidth"), QStringLiteral("FFM_Settings/IFBandwidth"),
                                       QStringLiteral("ShortTime_Settings/Bandwidth")})
                            .toDouble()
                      / 2;
    QVector<Bar> bars;
    for (const MemberValue& value : values) {
        const double frequency = value.text.toDouble();
        if (frequencies.contains(withoutPlaces(value.path)) && qIsFinite(frequency))
            bars += {frequency - half, frequency + half, label(values, frequency), groupName};
    }
    return bars;
}

QVector<Bar> barsIn(const FrequencyStoreListHelper& helper, const QStringList& groups)
{
    QVector<Bar> bars;
    for (const ITallyObject* entry : entriesIn(helper))
        bars += barsOf(valuesOf(*entry), groups);
    return bars;
}

void save(const QString& path, const QByteArray& picture)
{
    QString reason;
    const QString target = path == QLatin1String("-") ? QStringLiteral("/dev/stdout") : path;
    if (SaveFile(target, picture, reason) != SaveResult::Saved)
        throw TallyException(QStringLiteral("%1: %2").arg(path, reason));
}

} // namespace

int plot(const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("Draws a list over its frequencies, as a picture of SVG: each entry is a bar as "
                       "wide as its bandwidth."),
        {QStringLiteral("velmara plot memoryscan.xml -o plan.svg"),
         QStringLiteral("velmara plot targets.csv --type TargetList --colour-by AnalogDemod -o plan.svg")});
    line.addArgument(QStringLiteral("FILE"), QStringLiteral("The list."), QStringLiteral("FILE"));
    line.addInputOptions();
    line.addValue({QStringLiteral("o"), output}, QStringLiteral("SVG"), QStringLiteral("The file to write."));
    line.addValue({colourBy}, QStringLiteral("NAME"),
                  QStringLiteral("The member whose value decides on a bar's colour; Type, if not told."));
    return line.run(arguments, [&] {
        const ListFile file = line.input(line.files(1, 1).first());
        if (!line.isSet(output))
            throw UsageError(QStringLiteral("-o is missing."));
        FrequencyStoreListHelper helper;
        readList(file, helper);
        const RecordDescription& entry = entriesMember(listIn(helper)).record();
        const QString group = line.isSet(colourBy) ? line.value(colourBy) : QStringLiteral("Type");
        const QVector<Bar> bars = barsIn(helper, pathsNamed(group, entry));
        if (bars.isEmpty())
            throw TallyException(file.path + QStringLiteral(": there is no entry with a frequency."));
        save(line.value(output), pictureOf(bars, QFileInfo(file.path).fileName()));
        return CommandLine::Done;
    });
}
