#pragma once

#include <QStringList>
#include <QVector>

/// Text in aligned columns.
class Table
{
public:
    struct Column
    {
        QString title;
        bool isNumber; ///< and stands to the right
    };

    explicit Table(const QVector<Column>& columns) : m_columns(columns) {}

    void add(const QStringList& cells) { m_rows += cells; }
    /// Prints the titles and all rows.
    void print() const;

private:
    QVector<int> widths() const;

    QVector<Column> m_columns;
    QVector<QStringList> m_rows;
};
