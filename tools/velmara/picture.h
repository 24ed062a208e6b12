#pragma once

#include <QString>
#include <QVector>

/// What an entry occupies.
struct Bar
{
    double from, to; ///< in hertz, from 0 to Scale::highestFrequency
    QString label;
    QString group; ///< decides on the colour
};

/// Bars over a frequency axis, as a document of SVG, with a title and a remark in its head. Bars that would meet stand
/// above each other; labels stand where there is room. The most frequent groups have colours of their own.
QByteArray pictureOf(const QVector<Bar>& bars, const QString& title, const QString& remark);
