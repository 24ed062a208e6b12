#include "commandline.h"
#include "commands.h"
#include "content.h"
#include "picture.h"
#include "scale.h"
#include "terminal.h"

#include <QFileInfo>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

const QString output = "output", colourBy = "colour-by";

bool isOnAxis(double hertz) { return hertz >= 0 && hertz <= Scale::highestFrequency; }

/// The first of some values that an entry has; null without one.
QString first(const QStringList& paths, const QVector<PathValue>& values) { return textsAt(paths, values).value(0); }

/// The ranges that an entry occupies: around its frequencies, or the one that it names.
QVector<Bar> barsOf(const QVector<PathValue>& values, const QStringList& groups)
{
    constexpr int letters = 40;
    const QString name = first({"Comment", "ID", "Type"}, values);
    const QString group = first(groups, values);
    QVector<Bar> bars;
    const auto add = [&](double frequency, double left, double right) {
        const QString label = (frequencyText(frequency) + ' ' + shortened(name, letters)).trimmed();
        if (isOnAxis(left) && isOnAxis(right))
            bars += {left, right, label, group.isEmpty() ? "(none)" : group};
    };
    const QString from = first({rangeStartPath}, values), to = first({rangeStopPath}, values);
    if (!from.isNull() && !to.isNull()) {
        add(from.toDouble(), from.toDouble(), to.toDouble());
        return bars;
    }
    const double bandwidth
        = first({"Bandwidth", "FFM_Settings/IFBandwidth", "ShortTime_Settings/Bandwidth"}, values).toDouble();
    const double half = isOnAxis(bandwidth) ? bandwidth / 2 : 0;
    for (const QString& text : textsAt(frequencyPaths(), values))
        if (const double centre = text.toDouble(); centre > 0)
            add(centre, qMax(0., centre - half), qMin(centre + half, Scale::highestFrequency));
    return bars;
}

/// The picture of a list. Throws TallyException if there is nothing to draw.
QByteArray pictureOf(const FrequencyStoreListHelper& helper, const QStringList& groups, const QString& file)
{
    QVector<Bar> bars;
    int notDrawn = 0;
    for (const ITallyObject* entry : entriesIn(helper)) {
        const QVector<Bar> own = barsOf(valuesOf(*entry), groups);
        bars += own;
        notDrawn += own.isEmpty();
    }
    if (bars.isEmpty())
        throw TallyException(file + ": there is no entry with a frequency.");
    const QString remark = notDrawn == 0 ? QString() : QString(", %1 not drawn").arg(notDrawn);
    return pictureOf(bars, QFileInfo(file).fileName(), countIn(helper) + remark);
}

/// Where the picture goes. Throws UsageError for what is more likely the list itself.
QString targetOf(const CommandLine& line)
{
    const QString path = line.value(output);
    if (path.isEmpty())
        throw UsageError("-o is missing.");
    if (formNamed(QFileInfo(path).suffix()))
        throw UsageError(QString("-o takes a picture, and '%1' is the name of a list.").arg(path));
    return path;
}

} // namespace

int plot(const QStringList& arguments)
{
    CommandLine line("Draws a list over its frequencies, as a picture of SVG: each entry is a bar as "
                     "wide as its bandwidth.",
                     {"velmara plot memoryscan.xml -o plan.svg",
                      "velmara plot targets.csv --type TargetList --colour-by AnalogDemod -o plan.svg"});
    line.addPositionalArgument("FILE", "The list.");
    line.addInputOptions();
    line.addSkipOption();
    line.addOption({{"o", output}, "The file to write.", "SVG"});
    line.addOption({colourBy, "The member whose value decides on a bar's colour; Type, if not told.", "NAME", "Type"});
    return line.run(arguments, [&] {
        const ListFile file = line.input(line.files(1, 1).first());
        const QString target = targetOf(line);
        const FrequencyStoreListHelper helper = readList(file);
        const QStringList groups = pathsNamed(line.value(colourBy), entryDescription(file.type));
        writeBytes(target, pictureOf(helper, groups, file.name));
        return CommandLine::Done;
    });
}
