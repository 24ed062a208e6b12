#include "messages.h"

#include "terminal.h"

#include <QMap>

#include <algorithm>

using namespace TALLYFORM;
using namespace Velmara;

namespace {

constexpr int few = 10, many = 100000; // whose text takes some 30 MB

const QString likewise = ": the same in %1 more places.", passedOver = ": %1 more passed over.";

const std::pair<CsvDamage, QString> damages[] = {
    {CsvDamage::LongLine, "the line is longer than a reader takes."},
    {CsvDamage::BrokenLine, "a separator or a line end within a cell breaks the line for a reader."},
    {CsvDamage::NoCharacter, "half a surrogate pair is no character; a reader gets '?'."},
    {CsvDamage::ReadAsUnset, "a reader takes this for a value that is not set."},
    {CsvDamage::ReadAsDashes, "the text is empty, and a reader gets '---'."},
};

QString quoted(const QString& text)
{
    constexpr int limit = 60;
    return QString("'%1'").arg(visible(shortened(text, limit)));
}

QString placeOf(const QString& file, const CsvCell& cell)
{
    QString place = file;
    if (cell.line > 0)
        place += QString(", line %1").arg(cell.line);
    if (!cell.column.isEmpty())
        place += QString(", column %1, cell %2").arg(quoted(cell.column), quoted(cell.text));
    return place + ": ";
}

QString textOf(const QString& file, const CsvBadRow& row) { return placeOf(file, row.place) + row.reason; }

QString textOf(const QString& file, const RefusedResult& result)
{
    QString place = file + ": ";
    if (result.index >= 0)
        place += QString("DetectionResult[%1], ID %2: ").arg(QString::number(result.index + 1), quoted(result.id));
    return place + result.reason;
}

/// One warning for each of the first cases, and one for the rest.
template <class Case>
QStringList warningsOf(const QString& file, const QVector<Case>& cases, const QString& rest, int most = few)
{
    QStringList warnings;
    for (const Case& each : cases.mid(0, most))
        warnings += textOf(file, each);
    if (cases.size() > most)
        warnings += file + rest.arg(cases.size() - most);
    return warnings;
}

/// What there is to say of rows and cells, in their order if all of it is to be told.
QStringList remarksOn(const QString& file, const ImportReport& report, Extent extent)
{
    QVector<CsvBadRow> cells;
    for (const CsvCell& cell : report.misread)
        cells += {cell, "not in the form of its column, and not read as it stands."};
    if (extent == Extent::First)
        return warningsOf(file, report.skipped, passedOver) + warningsOf(file, cells, likewise);
    QVector<CsvBadRow> all = report.skipped + cells;
    std::stable_sort(all.begin(), all.end(),
                     [](const CsvBadRow& a, const CsvBadRow& b) { return a.place.line < b.place.line; });
    return warningsOf(file, all, likewise, many);
}

/// A warning of columns, if there are any.
QStringList warningOf(const QString& what, const QStringList& columns)
{
    QStringList names;
    for (const QString& column : columns)
        names += quoted(column);
    if (names.isEmpty())
        return {};
    const QString word = names.size() == 1 ? "column " : "columns ";
    return {what + word + names.join(", ") + '.'};
}

/// "ID of 2 results; Baudrate of 1 result"
QStringList countsOf(const QVector<ReducedResult>& results)
{
    QMap<QString, int> counts;
    for (const ReducedResult& result : results)
        for (const QString& member : result.members)
            ++counts[member];
    QStringList texts;
    for (auto each = counts.cbegin(); each != counts.cend(); ++each)
        texts += QString("%1 of %2").arg(each.key(), counted(each.value(), "result", "results"));
    return texts;
}

} // namespace

QString describe(const Fault& fault)
{
    const QString path = fault.place.line == 0 ? fault.path : QString(); // a place in the input says more
    QStringList parts{fault.place.text(), path, fault.message};
    parts.removeAll(QString());
    return parts.join(": ");
}

bool tellsFile(const QString& message, const QString& file)
{
    return message.startsWith(file + ": ") || message.startsWith(file + ", ") || message.contains('\'' + file + '\'');
}

QString describe(const QString& file, const ImportReport& report)
{
    const bool isTold = report.failed.line == 0 && tellsFile(report.error, file);
    return isTold ? report.error : placeOf(file, report.failed) + report.error;
}

QStringList warningsOf(const QString& file, const ImportReport& report, Extent extent)
{
    QStringList warnings;
    if (report.isMisencoded)
        warnings += file + ": not all of it is in UTF-8; what is not became U+FFFD, or nothing at the end.";
    if (report.emptyLine > 0)
        warnings += placeOf(file, {report.emptyLine, {}, {}})
                  + "the data end at this empty line; what stands behind it was not read.";
    return warnings << warningOf(file + ": passed over the unknown ", report.unknownColumns)
                    << warningOf(file + ": read the first only of the repeated ", report.repeatedColumns)
                    << warningOf(file + ": did not find the ", report.missingColumns)
                    << remarksOn(file, report, extent);
}

QString describe(const QString& file, const ConversionReport& report)
{
    return textOf(file, RefusedResult{report.failed.index, report.failed.id, report.error});
}

QStringList refusalsIn(const QString& file, const ConversionReport& report)
{
    return warningsOf(file, report.refused, passedOver);
}

QStringList lossesIn(const QString& file, const ConversionReport& report)
{
    QStringList losses = countsOf(report.reduced);
    if (!report.heading.isEmpty())
        losses.prepend(report.heading.join(", ") + " of the list");
    if (losses.isEmpty())
        return {};
    return {file + ": entries do not take over: " + losses.join("; ") + '.'};
}

QStringList warningsOf(const QString& file, const ExportReport& report)
{
    QStringList warnings;
    for (const auto& [damage, reason] : damages) {
        QVector<CsvBadRow> cells;
        for (const CsvDamagedCell& cell : report.damaged)
            if (cell.damage == damage)
                cells += {cell, reason};
        warnings += warningsOf(file, cells, likewise);
    }
    if (!report.untuned.isEmpty())
        warnings += placeOf(file, {report.untuned.first(), {}, {}}) + counted(report.untuned.size(), "entry", "entries")
                  + " from here on without a fixed frequency, which a reader gets as 0.";
    return warnings;
}
