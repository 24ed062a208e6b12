#pragma once

#include <QByteArray>

#include <algorithm>

namespace Velmara::kernel {

/// Appends to a byte array in many small pieces. The array has spare room at its end until the buffer is gone.
class ByteBuffer
{
public:
    explicit ByteBuffer(QByteArray& bytes) : m_bytes(bytes), m_size(bytes.size()), m_room(bytes.size()) {}
    ~ByteBuffer() { trim(); }
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;

    int size() const { return m_size; }
    char* at(int position) { return m_start + position; }
    /// Makes the content so many bytes longer, and gives the place to write them; valid until the next call.
    char* extend(int size)
    {
        if (size > m_room - m_size)
            grow(size);
        m_size += size;
        return m_start + m_size - size;
    }
    /// Makes room for content that is likely to come; a bad guess costs little.
    void expect(qint64 size)
    {
        constexpr qint64 most = 1 << 28;
        if (const int wanted = int(qMin(size, most)); wanted > m_room - m_size)
            grow(wanted);
    }
    void append(const char* bytes, int size) { std::copy_n(bytes, size, extend(size)); }
    void truncate(int size) { m_size = size; }
    /// Gives up the spare room, without a request for memory.
    void trim()
    {
        if (!m_start) // there is none, and the bytes may be shared
            return;
        m_bytes.reserve(m_size); // else the resize may move the bytes to give back room, for which it needs room
        m_bytes.resize(m_room = m_size);
    }

private:
    /// Throws std::bad_alloc beyond what a byte array can hold.
    void grow(int size);

    QByteArray& m_bytes;
    char* m_start = nullptr;
    int m_size;
    int m_room;
};

} // namespace Velmara::kernel
