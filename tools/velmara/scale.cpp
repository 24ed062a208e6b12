#include "scale.h"

#include <algorithm>
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

QVector<double> linearTicks(double lowest, double highest, double pixels)
{
    const double step = roundStep((highest - lowest) / (pixels / 110));
    QVector<double> frequencies;
    for (double n = std::ceil(lowest / step); n * step <= highest; ++n)
        frequencies += n * step;
    return frequencies;
}

QVector<double> decadeTicks(double lowest, double highest, double pixels)
{
    const double decades = std::log10(highest / lowest);
    const QVector<double> factors = decades < pixels / 300 ? QVector<double>{1, 2, 5} : QVector<double>{1};
    QVector<double> frequencies;
    for (double power = std::pow(10, std::floor(std::log10(lowest))); power <= highest; power *= 10)
        for (const double factor : factors)
            if (factor * power >= lowest && factor * power <= highest)
                frequencies += factor * power;
    return frequencies;
}

} // namespace

Scale::Scale(const QVector<double>& edges, double pixels) : m_pixels(pixels)
{
    constexpr double lowestFrequency = 1;
    const auto [lowest, highest] = std::minmax_element(edges.begin(), edges.end());
    m_lowest = *lowest;
    m_highest = *highest;
    double leastPositive = m_highest;
    for (const double edge : edges)
        if (edge >= lowestFrequency)
            leastPositive = qMin(leastPositive, edge);
    m_isLogarithmic = m_highest / leastPositive > widestLinearRatio;
    if (m_isLogarithmic) {
        m_lowest = leastPositive / 1.1;
        m_highest *= 1.1;
        return;
    }
    constexpr double resolution = 1e-9; // of the highest frequency, so that neighbouring ticks differ
    const double usual = m_highest > m_lowest ? (m_highest - m_lowest) / 40 : m_highest / 1000;
    const double margin = qMax(usual, qMax(1., m_highest * resolution));
    m_lowest = qMax(0., m_lowest - margin);
    m_highest += margin;
}

double Scale::place(double frequency) const
{
    const double bounded = qBound(m_lowest, frequency, m_highest);
    const double share = m_isLogarithmic ? std::log(bounded / m_lowest) / std::log(m_highest / m_lowest)
                                         : (bounded - m_lowest) / (m_highest - m_lowest);
    return share * m_pixels;
}

QVector<Scale::Tick> Scale::ticks() const
{
    QVector<Tick> ticks;
    const auto frequencies = m_isLogarithmic ? decadeTicks : linearTicks;
    for (const double frequency : frequencies(m_lowest, m_highest, m_pixels))
        ticks += {place(frequency), frequencyText(frequency)};
    return ticks;
}

QString frequencyText(double hertz)
{
    struct Unit
    {
        double size;
        const char* name;
    };
    for (const Unit& unit : {Unit{1e12, "THz"}, Unit{1e9, "GHz"}, Unit{1e6, "MHz"}, Unit{1e3, "kHz"}})
        if (std::fabs(hertz) >= unit.size)
            return QString::number(hertz / unit.size, 'g', 10) + ' ' + unit.name;
    return QString::number(hertz, 'g', 10) + " Hz";
}
