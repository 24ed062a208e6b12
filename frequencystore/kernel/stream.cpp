#include "frequencystore/kernel/stream.h"

#include <QIODevice>

namespace Velmara::kernel {

int plausible(QDataStream& in, qint32 count)
{
    if (!in.device())
        return 0;
    constexpr qint64 bytesPerItem = 16; // most items need more
    const qint64 room = in.device()->bytesAvailable() / bytesPerItem + 1;
    return int(qBound<qint64>(0, count, room));
}

} // namespace Velmara::kernel
