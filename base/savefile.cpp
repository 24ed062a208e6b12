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
        reason = device.errorString();
        return false;
    }
    QSaveFile file(path);
    if (writeAll(file, content) && file.commit())
        return true;
    reason = file.errorString();
    return false;
}

} // namespace TALLYFORM
