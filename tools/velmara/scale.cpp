#include "scale.h"

#include <cmath>

namespace {

constexpr double widestLinearRatio = 12;

/// The least of 1, 2 and 5 times a power of ten that is not below a number.
double roundStep(double least)
{
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1., 2., 5.})
        if (factor * power >= least)
            return factor * power;
    return 10 * power;
}

} // namespace

Scale::Scale(double lowest, double highest, double pixels)
    : m_isLogarithmic(lowest > 0 && highest / lowest > widestLinearRatio), m_lowest(lowest), m_highest(highest),
      m_pixels(pixels)
{
    if (m_isLogarithmic) {
        m_lowest /= 1.1;
        m_highest *= 1.1;
    } else {
        const double margin = highest > lowest ? (highest - lowest) / 40 : qMax(1., std::fabs(highest) / 1000);
        m_lowest -= margin;
        m_highest += margin;
    }
}

double Scale::place(double frequency) const
{
    const double share = m_isLogarithmic ? std::log(frequency / m_lowest) / std::log(m_highest / m_lowest)
                                         : (frequency - m_lowest) / (m_highest - m_lowest);
    return qBound(0., share, 1.) * m_pixels;
}

QVector<Scale::Tick> Scale::ticks() const
{
    QVector<Tick> ticks;
    for (const double frequency : m_isLogarithmic ? decadeTicks() : linearTicks())
        ticks += {place(frequency), frequencyText(frequency)};
    return ticks;
}

QVector<double> Scale::linearTicks() const
{
    const double step = roundStep((m_highest - m_lowest) / (m_pixels / 110));
    QVector<double> frequencies;
    for (double n = std::ceil(m_lowest / step); n * step <= m_highest; ++n)
        frequencies += n * step;
    return frequencies;
}

QVector<double> Scale::decadeTicks() const
{
    const double decades = std::log10(m_highest / m_lowest);
    const QVector<double> factors = decades < m_pixels / 300 ? QVector<double>{1, 2, 5} : QVector<double>{1};
    QVector<double> frequencies;
    for (double power = std::pow(10, std::floor(std::log10(m_lowest))); power <= m_highest; power *= 10)
        for (const double factor : factors)
            if (factor * power >= m_lowest && factor * power <= m_highest)
                frequencies += factor * power;
    return frequencies;
}

QString frequencyText(double hertz)
{
    struct Unit
    {
        double size;
        const char* name;
    };
    for (const Unit& unit : {Unit{1e9, "GHz"}, Unit{1e6, "MHz"}, Unit{1e3, "kHz"}})
        if (std::fabs(hertz) >= unit.size)
            return QString::number(hertz / unit.size, 'g', 10) + QLatin1Char(' ') + QLatin1String(unit.name);
    return QString::number(hertz, 'g', 10) + QStringLiteral(" Hz");
}
