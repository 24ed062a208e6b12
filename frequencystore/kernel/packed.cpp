#include "frequencystore/kernel/packed.h"

#include "base/exceptions.h"

#include <QtEndian>

namespace Velmara::kernel {

void putBits(QDataStream& out, quint64 bits, int count)
{
    const quint64 bytes = qToLittleEndian(bits);
    out.writeRawData(reinterpret_cast<const char*>(&bytes), (count + 7) / 8);
}

quint64 getBits(QDataStream& in, int count)
{
    quint64 bytes = 0;
    in.readRawData(reinterpret_cast<char*>(&bytes), (count + 7) / 8);
    return qFromLittleEndian(bytes) & ((quint64(1) << count) - 1);
}

QString getVersion(const ITallyObject& self, QDataStream& in, const QString& expected)
{
    QString version;
    in >> version;
    if (version != expected && in.status() == QDataStream::Ok)
        throw TALLYFORM::BinaryParsingException(
            QStringLiteral("%1: the packed stream has schema version '%2', only '%3' can be read.")
                .arg(self.GetObjectName(), version, expected));
    return version;
}

} // namespace Velmara::kernel
