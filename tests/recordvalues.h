#pragma once

/// Records in fixtures: the values that they hold, by their paths, as in Type='t' FFM_Settings/Frequency='1.00'.

#include "goldencases.h"

#include <QRegularExpression>

inline QString valuesOf(const TALLYFORM::ITallyObject& record)
{
    QStringList values;
    for (const Velmara::PathValue& value : Velmara::ValuesIn(record))
        values += value.path + "='" + value.text + "'";
    return values.join(' ');
}

/// Sets what a text tells; with "no" ahead of a path, resets what is there.
inline void setValues(TALLYFORM::ITallyObject& record, const QString& text)
{
    static const QRegularExpression form("([\\w/]+)='([^']*)'|no ([\\w/]+)");
    for (auto matches = form.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (const auto* const member = Velmara::DescriptionOf(record).member(match.captured(3)))
            member->reset(record);
        else if (match.capturedLength(3) > 0)
            Velmara::ResetAt(record, match.captured(3));
        else
            Velmara::SetTextAt(record, match.captured(1), unescaped(match.captured(2)));
    }
}

/// One record for each line, and those behind it that begin with a blank; each has what is common, too.
template <class R> QVector<R> recordsIn(const QString& text, const QString& common = QString())
{
    static const QRegularExpression end("\n(?! )");
    QVector<R> records;
    for (const QString& line : text.split(end, Qt::SkipEmptyParts)) {
        records.append(R());
        setValues(records.last(), common + ' ' + line);
    }
    return records;
}
