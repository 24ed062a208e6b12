#pragma once

/// What a CSV format is: a table of columns. The tables stand in formats.cpp and results.cpp, a line for each column.

#include "frequencystore/exchangereport.h"
#include "frequencystore/records/detectionresult.h"
#include "frequencystore/records/frequencystorelist.h"

namespace Velmara::csv {

/// A cell that is read. Text that is not of the form asked for reads as 0, false or an invalid time, and is noted.
class CellText
{
public:
    explicit CellText(QStringView text) : m_text(text) {}

    QString text() const { return m_text.toString(); }
    QStringView name() const { return m_text; }
    double number();
    int integer();
    bool boolean();
    QDateTime time();
    /// Notes that the cell is passed over.
    void passOver() { m_isOfForm = false; }
    bool isOfForm() const { return m_isOfForm; }

private:
    QStringView m_text;
    bool m_isOfForm = true;
};

enum class CellKind { Number, Text, Time };

/// One column: the value of a record of class R that its cells hold, and how. Cells are "---" for a value that is not
/// set, and such a cell leaves it unset, unless the column is refined:
///     VELMARA_COLUMN("Alarm", Detail, Alarm, YesNo).filled().neededIf(hasAlarm)
template <class R> struct Column
{
    using Test = bool (*)(const R&);
    using Reader = void (*)(R&, CellText&);

    QLatin1String name;
    QString member; ///< the path of the value
    QString form;   ///< as the documentation calls it
    CellKind kind;
    Test isSet;
    void (*append)(const R&, QString&);
    Reader read;

    bool isFilled = false;
    bool isBlank = false;
    bool isAlwaysRead = false;
    Test isNeeded = nullptr;
    Test isPassedOver = nullptr;

    /// The cell of a value that is not set holds what the value is then, as 0.
    Column filled() const { return remarked("written even if not set").with(&Column::isFilled, true); }
    /// The cell of a value that is not set is empty.
    Column blank() const { return remarked("empty if not set").with(&Column::isBlank, true); }
    /// The cell "---" is read as any other.
    Column alwaysRead() const
    {
        return remarked("always read").with(&Column::isFilled, true).with(&Column::isAlwaysRead, true);
    }
    /// Records for which the test fails have no cell there. A file has the column if any of its records needs it, or if
    /// it has no records.
    Column neededIf(Test test) const { return with(&Column::isNeeded, test); }
    /// A reader of its own, and which cells of a file it passes over.
    Column readBy(Reader reader, Test passedOver) const
    {
        return with(&Column::read, reader).with(&Column::isPassedOver, passedOver);
    }
    /// What the documentation has to add.
    Column remarked(const char* text) const
    {
        return with(&Column::form, QString(form + QLatin1String(", ") + QLatin1String(text)));
    }

    bool hasCell(const R& record) const { return !isNeeded || isNeeded(record); }

private:
    template <class T> Column with(T Column::*fact, T value) const
    {
        Column c = *this;
        c.*fact = value;
        return c;
    }
};

template <class R> struct Format
{
    QVector<Column<R>> columns; ///< of store entries the first one is "Type", by which rows are counted
    bool hasTrailingSeparator = true;
    bool areEmptyCellsMarked = true; ///< by "---"
    /// What a record that was read needs beyond its cells; may be null.
    void (*complete)(R&) = nullptr;
};

/// The format of store entries of a list type. Throws TallyException for one that has none.
const Format<FrequencyStoreEntry>& formatOf(FrequencyStoreListHelper::ListType type);
const Format<DetectionResult>& formatOfResults();

/// The text of a file; adds to the report what it holds and what a reader will not get back.
QString write(const Format<FrequencyStoreEntry>& format, const QVector<FrequencyStoreEntry>& entries,
              ExportReport& report);
QString write(const Format<DetectionResult>& format, const QVector<DetectionResult>& results, ExportReport& report);
/// Appends the rows of a file to a list. Throws TallyException; the report tells the place.
void read(const Format<FrequencyStoreEntry>& format, const QString& file, FrequencyStoreList& list,
          ImportReport& report);

} // namespace Velmara::csv
