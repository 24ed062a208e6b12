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

/// What failed; the system's own word for a file that did not take all its bytes is often "unknown".
QString reasonOf(const QFileDevice& file)
{
    return file.isOpen() ? QStringLiteral("Not all bytes could be written: ") + file.errorString() : file.errorString();
}

bool writeAll(QFileDevice& file, const QByteArray& content)
{
    // Without the flush a full disk goes unnoticed: commit() alone would put a truncated file in place of a good one.
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

} // namespace

bool SaveFile(const QString& path, const QByteArray& content, QString& reason)
{
    if (!canBeReplaced(path)) { // a pipe or a device stays what it is and takes the bytes
        QFile device(path);
        if (writeAll(device, content))
            return true;
        reason = reasonOf(device);
        return false;
    }
    QSaveFile file(path);
    if (writeAll(file, content) && file.commit())
        return true;
    reason = reasonOf(file);
    return false;
}

} // namespace TALLYFORM
