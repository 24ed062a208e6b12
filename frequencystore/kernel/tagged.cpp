#include "frequencystore/kernel/tagged.h"

#include "base/exceptions.h"

#include <QIODevice>

namespace Velmara::kernel {

qint64 reserveWord(QDataStream& out)
{
    const qint64 position = out.device()->pos();
    out << quint32(0);
    return position;
}

void patchWord(QDataStream& out, qint64 position, quint32 word)
{
    QIODevice& device = *out.device();
    const qint64 end = device.pos();
    device.seek(position);
    out << word;
    device.seek(end);
}

void closeLength(QDataStream& out, qint64 position)
{
    patchWord(out, position, quint32(out.device()->pos() - position - 4));
}

void putBytes(QDataStream& out, QLatin1String ascii)
{
    out << (ascii.isNull() ? QByteArray() : QByteArray::fromRawData(ascii.data(), ascii.size()));
}

void refuseLength(const ITallyObject& self)
{
    throw TALLYFORM::BinaryParsingException(
        self.GetObjectName()
        + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation"));
}

} // namespace Velmara::kernel
