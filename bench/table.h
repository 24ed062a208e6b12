#pragma once

/// The table of ratios, as markdown.

#include <QString>

#include <optional>
#include <vector>

namespace Velmara::bench {

/// One thing that is compared with its floor.
struct Row
{
    QString name;
    QString velmara; ///< what an entry takes
    QString floor;   ///< what it takes without the library
    QString rate;    ///< of the library
    double ratio = 0;
    std::optional<double> goal; ///< what the ratio may be at most
};

QString microseconds(double seconds);
QString bytes(double count);
QString megabytesPerSecond(double bytes, double seconds);

QString tableOf(const std::vector<Row>& rows);

} // namespace Velmara::bench
