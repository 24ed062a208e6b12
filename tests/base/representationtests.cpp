#include "note.h"

#include <QBuffer>
#include <gtest/gtest.h>

using namespace TALLYFORM;

TEST(RepresentationTest, StartsWithTheTag)
{
    EXPECT_EQ(sampleNote().GetBinaryRepresentationAsQByteArray().left(4), QByteArray("\xE7\xF5\x3C\x68"));
    EXPECT_TRUE(Note().GetBinaryRepresentationAsQByteArray().isEmpty());
    EXPECT_TRUE(Note().GetCompressedBinaryRepresentationAsQByteArray().isEmpty());
}

TEST(RepresentationTest, StreamsHoldOneObjectBehindTheOtherInAnyByteOrder)
{
    for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        QDataStream stream(&buffer);
        stream.setByteOrder(order);
        sampleNote().GetBinaryRepresentation(stream);
        sampleNote().GetCompressedBinaryRepresentation(stream);
        sampleNote().GetBinaryRepresentation(stream);
        buffer.seek(0);
        for (int i = 0; i < 3; ++i) {
            Note read;
            EXPECT_TRUE(read.SetBinaryRepresentation(stream));
            EXPECT_EQ(read, sampleNote());
        }
        EXPECT_FALSE(Note().SetBinaryRepresentation(stream)) << "at the end";
    }
    QDataStream none;
    EXPECT_FALSE(Note().SetBinaryRepresentation(none));
}

TEST(RepresentationTest, ForeignBytesAreRefused)
{
    const QByteArray compressed = sampleNote().GetCompressedBinaryRepresentationAsQByteArray();
    QByteArray liar = compressed;
    liar.replace(0, 4, QByteArray("\x7F\xFF\xFF\x00", 4)); // announces two gigabytes
    QByteArray understated = compressed;
    understated[3] = char(understated[3] - 1);
    const QByteArray foreign[] = {QByteArray(),
                                  QByteArray("\xE7"),
                                  QByteArray("\xE7\xF5\x3C\x68"),
                                  QByteArray("<Note/>"),
                                  liar,
                                  understated,
                                  compressed.left(compressed.size() - 5),
                                  compressed.left(5),
                                  qCompress(QByteArray("plain text")),
                                  Note(1).GetBinaryRepresentationAsQByteArray(),
                                  QByteArray(8, '\0'),
                                  QByteArray("\xFF\xFF\xFF\xFFx")};
    for (const QByteArray& bytes : foreign) {
        Note note;
        EXPECT_FALSE(note.SetBinaryRepresentation(bytes)) << bytes.toHex().toStdString();
        EXPECT_EQ(note, Note());
    }
}

TEST(RepresentationTest, BrokenFramesThrow)
{
    const QByteArray plain = sampleNote().GetBinaryRepresentationAsQByteArray();
    for (const QByteArray& bytes : {plain.chopped(1), plain + 'x', plain.left(8), qCompress(plain.chopped(1))})
        EXPECT_THROW(Note().SetBinaryRepresentation(bytes), BinaryParsingException) << bytes.toHex().toStdString();
    for (const QByteArray& bytes : {plain.chopped(1), plain.left(6)}) {
        QDataStream stream(bytes);
        EXPECT_THROW(Note().SetBinaryRepresentation(stream), BinaryParsingException) << bytes.toHex().toStdString();
    }
}

TEST(MergeTest, TakesOverWhatTheOtherHolds)
{
    Note note(QStringLiteral("old"), QString(), {QStringLiteral("0")});
    EXPECT_TRUE(note.MergeTallyObject(sampleNote()));
    EXPECT_EQ(note.m_body, sampleNote().m_body);
    EXPECT_EQ(note.m_lines, QStringList{QStringLiteral("0")} + sampleNote().m_lines);
    EXPECT_TRUE(note.MergeTallyObject(Note())) << "nothing to take over";
    EXPECT_EQ(note.m_title, sampleNote().m_title);
}

TEST(MergeTest, RefusesAnotherClass)
{
    Note other(1);
    other.m_title = QStringLiteral("t");
    Note note;
    EXPECT_FALSE(note.MergeTallyObject(other));
    EXPECT_EQ(note, Note());
}
