#pragma once

#include <QString>
#include <QVector>

/// A frequency axis over so many pixels: logarithmic where the frequencies span more than a decade or so.
class Scale
{
public:
    struct Tick
    {
        double place;
        QString label;
    };

    /// Frequencies in hertz.
    Scale(double lowest, double highest, double pixels);

    double place(double frequency) const;
    QVector<Tick> ticks() const;

private:
    QVector<double> linearTicks() const;
    QVector<double> decadeTicks() const;

    bool m_isLogarithmic;
    double m_lowest, m_highest, m_pixels;
};

/// A frequency with the unit that suits it: "118.5 MHz".
QString frequencyText(double hertz);
