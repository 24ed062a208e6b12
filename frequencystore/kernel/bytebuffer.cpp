#include "frequencystore/kernel/bytebuffer.h"

#include <limits>
#include <new>

namespace Velmara::kernel {

void ByteBuffer::grow(int size)
{
    constexpr qint64 most = std::numeric_limits<int>::max() - 64;
    constexpr qint64 least = 4096;
    if (m_size + qint64(size) > most)
        throw std::bad_alloc();
    m_room = int(qMin(qMax(m_size + size + least, 2 * qint64(m_room)), most));
    m_bytes.resize(m_room);
    m_start = m_bytes.data();
}

} // namespace Velmara::kernel
