#include "commands.h"
#include "identity.h"
#include "picture.h"
#include "scale.h"
#include "terminal.h"

#include <QFileInfo>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

const QString output = QStringLiteral("output"), colourBy = QStringLiteral("colour-by");

bool isOnAxis(double hertz) { return hertz >= 0 && hertz <= Scale::highestFrequency; }

/// The first of some values that an entry has; null without one.
QString first(const QVector<PathValue>& values, const QStringList& paths)
{
    for (const QString& path : paths)
        for (const PathValue& value : values)
            if (WithoutPlaces(value.path) == path)
                return value.text;
    return {};
}

QString label(const QVector<PathValue>& values, double frequency)
{
    constexpr int letters = 40;
    const QString name = first(values, {QStringLiteral("Comment"), QStringLiteral("ID"), QStringLiteral("Type")});
    return (frequencyText(frequency) + QLatin1Char(' ') + shortened(name, letters)).trimmed();
}

/// The ranges that an entry occupies: around its frequencies, or the one that it names.
QVector<Bar> barsOf(const QVector<PathValue>& values, const QStringList& groups)
{
    const QString from = first(values, {rangeStartPath}), to = first(values, {rangeStopPath});
    const QString group = first(values, groups);
    const QString groupName = group.isEmpty() ? QStringLiteral("(none)") : group;
    QVector<Bar> bars;
    const auto add = [&](double frequency, double left, double right) {
        if (isOnAxis(left) && isOnAxis(right))
            bars += {left, right, label(values, frequency), groupName};
    };
    if (!from.isNull() && !to.isNull()) {
        add(from.toDouble(), from.toDouble(), to.toDouble());
        return bars;
    }
    const double bandwidth = first(values, {QStringLiteral("Bandwidth"), QStringLiteral("FFM_Settings/IFBandwidth"),
                                            QStringLiteral("ShortTime_Settings/Bandwidth")})
                                 .toDouble();
    const double half = isOnAxis(bandwidth) ? bandwidth / 2 : 0;
    const QStringList centres = frequencyPaths();
    for (const PathValue& value : values)
        if (const double centre = value.text.toDouble(); centre > 0 && centres.contains(WithoutPlaces(value.path)))
            add(centre, qMax(0., centre - half), qMin(centre + half, Scale::highestFrequency));
    return bars;
}

struct Bars
{
    QVector<Bar> drawn;
    int entriesWithout = 0; ///< a frequency that can be drawn
};

Bars barsIn(const FrequencyStoreListHelper& helper, const QStringList& groups)
{
    Bars bars;
    for (const ITallyObject* entry : entriesIn(helper)) {
        const QVector<Bar> own = barsOf(valuesOf(*entry), groups);
        bars.drawn += own;
        bars.entriesWithout += own.isEmpty();
    }
    return bars;
}

QString remarkOn(const Bars& bars, const FrequencyStoreListHelper& helper)
{
    const QString count = countIn(helper);
    return bars.entriesWithout == 0 ? count : count + QStringLiteral(", %1 not drawn").arg(bars.entriesWithout);
}

/// Where the picture goes. Throws UsageError for what is more likely the list itself.
QString targetOf(const CommandLine& line)
{
    const QString path = line.value(output);
    if (path.isEmpty())
        throw UsageError(QStringLiteral("-o is missing."));
    if (formNamed(QFileInfo(path).suffix()))
        throw UsageError(QStringLiteral("-o takes a picture, and '%1' is the name of a list.").arg(path));
    return path;
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
    line.addSkipOption();
    line.addValue({QStringLiteral("o"), output}, QStringLiteral("SVG"), QStringLiteral("The file to write."));
    line.addValue({colourBy}, QStringLiteral("NAME"),
                  QStringLiteral("The member whose value decides on a bar's colour; Type, if not told."));
    return line.run(arguments, [&] {
        const ListFile file = line.input(line.files(1, 1).first());
        const QString target = targetOf(line);
        FrequencyStoreListHelper helper;
        readList(file, helper);
        const QString group = line.isSet(colourBy) ? line.value(colourBy) : QStringLiteral("Type");
        const Bars bars = barsIn(helper, pathsNamed(group, entryDescription(file.type)));
        if (bars.drawn.isEmpty())
            throw TallyException(file.name + QStringLiteral(": there is no entry with a frequency."));
        const QString title = QFileInfo(file.name).fileName();
        writeBytes(target, pictureOf(bars.drawn, title, remarkOn(bars, helper)));
        return CommandLine::Done;
    });
}
