/// The binary forms on streams of every setting and device: the bytes are those of the stream itself.

#include "pipe.h"
#include "recordfixture.h"

#include <QTemporaryFile>
#include <QTimeZone>

#include <algorithm>
#include <functional>

using namespace Velmara;

namespace {

using Setting = std::function<void(QDataStream&)>;

/// Runs a test with streams of every setting.
template <class Test> void withSettings(Test test)
{
    for (const auto version : {QDataStream::Qt_4_6, QDataStream::Qt_5_0, QDataStream::Qt_5_2, QDataStream::Qt_5_15})
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian})
            for (const auto precision : {QDataStream::SinglePrecision, QDataStream::DoublePrecision}) {
                SCOPED_TRACE(testing::Message() << "version " << version << ", order " << order);
                test([=](QDataStream& stream) {
                    stream.setVersion(version);
                    stream.setByteOrder(order);
                    stream.setFloatingPointPrecision(precision);
                });
            }
}

/// Memory that holds other bits than it is given, and has room for so many bytes.
class Inverter : public QBuffer
{
public:
    explicit Inverter(qint64 room) : m_room(room) { open(QIODevice::ReadWrite | QIODevice::Unbuffered); }
    static void invert(char* data, qint64 size) { std::transform(data, data + size, data, std::bit_not<char>()); }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        const qint64 count = QBuffer::readData(data, size);
        invert(data, qMax<qint64>(0, count));
        return count;
    }
    qint64 writeData(const char* data, qint64 size) override
    {
        QByteArray bytes(data, int(qMin(size, m_room - pos())));
        invert(bytes.data(), bytes.size());
        return QBuffer::writeData(bytes.constData(), bytes.size());
    }

private:
    qint64 m_room;
};

template <class Write> QByteArray written(const Setting& apply, Write write)
{
    return bytesOf([&](QDataStream& stream) {
        apply(stream);
        write(stream);
    });
}

Station station(const QDateTime& time = QDateTime({2024, 2, 29}, {12, 0}, Qt::UTC))
{
    Station s;
    s.SetStationID(-7);
    s.SetOWNStation(true);
    s.SetTimeStamp(time);
    s.SetLongitude(10.25);
    s.SetLatitude(-3.5);
    s.SetName(QString::fromUtf8("\u00e4\u4e2d"));
    s.SetPositionSource("");
    return s;
}

/// What becomes of a time on a stream, of which an older version knows no offsets; null without a value.
QDateTime carried(const Setting& apply, const QDateTime& time)
{
    QDataStream stream(written(apply, [&](QDataStream& out) { out << time; }));
    apply(stream);
    QDateTime read;
    stream >> read;
    return read.isValid() ? read : QDateTime();
}

/// Reads two packed stations, one behind the other, and what follows them.
void expectTwo(QDataStream&& stream, const Setting& apply, const Station& expected)
{
    apply(stream);
    Station first, second;
    quint16 behind = 0;
    first.SetVersionSpecificBinaryWithoutValidation(stream);
    second.SetVersionSpecificBinaryWithoutValidation(stream);
    stream >> behind;
    EXPECT_TRUE(first == expected && second == expected);
    EXPECT_EQ(first.GetTimeStamp().isNull(), expected.GetTimeStamp().isNull());
    EXPECT_EQ(behind, 0x1234);
    EXPECT_EQ(stream.status(), QDataStream::Ok);
}

} // namespace

TEST(Streams, HoldWhatTheStreamItselfWouldWrite)
{
    const QDateTime utc({2024, 2, 29}, {23, 59, 58, 7}, Qt::UTC);
    const QDate none;
    for (const QDateTime& time :
         {utc, utc.toLocalTime(), utc.toOffsetFromUtc(3600), QDateTime(), QDateTime(none, QTime(), Qt::UTC),
          QDateTime(none, {1, 2}, Qt::UTC), QDateTime(none, {1, 2}), QDateTime(none, {1, 2}, Qt::OffsetFromUTC, 60)}) {
        SCOPED_TRACE(time.toString(Qt::ISODate).toStdString());
        const Station s = station(time);
        withSettings([&](const Setting& apply) {
            const QByteArray two = written(apply, [&](QDataStream& stream) {
                s.GetVersionSpecificBinaryWithoutValidation(stream);
                s.GetVersionSpecificBinaryWithoutValidation(stream);
                stream << quint16(0x1234);
            });
            EXPECT_EQ(two, written(apply, [&](QDataStream& stream) {
                          for (int i = 0; i < 2; ++i)
                              stream << quint8(0xbf) << Station::schemaVersion() << qint64(-7) << true << time << 10.25
                                     << -3.5 << s.GetName() << QString("");
                          stream << quint16(0x1234);
                      }));

            const Station expected = station(carried(apply, time));
            QTemporaryFile file;
            ASSERT_TRUE(file.open() && file.write(two) == two.size() && file.seek(0));
            Pipe pipe(two);
            expectTwo(QDataStream(two), apply, expected);
            expectTwo(QDataStream(&file), apply, expected);
            expectTwo(QDataStream(&pipe), apply, expected);

            QDataStream tagged(written(apply, [&](QDataStream& out) { EXPECT_TRUE(s.GetBinary(out, 7, true)); }));
            apply(tagged);
            qint32 tag = 0, length = 0;
            tagged >> tag >> length;
            EXPECT_EQ(length, tagged.device()->bytesAvailable());
            Station read;
            read.SetBinary(tagged, length);
            EXPECT_EQ(xml(read), xml(s));
        });
    }
}

TEST(Streams, CountTheFailuresOfAReadAlone)
{
    const Station s = station();
    const QByteArray frames = s.GetBinaryRepresentationAsQByteArray().repeated(2);
    Pipe pipe(frames + packed(s));
    QDataStream memory(frames), piped(&pipe);
    for (QDataStream* const stream : {&memory, &piped}) {
        stream->setStatus(QDataStream::ReadCorruptData);
        Station first, second;
        EXPECT_TRUE(first.SetBinaryRepresentation(*stream));
        quint32 tag = 0;
        qint32 length = 0;
        *stream >> tag >> length;
        second.SetBinary(*stream, length);
        EXPECT_TRUE(first == s && second == s);
        EXPECT_EQ(stream->status(), QDataStream::ReadCorruptData) << "as it was";
    }
}

TEST(Streams, AreCutShortAlikeInMemoryAndInAPipe)
{
    const QByteArray fields[] = {
        bytesOf([](QDataStream& out) { out << 1 << 100 << quint64(0); }),          // of no member
        bytesOf([](QDataStream& out) { out << 0x247E7491 << 100 << 96 << "11"; }), // of one
    };
    for (const QByteArray& field : fields) {
        Pipe pipe(field);
        QDataStream memory(field), piped(&pipe);
        EXPECT_THROW(Coordinate().SetBinary(memory, 108), TALLYFORM::BinaryParsingException);
        EXPECT_THROW(Coordinate().SetBinary(piped, 108), TALLYFORM::BinaryParsingException);
    }
    const QByteArray whole = packed(station());
    for (int size = 0; size < whole.size(); ++size) {
        Station fromMemory, fromPipe;
        Pipe pipe(whole.left(size));
        QDataStream memory(whole.left(size)), stream(&pipe);
        fromMemory.SetVersionSpecificBinaryWithoutValidation(memory);
        fromPipe.SetVersionSpecificBinaryWithoutValidation(stream);
        EXPECT_NE(memory.status(), QDataStream::Ok) << size;
        EXPECT_EQ(memory.status(), stream.status()) << size;
        EXPECT_TRUE(fromMemory == fromPipe) << size;
    }
}

TEST(Streams, AreWrittenWhereTheyStandOrStayAsTheyWere)
{
    const Station s = station();
    Area unset, empty; // a mandatory list that is not there throws, one without items declines
    unset.SetName("Harbour");
    empty = unset;
    empty.GetCoordinate();
    for (const int place : {0, 2, 4}) {
        QByteArray bytes("abcd");
        const QByteArray kept = bytes;
        QBuffer buffer(&bytes);
        qint64 told = 0;
        QObject::connect(&buffer, &QIODevice::bytesWritten, [&](qint64 count) { told += count; });
        ASSERT_TRUE(buffer.open(QIODevice::ReadWrite) && buffer.seek(place));
        QDataStream stream(&buffer);
        EXPECT_THROW(unset.GetBinary(stream, 7, true), TALLYFORM::TallyException);
        EXPECT_FALSE(empty.GetBinary(stream, 7, true));
        EXPECT_EQ(bytes, kept);
        s.GetVersionSpecificBinaryWithoutValidation(stream);
        EXPECT_TRUE(place < 4 || told == packed(s).size()) << "what is appended is told at once";
        stream << quint8('z');
        EXPECT_EQ(bytes, kept.left(place) + packed(s) + 'z');
        EXPECT_EQ(kept, "abcd");
    }
    QDataStream none;
    EXPECT_FALSE(station(QDateTime()).GetBinary(none, 7, true));
}

TEST(Streams, LeaveADeviceThatIsMoreThanMemoryItsOwnWay)
{
    const Station s = station();
    const QByteArray form = packed(s);
    const int most = tagged(s).size();
    for (const int room : {0, 1, most - 1, most}) {
        Inverter framed(room), device(room);
        QDataStream frames(&framed), stream(&device);
        EXPECT_EQ(s.GetBinary(frames, 7, true), room == most);
        EXPECT_EQ(frames.status() == QDataStream::Ok, room == most);
        s.GetVersionSpecificBinaryWithoutValidation(stream);
        EXPECT_EQ(stream.status() == QDataStream::Ok, room >= form.size());
        if (room < form.size())
            continue;
        Station read;
        device.seek(0);
        read.SetVersionSpecificBinaryWithoutValidation(stream);
        EXPECT_TRUE(read == s);
        QByteArray inverted = form;
        Inverter::invert(inverted.data(), inverted.size());
        EXPECT_EQ(device.data(), inverted);
    }
}
