#pragma once

#include <QString>
#include <QVector>

/// A frequency axis over so many pixels: logarithmic where the frequencies span more than a decade or so. What lies
/// beyond it stands at its end.
class Scale
{
public:
    struct Tick
    {
        double place;
        QString label;
    };

    /// `edges` are frequencies in hertz from 0 to `highestFrequency`, at least one.
    Scale(const QVector<double>& edges, double pixels);

    static constexpr double highestFrequency = 1e15;

    double place(double frequency) const;
    QVector<Tick> ticks() const;

private:
    bool m_isLogarithmic;
    double m_lowest, m_highest, m_pixels;
};

/// A frequency with the unit that suits it: "118.5 MHz".
QString frequencyText(double hertz);
