#pragma once

#include "frequencystore/velmara_export.h"

#include <QStringList>
#include <QVector>

class QTextStream;

namespace Velmara {

namespace csv {
class Lines;
}

/// One column of a CSV file: its text in the header line and one value per row.
class VELMARA_EXPORT CSVColumn
{
public:
    CSVColumn();
    /// A column without values.
    explicit CSVColumn(QString const& name);
    /// Copies name and values.
    CSVColumn(CSVColumn const& other);
    /// Takes over name and values.
    CSVColumn& operator=(CSVColumn const& other);
    virtual ~CSVColumn();

    /// Appends the value of a row.
    void AddValue(QString const& value);
    /// The text in the header line.
    QString const GetName() const;
    /// Never null; valid as long as the column lives and is not changed.
    QStringList const* GetValues() const;
    /// Sets the text in the header line.
    void SetName(QString const& name);

private:
    QString m_name;
    QStringList m_values;
};

/// A semicolon-separated text file in memory, column by column. There is no quoting and no trimming: a semicolon always
/// separates. Lines that begin with '#' may stand ahead of the header; the first empty line ends the data.
class VELMARA_EXPORT CSVFileLoader
{
public:
    CSVFileLoader();
    /// Loads a file; throws as LoadFile does.
    explicit CSVFileLoader(QString const& fileName);
    /// Copies what is loaded.
    CSVFileLoader(CSVFileLoader const& other);
    /// Takes over what is loaded.
    CSVFileLoader& operator=(CSVFileLoader const& other);
    virtual ~CSVFileLoader();

    /// Loads a file, UTF-8 unless a byte order mark tells otherwise, behind what is loaded already. Throws
    /// TallyException if the file cannot be opened, is empty, or has a row that does not fit the header.
    void LoadFile(QString const& fileName);
    /// The same with a stream that is open already; `name` serves the messages.
    void LoadFile(QTextStream& stream, QString const& name);

    /// Whether every name of a semicolon-separated list is a column.
    bool CheckHeader(QString const& header);
    /// The first column of that name, or null; valid until the loader is changed.
    CSVColumn const* GetColumn(QString const& name) const;
    /// The names of the columns, in their order.
    QStringList GetColumnNames() const;
    /// Always empty: every failure is an exception.
    QString const& GetErrorText() const;
    /// The line in the file, counted from 1 with comments and header, on which a row stands.
    int GetLine(int row) const;
    /// The line that was read last: the one at fault after a failure, else the empty one or the last one of the file.
    int GetLastLine() const;
    /// Whether the file that was loaded last has data behind the empty line that ended it.
    bool HasDataBehindEnd() const;

private:
    bool Exist(QString const& name);
    void load(csv::Lines& lines, QString const& source);

    QVector<CSVColumn> m_columns;
    QVector<int> m_lines;
    int m_lastLine = 0;
    bool m_hasDataBehindEnd = false;
    QString m_errorText;
};

} // namespace Velmara
