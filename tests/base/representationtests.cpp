#include "note.h"

using namespace TALLYFORM;

TEST(RepresentationTest, StandsInStreamsOneBehindTheOtherInAnyByteOrder)
{
    EXPECT_EQ(sampleNote().GetBinaryRepresentationAsQByteArray().left(4), QByteArray("\xE7\xF5\x3C\x68"));
    for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        QDataStream stream(&buffer);
        stream.setByteOrder(order);
        EXPECT_TRUE(sampleNote().GetBinaryRepresentation(stream));
        EXPECT_TRUE(sampleNote().GetCompressedBinaryRepresentation(stream));
        EXPECT_FALSE(Note().GetBinaryRepresentation(stream)) << "nothing to write";
        EXPECT_FALSE(Note().GetCompressedBinaryRepresentation(stream)) << "nothing to write";
        buffer.seek(0);
        Note first, second;
        EXPECT_TRUE(first.SetBinaryRepresentation(stream) && second.SetBinaryRepresentation(stream));
        EXPECT_TRUE(first == sampleNote() && second == sampleNote());
        EXPECT_FALSE(Note().SetBinaryRepresentation(stream)) << "at the end";
        buffer.close();
        buffer.open(QIODevice::ReadOnly);
        QDataStream full(&buffer), fullToo(&buffer);
        EXPECT_FALSE(sampleNote().GetBinaryRepresentation(full));
        EXPECT_FALSE(sampleNote().GetCompressedBinaryRepresentation(fullToo));
    }
    QDataStream none;
    EXPECT_FALSE(Note().SetBinaryRepresentation(none));
}

TEST(RepresentationTest, ForeignBytesAreRefused)
{
    const QByteArray compressed = sampleNote().GetCompressedBinaryRepresentationAsQByteArray();
    QByteArray liar = compressed, understated = compressed;
    liar.replace(0, 4, QByteArray("\x7F\xFF\xFF\x00", 4)); // announces two gigabytes
    understated[3] = char(understated[3] - 1);
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\xE7"), QByteArray("\xE7\xF5\x3C\x68"), QByteArray("\xFF\xFF\xFF\xFFx"),
          QByteArray(8, '\0'), liar, understated, compressed.chopped(5), compressed.left(5), qCompress("plain text"),
          Note(1).GetBinaryRepresentationAsQByteArray()}) {
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

TEST(MergeTest, TakesOverWhatTheOtherHoldsIfThatIsOfItsClass)
{
    Note note("old", QString(), {"0"}), other(1);
    other.m_title = "t";
    EXPECT_TRUE(note.MergeTallyObject(sampleNote()));
    EXPECT_TRUE(note.MergeTallyObject(Note())) << "nothing to take over";
    EXPECT_FALSE(note.MergeTallyObject(other));
    EXPECT_EQ(note, Note(sampleNote().m_title, sampleNote().m_body, QStringList{"0"} + sampleNote().m_lines));
}
