#include "fuzz/target.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace Velmara::fuzz {

quint8 Input::byte()
{
    const quint8 first = m_rest.isEmpty() ? 0 : quint8(m_rest[0]);
    m_rest.remove(0, 1);
    return first;
}

quint32 Input::word()
{
    quint32 word = 0;
    for (int i = 0; i < 4; ++i)
        word = word << 8 | byte();
    return word;
}

void require(bool isKept, const char* promise)
{
    if (isKept)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

QString scratchFile(const QByteArray& content)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath("input"));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "a scratch file can be written");
    return file.fileName();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a file that was written can be read");
    return file.readAll();
}

} // namespace Velmara::fuzz
