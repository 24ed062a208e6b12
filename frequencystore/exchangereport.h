#pragma once

#include <QStringList>
#include <QVector>

namespace Velmara {

/// A cell of a CSV file, or a whole line if it names no column.
struct CsvCell
{
    int line = 0;   ///< counted from 1 as editors do, with comments and header; 0 if no line is meant
    QString column; ///< the name in the header line
    QString text;   ///< the cell as it stands in the file
};

/// A row of a CSV file that is no entry.
struct CsvBadRow
{
    CsvCell place;  ///< the line, and the cell if one is at fault
    QString reason; ///< as the exception tells it
};

/// What a row that is no entry does to the reading of a CSV file.
enum class BadRows { EndReading, AreSkipped };

/// What reading a CSV file did, and what it met.
struct ImportReport
{
    bool isComplete = false; ///< whether reading went through to the end of the data
    int entries = 0;         ///< how many were appended; those ahead of a failure stay
    QString error;           ///< the reason if reading failed
    CsvCell failed;          ///< where it failed

    BadRows badRows = BadRows::EndReading; ///< as the caller wanted it
    QVector<CsvBadRow> skipped;            ///< the bad rows, if they are skipped

    bool isMisencoded = false;   ///< whether bytes are no characters of the file's encoding: U+FFFD, or cut off
    int emptyLine = 0;           ///< the empty line that ended the data although more stand behind it; 0 if none did
    QVector<CsvCell> misread;    ///< cells not of their column's form, read as 0 or false or passed over
    QStringList unknownColumns;  ///< those of the file that the list type does not have
    QStringList repeatedColumns; ///< those that the file has more than once, of which the first was read
    QStringList missingColumns;  ///< those that every file of the list type has and this one has not
};

/// A detection result that gave no entry.
struct RefusedResult
{
    int index = -1; ///< its place in the list, counted from 0; -1 if no result is meant
    QString id;     ///< its ID, which may be that of others too
    QString reason; ///< as the exception tells it
};

/// What an entry does not take over of its detection result.
struct ReducedResult
{
    int index = -1;      ///< the place of the result in the list, counted from 0
    QString id;          ///< its ID
    QStringList members; ///< such as "ID", or "Bandwidth/Min" where others of the same child are taken over
};

/// What a detection result that gives no entry does to the conversion of its list.
enum class BadResults { EndConversion, AreSkipped };

/// What turning detection results into store entries did, and what it met.
struct ConversionReport
{
    bool isComplete = false; ///< whether the conversion went through to the end of the list
    int entries = 0;         ///< how many were appended, the heading among them; those ahead of a failure stay
    QString error;           ///< the reason if the conversion failed
    RefusedResult failed;    ///< where it failed

    BadResults badResults = BadResults::EndConversion; ///< as the caller wanted it
    QVector<RefusedResult> refused;                    ///< the results without an entry, if they are skipped

    QStringList heading;            ///< members of the list itself that are not taken over
    QVector<ReducedResult> reduced; ///< the results that are not taken over wholly
};

/// Why a reader will not get something back as it was.
enum class CsvDamage {
    LongLine,    ///< the line is longer than a reader takes; no cell is meant
    BrokenLine,  ///< there is a separator or a line end in the cell
    NoCharacter, ///< the text has half a surrogate pair, for which '?' is written
    ReadAsUnset, ///< the cell is that of a value that is not set, or one that a reader passes over
    ReadAsDashes ///< the text is empty, and a reader takes the "---" in its place for a text
};

/// A cell of a CSV file, or a whole line, that a reader will not get back as it was.
struct CsvDamagedCell : CsvCell
{
    CsvDamage damage = CsvDamage::LongLine; ///< the reason
};

/// What writing a CSV file did, and what it met.
struct ExportReport
{
    bool isComplete = false;         ///< whether the file was written
    int entries = 0;                 ///< how many it holds
    QString error;                   ///< the reason if it was not
    QVector<CsvDamagedCell> damaged; ///< what a reader will not get back as it was; a cell once for each reason
    QVector<int> untuned;            ///< lines of entries without a fixed frequency, which a reader gets as 0
};

} // namespace Velmara
