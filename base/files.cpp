#include "base/files.h"

#include <QFileInfo>
#include <QSaveFile>

#include <atomic>

namespace TALLYFORM {

namespace {

bool canBeReplaced(const QString& path)
{
    const QFileInfo target(path);
    return !target.exists() || target.isFile() || target.isDir(); // of a directory the opening tells
}

/// The system's own word for a file that did not take all its bytes is often "unknown".
SaveResult fail(const QFileDevice& file, QString& reason)
{
    reason
        = file.isOpen() ? QStringLiteral("Not all bytes could be written: ") + file.errorString() : file.errorString();
    return file.isOpen() ? SaveResult::NotWritten : SaveResult::NotOpened;
}

bool writeAll(QFileDevice& file, const QByteArray& content)
{
    // Without the flush a full disk goes unnoticed: commit() alone would put a truncated file in place of a good one.
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

std::atomic<qint64> inputLimit = qint64(1) << 30;

} // namespace

qint64 GetInputLimit() { return inputLimit.load(std::memory_order_relaxed); }
void SetInputLimit(qint64 bytes) { inputLimit.store(bytes, std::memory_order_relaxed); }

bool ReadFile(QFile& file, QByteArray& content, QString& reason)
{
    const qint64 limit = GetInputLimit();
    content.clear();
    content.reserve(int(qBound<qint64>(0, file.size() - file.pos(), limit)));
    constexpr qint64 chunk = 1 << 20; // a device may have no end, and does not tell its size
    for (QByteArray bytes = file.read(chunk); !bytes.isEmpty(); bytes = file.read(chunk)) {
        content += bytes;
        if (content.size() > limit) {
            reason = QStringLiteral("Larger than the limit of %1 bytes.").arg(limit);
            return false;
        }
    }
    reason = file.errorString();
    return file.error() == QFileDevice::NoError;
}

SaveResult SaveFile(const QString& path, const QByteArray& content, QString& reason)
{
    if (!canBeReplaced(path)) { // a pipe or a device stays what it is and takes the bytes
        QFile device(path);
        return writeAll(device, content) ? SaveResult::Saved : fail(device, reason);
    }
    QSaveFile file(path);
    if (!writeAll(file, content))
        return fail(file, reason);
    if (file.commit())
        return SaveResult::Saved;
    reason = file.errorString();
    return SaveResult::NotWritten;
}

} // namespace TALLYFORM
