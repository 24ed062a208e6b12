#include "base/limitedfile.h"

#include "base/readfile.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <limits>

namespace TALLYFORM {

namespace {

constexpr int portion = 1 << 20; // a device may have no end, and does not tell its size

std::atomic<qint64> inputLimit = qint64(1) << 30;

} // namespace

qint64 GetInputLimit() { return inputLimit.load(std::memory_order_relaxed); }
void SetInputLimit(qint64 bytes) { inputLimit.store(bytes, std::memory_order_relaxed); }
qint64 limitInMemory() { return std::min<qint64>(std::numeric_limits<int>::max() - 2 * portion, GetInputLimit()); }

/// A file that tells its size is refused ahead of its first byte.
LimitedFile::LimitedFile(QFile& file, qint64 limit) : m_file(file), m_limit(limit) { check(file.size() - file.pos()); }

void LimitedFile::check(qint64 size)
{
    if (size > m_limit)
        m_reason = QStringLiteral("Larger than the limit of %1 bytes.").arg(m_limit);
}

int LimitedFile::read(char* to, int size)
{
    if (!m_reason.isNull())
        return 0;
    int filled = 0;
    for (qint64 count = 1; count > 0 && filled < size; filled += int(count)) // a pipe may give less than it has
        count = std::max<qint64>(0, m_file.read(to + filled, size - filled));
    m_size += filled;
    if (m_file.error() != QFileDevice::NoError)
        m_reason = m_file.errorString();
    else
        check(m_size);
    return m_reason.isNull() ? filled : 0;
}

bool ReadFile(QFile& file, QByteArray& content, QString& reason)
{
    LimitedFile input(file, limitInMemory());
    content.clear();
    if (input.reason().isNull())
        content.reserve(int(file.size() - file.pos()) + portion);
    for (int read = portion; read == portion;) {
        const int before = content.size();
        content.resize(before + portion);
        read = input.read(content.data() + before, portion);
        content.truncate(before + read);
    }
    reason = input.reason();
    return reason.isNull();
}

} // namespace TALLYFORM
