#include "messages.h"

#include "terminal.h"

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

/// One warning for each of the first remarks, and one for the rest.
QStringList warningsOf(const QString& file, const QVector<Remark>& remarks, int most)
{
    QStringList warnings;
    for (const Remark& remark : remarks.mid(0, most))
        warnings += placeOf(file, remark.cell) + remark.text;
    if (remarks.size() > most)
        warnings += file + QStringLiteral(": the same in %1 more places.").arg(remarks.size() - most);
    return warnings;
}

/// What there is to say of rows and cells, in their order.
QVector<Remark> remarksOn(const ImportReport& report)
{
    QVector<Remark> remarks;
    for (const CsvBadRow& row : report.skipped)
        remarks += {row.place, row.reason};
    for (const CsvCell& cell : report.misread)
        remarks += {cell, QStringLiteral("not in the form of its column, and not read as it stands.")};
    std::stable_sort(remarks.begin(), remarks.end(),
                     [](const Remark& a, const Remark& b) { return a.cell.line < b.cell.line; });
    return remarks;
}

QString reasonOf(const CsvCell& damaged)
{
    return damaged.column.isEmpty()
             ? QStringLiteral("the line is longer than a reader takes.")
             : QStringLiteral("a separator or a line end within a cell breaks the line for a reader.");
}

} // namespace

QString describe(const TallyFormException& failure)
{
    return failure.GetOrigin().isEmpty() ? failure.GetMessage()
                                         : failure.GetOrigin() + QStringLiteral(": ") + failure.GetMessage();
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

QStringList warningsOf(const QString& file, const ImportReport& report)
{
    QStringList warnings;
    if (report.isMisencoded)
        warnings += file + QStringLiteral(": not all of it is in UTF-8; what is not became U+FFFD.");
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
    const int most = report.badRows == BadRows::AreSkipped ? manyRemarks : fewRemarks;
    return warnings + warningsOf(file, remarksOn(report), most);
}

QStringList warningsOf(const QString& file, const ExportReport& report)
{
    QVector<Remark> remarks;
    for (const CsvCell& cell : report.damaged)
        remarks += {cell, reasonOf(cell)};
    QStringList warnings = warningsOf(file, remarks, fewRemarks);
    if (!report.untuned.isEmpty())
        warnings += placeOf(file, {report.untuned.first(), {}, {}})
                  + QStringLiteral("%1 from here on without a fixed frequency, which a reader gets as 0.")
                        .arg(report.untuned.size() == 1 ? QStringLiteral("1 entry")
                                                        : QStringLiteral("%1 entries").arg(report.untuned.size()));
    return warnings;
}
