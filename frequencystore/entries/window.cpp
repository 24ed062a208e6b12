#include "frequencystore/entries/window.h"

#include "base/exceptions.h"
#include "base/readfile.h"

using namespace TALLYFORM;

namespace Velmara {

Window::Window(const QString& path, std::optional<quint32> tag) : m_input(path, tag)
{
    m_buffer.open(QIODevice::ReadOnly);
    m_stream.setDevice(&m_buffer);
    m_stream.setVersion(QDataStream::Qt_5_15);
    look(0);
}

void Window::look(int position)
{
    m_in.reset();
    m_stream.resetStatus();
    m_buffer.seek(position);
    m_in.emplace(m_stream);
}

bool Window::hold(qint64 bytes)
{
    while (held() < bytes)
        if (!readOn())
            return false;
    return true;
}

bool Window::readOn()
{
    constexpr int portion = 1 << 20;
    if (m_isComplete)
        return false;
    const int read = m_in->position();
    QByteArray bytes = m_buffer.data().mid(read);
    const int kept = bytes.size();
    if (kept > GetInputLimit())
        throw TallyException(
            Fault{.kind = Fault::Kind::Unreadable,
                  .place = place(),
                  .message = QStringLiteral("An item is larger than the limit of %1 bytes.").arg(GetInputLimit())});
    bytes.resize(kept + qMax(portion, kept)); // as much again, so that a long item is not read again and again
    const qint64 count = m_input.read(bytes.data() + kept, bytes.size() - kept);
    bytes.truncate(kept + int(count));
    m_isComplete = count == 0;
    m_start += read;
    m_in.reset();
    m_buffer.close();
    m_buffer.setData(bytes);
    m_buffer.open(QIODevice::ReadOnly);
    look(0);
    return !m_isComplete;
}

} // namespace Velmara
