#pragma once

#include <QStringList>
#include <QVector>

/// Prints text in aligned columns, row by row.
class Table
{
public:
    struct Column
    {
        QString title;
        bool isNumber; ///< and stands to the right
        int width;     ///< of the longest cell
    };

    /// Prints the titles.
    explicit Table(const QVector<Column>& columns);
    void print(const QStringList& cells) const;

private:
    QString lineOf(const QStringList& cells) const;

    QVector<Column> m_columns;
};
