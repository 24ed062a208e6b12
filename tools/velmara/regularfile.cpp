#include "regularfile.h"

#include <base/exceptions.h>
#include <base/readfile.h>
#include <base/savefile.h>

#include <QFileInfo>
#include <QTemporaryFile>

#include <unistd.h>

using namespace TALLYFORM;

namespace {

/// Of what is not there, the one who reads it tells.
bool canBeReadAgain(const ListFile& file)
{
    const QFileInfo info(file.path);
    return !file.isStream() && (info.isFile() || info.isDir() || !info.exists());
}

void demand(bool isDone, const ListFile& file, const QFileDevice& device)
{
    if (!isDone)
        throw TallyException(QString("%1: %2").arg(file.name, device.errorString()));
}

void copy(const ListFile& file, QTemporaryFile& to)
{
    QFile from(file.path);
    const bool isOpen = file.isStream() ? from.open(STDIN_FILENO, QIODevice::ReadOnly) : from.open(QIODevice::ReadOnly);
    demand(isOpen, file, from);
    demand(to.open(), file, to);
    constexpr qint64 portion = 1 << 20;
    while (to.pos() <= GetInputLimit()) { // beyond it, reading the copy fails
        const QByteArray bytes = from.read(portion);
        demand(from.error() == QFileDevice::NoError, file, from);
        if (bytes.isEmpty())
            break;
        demand(to.write(bytes) == bytes.size(), file, to);
    }
    demand(to.flush(), file, to);
}

} // namespace

ListFile asRegularFile(const ListFile& file)
{
    if (canBeReadAgain(file))
        return file;
    const auto copied = std::make_shared<QTemporaryFile>();
    copy(file, *copied);
    ListFile regular = file;
    regular.path = copied->fileName();
    regular.copy = copied;
    return regular;
}
