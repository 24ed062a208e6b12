#include "frequencystore/kernel/packed.h"

#include "base/exceptions.h"

#include <QTimeZone>
#include <QtEndian>

namespace Velmara::kernel {

namespace {

/// A zone as QTimeZone writes it: its name or, behind a mark, all that it is made of.
QDateTime inZone(QDataStream& in, QDate date, QTime clock)
{
    QString name;
    in >> name;
    if (name == QLatin1String("OffsetFromUtc")) {
        QString text;
        qint32 offset = 0, country = 0;
        in >> text >> offset >> text >> text >> country >> text;
        return QDateTime(date, clock, Qt::OffsetFromUTC, offset);
    }
    const QByteArray id = name.toUtf8();
    return QTimeZone::isTimeZoneIdAvailable(id) ? QDateTime(date, clock, QTimeZone(id)) : QDateTime();
}

} // namespace

void putPacked(QDataStream& out, const QDateTime& time)
{
    out << (time.timeSpec() == Qt::TimeZone && !time.timeZone().isValid() ? QDateTime() : time);
}

void getPacked(QDataStream& in, QDateTime& time)
{
    QDate date;
    QTime clock;
    qint8 spec = Qt::LocalTime;
    in >> date >> clock >> spec;
    switch (spec) {
    case Qt::LocalTime:
    case Qt::UTC: time = QDateTime(date, clock, Qt::TimeSpec(spec)); break;
    case Qt::OffsetFromUTC: {
        qint32 offset = 0;
        in >> offset;
        time = QDateTime(date, clock, Qt::OffsetFromUTC, offset);
        break;
    }
    case Qt::TimeZone: time = inZone(in, date, clock); break;
    default: time = QDateTime();
    }
}

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
