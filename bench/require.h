#pragma once

#include <QFile>

#include <cmath>
#include <stdexcept>
#include <string>

namespace Velmara::bench {

/// Ends the run where what is measured is not what it should be; else gives true.
inline bool require(bool isMet, const char* statement)
{
    if (!isMet)
        throw std::runtime_error(std::string("does not hold: ") + statement);
    return true;
}

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a file opens");
    return file.readAll();
}

/// Whether sums are the same that may have been taken in another order.
inline bool isNear(double left, double right) { return std::abs(left - right) <= 1e-9 * std::abs(left); }

} // namespace Velmara::bench
