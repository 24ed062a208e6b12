#pragma once

#include <QString>

class QFile;

namespace TALLYFORM {

/// The limit on input that is to be in memory as a whole, where a byte array has no room for more than 2 GiB.
qint64 limitInMemory();

/// An open file from its position on, if it is no larger than the limit in bytes.
class LimitedFile
{
public:
    /// Of a file that outlives this.
    LimitedFile(QFile& file, qint64 limit);

    /// Fills `size` bytes, but at the end of the file; gives how many. On failure there are no more.
    int read(char* to, int size);
    qint64 limit() const { return m_limit; }
    /// Of what is read from now on.
    void setLimit(qint64 limit) { m_limit = limit; }
    /// How many bytes were read.
    qint64 size() const { return m_size; }
    /// Why reading failed; null if it did not.
    const QString& reason() const { return m_reason; }

private:
    void check(qint64 size);

    QFile& m_file;
    qint64 m_limit;
    qint64 m_size = 0;
    QString m_reason;
};

} // namespace TALLYFORM
