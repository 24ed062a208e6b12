#include "messages.h"

#include "terminal.h"

#include <QMap>

#include <algorithm>

using namespace TALLYFORM;
using namespace Velmara;

namespace {

QString quoted(const QString& text)
{
    constexpr int limit = 60;
    return QStringLiteral("'%1'").arg(visible(shortened(text, limit)));
}

QString placeOf(const QString& file, const CsvCell& cell)
{
    QString place = file;
    if (cell.line > 0)
        place += QStringLiteral(", line %1").arg(cell.line);
    if (!cell.column.isEmpty())
        place += QStringLiteral(", column %1, cell %2").arg(quoted(cell.column), quoted(cell.text));
    return place + QStringLiteral(": ");
}

QString columns(const QStringList& names)
{
    QStringList list;
    for (const QString& name : names)
        list += quoted(name);
    return (names.size() == 1 ? QStringLiteral("column ") : QStringLiteral("columns "))
         + list.join(QStringLiteral(", "));
}

struct Remark
{
    CsvCell cell;
    QString text;
};

constexpr int fewRemarks = 10, manyRemarks = 100000; // whose text takes some 30 MB

const QString likewise = QStringLiteral(": the same in %1 more places."),
              passedOver = QStringLiteral(": %1 more passed over.");

/// One warning for each of the first cases, and one for the rest.
template <class Case, class TextOf>
QStringList firstOf(const QString& file, const QVector<Case>& cases, int most, const QString& rest, TextOf textOf)
{
    QStringList warnings;
    for (const Case& each : cases.mid(0, most))
        warnings += textOf(each);
    if (cases.size() > most)
        warnings += file + rest.arg(cases.size() - most);
    return warnings;
}

QStringList warningsOf(const QString& file, const QVector<Remark>& remarks, int most, const QString& rest = likewise)
{
    return firstOf(file, remarks, most, rest,
                   [&](const Remark& remark) { return placeOf(file, remark.cell) + remark.text; });
}

QVector<Remark> remarksOn(const QVector<CsvBadRow>& rows)
{
    QVector<Remark> remarks;
    for (const CsvBadRow& row : rows)
        remarks += {row.place, row.reason};
    return remarks;
}

QVector<Remark> remarksOn(const QVector<CsvCell>& misread)
{
    QVector<Remark> remarks;
    for (const CsvCell& cell : misread)
        remarks += {cell, QStringLiteral("not in the form of its column, and not read as it stands.")};
    return remarks;
}

/// What there is to say of rows and cells, in their order if all of it is to be told.
QStringList remarksOn(const QString& file, const ImportReport& report, Extent extent)
{
    const QVector<Remark> rows = remarksOn(report.skipped), cells = remarksOn(report.misread);
    if (extent == Extent::First)
        return warningsOf(file, rows, fewRemarks, passedOver) + warningsOf(file, cells, fewRemarks);
    QVector<Remark> all = rows + cells;
    std::stable_sort(all.begin(), all.end(),
                     [](const Remark& a, const Remark& b) { return a.cell.line < b.cell.line; });
    return warningsOf(file, all, manyRemarks);
}

QString placeOfResult(const QString& file, const RefusedResult& result)
{
    QString place = file + QStringLiteral(": ");
    if (result.index >= 0)
        place
            += QStringLiteral("DetectionResult[%1], ID %2: ").arg(QString::number(result.index + 1), quoted(result.id));
    return place;
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
        texts += (each.value() == 1 ? QStringLiteral("%1 of %2 result") : QStringLiteral("%1 of %2 results"))
                     .arg(each.key(), QString::number(each.value()));
    return texts;
}

QString reasonOf(CsvDamage damage)
{
    switch (damage) {
    case CsvDamage::LongLine: return QStringLiteral("the line is longer than a reader takes.");
    case CsvDamage::BrokenLine:
        return QStringLiteral("a separator or a line end within a cell breaks the line for a reader.");
    case CsvDamage::NoCharacter: return QStringLiteral("half a surrogate pair is no character; a reader gets '?'.");
    case CsvDamage::ReadAsUnset: return QStringLiteral("a reader takes this for a value that is not set.");
    case CsvDamage::ReadAsDashes: return QStringLiteral("the text is empty, and a reader gets '---'.");
    }
    return {};
}

QVector<Remark> remarksOn(const ExportReport& report, CsvDamage damage)
{
    QVector<Remark> remarks;
    for (const CsvDamagedCell& cell : report.damaged)
        if (cell.damage == damage)
            remarks += {cell, reasonOf(damage)};
    return remarks;
}

} // namespace

QString describe(const Fault& fault)
{
    QStringList parts{fault.message};
    if (fault.place.line == 0 && !fault.path.isEmpty()) // a place in the input says more
        parts.prepend(fault.path);
    if (const QString origin = fault.place.text(); !origin.isEmpty())
        parts.prepend(origin);
    return parts.join(QStringLiteral(": "));
}

bool tellsFile(const QString& message, const QString& file)
{
    return message.startsWith(file + QStringLiteral(": ")) || message.startsWith(file + QStringLiteral(", "))
        || message.contains(QLatin1Char('\'') + file + QLatin1Char('\''));
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
        warnings
            += file + QStringLiteral(": not all of it is in UTF-8; what is not became U+FFFD, or nothing at the end.");
    if (report.emptyLine > 0)
        warnings += placeOf(file, {report.emptyLine, {}, {}})
                  + QStringLiteral("the data end at this empty line; what stands behind it was not read.");
    if (!report.unknownColumns.isEmpty())
        warnings
            += file + QStringLiteral(": passed over the unknown ") + columns(report.unknownColumns) + QLatin1Char('.');
    if (!report.repeatedColumns.isEmpty())
        warnings += file + QStringLiteral(": read the first only of the repeated ") + columns(report.repeatedColumns)
                  + QLatin1Char('.');
    if (!report.missingColumns.isEmpty())
        warnings += file + QStringLiteral(": did not find the ") + columns(report.missingColumns) + QLatin1Char('.');
    return warnings + remarksOn(file, report, extent);
}

QString describe(const QString& file, const ConversionReport& report)
{
    return placeOfResult(file, report.failed) + report.error;
}

QStringList refusalsIn(const QString& file, const ConversionReport& report)
{
    return firstOf(file, report.refused, fewRemarks, passedOver,
                   [&](const RefusedResult& result) { return placeOfResult(file, result) + result.reason; });
}

QStringList lossesIn(const QString& file, const ConversionReport& report)
{
    QStringList losses = countsOf(report.reduced);
    if (!report.heading.isEmpty())
        losses.prepend(report.heading.join(QStringLiteral(", ")) + QStringLiteral(" of the list"));
    if (losses.isEmpty())
        return {};
    return {file + QStringLiteral(": entries do not take over: ") + losses.join(QStringLiteral("; "))
            + QLatin1Char('.')};
}

QStringList warningsOf(const QString& file, const ExportReport& report)
{
    QStringList warnings;
    for (const CsvDamage damage : {CsvDamage::LongLine, CsvDamage::BrokenLine, CsvDamage::NoCharacter,
                                   CsvDamage::ReadAsUnset, CsvDamage::ReadAsDashes})
        warnings += warningsOf(file, remarksOn(report, damage), fewRemarks);
    if (!report.untuned.isEmpty())
        warnings += placeOf(file, {report.untuned.first(), {}, {}})
                  + QStringLiteral("%1 from here on without a fixed frequency, which a reader gets as 0.")
                        .arg(report.untuned.size() == 1 ? QStringLiteral("1 entry")
                                                        : QStringLiteral("%1 entries").arg(report.untuned.size()));
    return warnings;
}
