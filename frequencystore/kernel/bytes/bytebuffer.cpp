#include "frequencystore/kernel/bytes/bytebuffer.h"

#include <limits>
#include <new>

namespace Velmara::kernel {

void ByteBuffer::grow(int size)
{
    constexpr qint64 most = std::numeric_limits<int>::max() - 64;
    constexpr qint64 least = 4096;
    const qint64 needed = m_size + qint64(size);
    if (needed > most)
        throw std::bad_alloc();
    m_room
        = needed <= m_bytes.capacity() ? m_bytes.capacity() : int(qMin(qMax(needed + least, 2 * qint64(m_size)), most));
    m_bytes.resize(m_room);
    m_start = m_bytes.data();
}

} // namespace Velmara::kernel
