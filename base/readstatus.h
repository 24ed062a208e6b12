#pragma once

#include <QDataStream>

namespace TALLYFORM {

/// Lets a read count its own failures alone. What went wrong on the stream before is told again in the end, for the
/// first failure is the one that a stream keeps.
class ReadStatus
{
public:
    explicit ReadStatus(QDataStream& stream) : m_stream(stream), m_before(stream.status()) { stream.resetStatus(); }
    ~ReadStatus()
    {
        if (m_before == QDataStream::Ok)
            return;
        m_stream.resetStatus();
        m_stream.setStatus(m_before);
    }
    ReadStatus(const ReadStatus&) = delete;
    ReadStatus& operator=(const ReadStatus&) = delete;

private:
    QDataStream& m_stream;
    QDataStream::Status m_before;
};

} // namespace TALLYFORM
