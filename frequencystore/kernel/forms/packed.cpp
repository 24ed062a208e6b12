#include "frequencystore/kernel/forms/packed.h"

#include "base/exceptions.h"

#include <QTimeZone>

namespace Velmara::kernel {

namespace {

/// A zone as QTimeZone writes it: its name or, behind a mark, all that it is made of.
QDateTime inZone(BinarySource& in, QDate date, QTime clock)
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

/// As Qt 5.0 writes it, in UTC and with what it is to be turned into. Qt crashes on a zone, which has no name there.
QDateTime fromUtc(BinarySource& in)
{
    QDate date;
    QTime clock;
    qint8 spec = Qt::UTC;
    in >> date >> clock >> spec;
    const QDateTime time(date, clock, Qt::UTC);
    return spec == Qt::LocalTime ? time.toLocalTime() : time;
}

QDateTime dateTimeFrom(BinarySource& in)
{
    if (in.version() == QDataStream::Qt_5_0)
        return fromUtc(in);
    if (in.version() < QDataStream::Qt_5_2) { // knows no zones
        QDateTime time;
        in >> time;
        return time;
    }
    qint64 day = 0;
    quint32 milliseconds = 0;
    qint8 spec = Qt::LocalTime;
    in >> day >> milliseconds >> spec;
    const QDate date = QDate::fromJulianDay(day);
    const QTime clock = QTime::fromMSecsSinceStartOfDay(int(milliseconds));
    switch (spec) {
    case Qt::LocalTime:
    case Qt::UTC: return QDateTime(date, clock, Qt::TimeSpec(spec));
    case Qt::OffsetFromUTC: {
        qint32 offset = 0;
        in >> offset;
        return QDateTime(date, clock, Qt::OffsetFromUTC, offset);
    }
    case Qt::TimeZone: return inZone(in, date, clock);
    default: return QDateTime();
    }
}

} // namespace

void putPacked(BinarySink& out, const QDateTime& time)
{
    out << (time.timeSpec() == Qt::TimeZone && !time.timeZone().isValid() ? QDateTime() : time);
}

void getPacked(BinarySource& in, QDateTime& time)
{
    time = dateTimeFrom(in);
    if (!time.isValid())
        time = QDateTime();
}

QString getVersion(const ITallyObject& self, BinarySource& in, const QString& expected)
{
    const QString version = in.text(expected);
    if (version != expected && in.isOk())
        throw TALLYFORM::BinaryParsingException(
            QStringLiteral("%1: the packed stream has schema version '%2', only '%3' can be read.")
                .arg(self.GetObjectName(), version, expected),
            Fault::Kind::OtherVersion);
    return version;
}

} // namespace Velmara::kernel
