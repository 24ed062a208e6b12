#include "base/frameinput.h"

#include "base/report.h"

#include <QtEndian>

#include <zlib.h>

#include <algorithm>
#include <new>

namespace TALLYFORM {

/// Goes on with what qCompress made, behind the size that it announces.
class FrameInput::Inflation
{
public:
    explicit Inflation(quint32 size) : m_left(size)
    {
        if (inflateInit(&m_stream) != Z_OK)
            throw std::bad_alloc();
    }
    ~Inflation() { inflateEnd(&m_stream); }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;

    bool needsInput() const { return m_stream.avail_in == 0 && !m_isEnded; }
    template <class Fill> void takeInput(Fill fill)
    {
        m_stream.next_in = m_input;
        m_stream.avail_in = uInt(fill(reinterpret_cast<char*>(m_input), qint64(sizeof m_input)));
    }

    /// -1 for data that are damaged or of another size.
    qint64 read(char* to, qint64 size)
    {
        m_stream.next_out = reinterpret_cast<Bytef*>(to);
        m_stream.avail_out = uInt(std::min<qint64>(size, 1 << 30));
        const uInt room = m_stream.avail_out;
        const int result = m_isEnded ? Z_STREAM_END : inflate(&m_stream, Z_NO_FLUSH);
        const qint64 count = room - m_stream.avail_out;
        m_isEnded = result == Z_STREAM_END;
        m_left -= count;
        const bool isGood = (result == Z_OK || m_isEnded) && m_left >= 0 && (!m_isEnded || m_left == 0);
        return isGood ? count : -1;
    }
    bool isEnded() const { return m_isEnded; }

private:
    z_stream m_stream{};
    Bytef m_input[1 << 16];
    qint64 m_left; ///< of what was announced
    bool m_isEnded = false;
};

FrameInput::FrameInput(const QString& path, std::optional<quint32> tag) : m_file(path)
{
    if (!m_file.open(QIODevice::ReadOnly))
        throw Refusal({path}, m_file.errorString(), Fault::Kind::Unreadable);
    if (!tag)
        return;
    constexpr int word = sizeof(quint32);
    constexpr char deflated = 0x78; // the first byte of zlib's default method and window
    const QByteArray head = m_file.peek(2 * word + 1);
    const auto wordAt = [&](int place) { return qFromBigEndian<quint32>(head.constData() + place); };
    if (head.size() <= 2 * word || wordAt(0) == *tag)
        return;
    const bool isStreamed = head[2 * word] == deflated && wordAt(0) + word == quint64(m_file.size());
    if (isStreamed || head[word] == deflated) {
        m_inflation = std::make_unique<Inflation>(wordAt(isStreamed ? word : 0));
        m_file.skip(isStreamed ? 2 * word : word);
    }
}

FrameInput::~FrameInput() = default;

qint64 FrameInput::read(char* to, qint64 size)
{
    if (!m_inflation)
        return readFile(to, size);
    for (qint64 count = 0; count == 0 && !m_inflation->isEnded();) {
        if (m_inflation->needsInput())
            m_inflation->takeInput([this](char* input, qint64 room) { return readFile(input, room); });
        count = m_inflation->read(to, size);
        if (count < 0)
            throw Refusal({path()}, QStringLiteral("The compressed data are damaged."), Fault::Kind::Damaged);
        if (count > 0)
            return count;
    }
    return 0;
}

qint64 FrameInput::readFile(char* to, qint64 size)
{
    const qint64 count = m_file.read(to, size);
    if (m_file.error() != QFileDevice::NoError)
        throw Refusal({path()}, m_file.errorString(), Fault::Kind::Unreadable);
    return std::max<qint64>(count, 0);
}

} // namespace TALLYFORM
