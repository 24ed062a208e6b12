#pragma once

/// What both binary forms need of a stream.

#include <QDataStream>

namespace Velmara::kernel {

/// How much room to reserve for the announced number of items: never more than the bytes left can fill, so that a false
/// count costs no memory.
int plausible(QDataStream& in, qint32 count);

/// Reads the items that a count announces; a stream that ends ahead of the last gets the status for that.
template <class T, class ReadItem> void readItems(QDataStream& in, QVector<T>& list, ReadItem readItem)
{
    qint32 count = 0;
    in >> count;
    const int wanted = list.size() + plausible(in, count);
    if (wanted > list.capacity())
        list.reserve(qMax(wanted, 2 * list.capacity())); // lists may come in many parts
    for (; count > 0 && !in.atEnd(); --count)
        readItem();
    if (count > 0)
        in.setStatus(QDataStream::ReadPastEnd);
}

} // namespace Velmara::kernel
