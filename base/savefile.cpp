#include "base/savefile.h"

#include <QFileInfo>
#include <QSaveFile>

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

} // namespace

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
