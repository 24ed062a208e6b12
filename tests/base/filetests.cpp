#include "base/readfile.h"
#include "note.h"

#include <QScopeGuard>

#include <cerrno>
#include <chrono>
#include <limits>
#include <thread>
#include <unistd.h>

using namespace TALLYFORM;

namespace {

QByteArray attributes(int count, const QByteArray& value)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += " a" + QByteArray::number(i) + '=' + value;
    return text;
}

/// A document that declares one encoding and is in another.
QByteArray encoded(const char* encoding, bool isMarked, const char* declared, const QString& members)
{
    const QString mark = isMarked ? QString(QChar::ByteOrderMark) : QString();
    const QString text = "<?xml version=\"1.0\" encoding=\"%1\"?><Note>%2</Note>";
    return encoded(encoding, mark + text.arg(declared, members));
}

} // namespace

class FileTest : public ExchangeTest
{
protected:
    using Load = bool (ITallyObject::*)(const QString&);
    static constexpr Load loadXml = &ITallyObject::LoadXml, loadBinary = &ITallyObject::LoadBinary;

    bool loads(const QByteArray& document)
    {
        m_note.Reset();
        return m_note.LoadXml(write("note", document));
    }
    /// What a load that is refused tells behind the name of the file.
    static QString reason(Load load, const QString& file)
    {
        const auto logger = std::make_shared<Recorder>();
        Note note;
        note.SetLogger(logger);
        EXPECT_FALSE((note.*load)(file));
        EXPECT_EQ(note, Note());
        const QString told = logger->m_messages.join('|');
        EXPECT_TRUE(told.startsWith(file)) << qPrintable(told);
        return told.mid(file.size());
    }

    Note m_note;
};

TEST_F(FileTest, TheFirstBytesOfADocumentDecideOverTheEncodingThatItDeclares)
{
    const QString odd = QString::fromUtf8("\u3c22"); // whose bytes are a quote and a tag's begin
    const QString crowd = "<Title>t</Title><x" + attributes(10000, "''") + "/>";
    const auto expectRead = [&](const char* encoding, bool isMarked, const char* declared, const QString& title) {
        SCOPED_TRACE(testing::Message() << declared << " in " << encoding << isMarked);
        EXPECT_TRUE(loads(encoded(encoding, isMarked, declared, "<Title>" + title + "</Title>")));
        EXPECT_EQ(m_note.m_title, title);
        EXPECT_FALSE(loads(encoded(encoding, isMarked, declared, crowd)));
        EXPECT_EQ(m_note, Note()) << "nothing is read";
    };
    for (const char* declared : {"UTF-8", "utf-8", "UTF-16", "UTF-16LE", "UTF-16BE", "UTF-32", "UTF-32LE", "UTF-32BE",
                                 "ISO-8859-1", "windows-1252"}) {
        for (const char* encoding : {"UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"})
            expectRead(encoding, false, declared, odd);
        for (const char* encoding : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"})
            expectRead(encoding, true, declared, odd);
    }
    for (const char* encoding : {"UTF-8", "utf-8", "ISO-8859-1", "windows-1252"})
        expectRead(encoding, false, encoding, QString::fromUtf8("\u00e4"));
    EXPECT_FALSE(loads("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-16'?><Note" + attributes(10000, "''") + "/>"));
}

TEST_F(FileTest, ADeclarationIsShort)
{
    const QByteArray blanks(2000, ' ');
    for (const char* const rest : {"'UTF-8'?><Note><Title>t</Title></Note>", "'UTF-7'?>+ADw-Note/>"}) {
        const QString file = write("note", "<?xml version='1.0'" + blanks + "encoding=" + rest);
        EXPECT_EQ(reason(loadXml, file), ": The XML declaration is too long.");
    }
}

TEST_F(FileTest, ADocumentIsTheSameAsItsTextWhereverItsPortionsEnd)
{
    const Note nothing;
    const QByteArray blanks(100000, ' '), open("<Note><Title>"), many = attributes(300, "''");
    const std::pair<QByteArray, bool> cases[] = {
        {"\xf0\x9f\x93\xa1\xe2\x82\xac\xc3\xa4", true},
        {"&amp;&#x20AC;<![CDATA[<]]>", true},
        {"<!--" + many + "--><![CDATA[" + many + "]]><?x" + many + "?>", true},
        {"<!--1 < 2" + many + "--><![CDATA[1 <= 2" + many + "]]>", true},
        {many, true},
        {"</Title><Body" + attributes(256, "'>\"'") + "/><Title>", true},
        {"</Title><Body" + attributes(257, "'>\"'") + "/><Title>", false},
        {"</Title><Body" + attributes(257, "\">'\"") + "/><Title>", false},
        {"</Title><Body" + blanks + attributes(256, "''") + blanks + "/><Title>", true},
        {"</Title><Body" + blanks + attributes(256, "''") + blanks + "b=''/><Title>", false},
    };
    for (const auto& [text, isGood] : cases) {
        for (const int end : {8192, 65536, 131072}) { // the portions of the parser, and of what it reads from
            for (int ahead = 0; ahead < 12; ++ahead) {
                SCOPED_TRACE(testing::Message() << text.left(30).constData() << ' ' << end - ahead);
                const QByteArray document
                    = open + QByteArray(end - ahead - open.size(), '.') + text + "</Title></Note>";
                EXPECT_EQ(loads(document), isGood);
                Note fromText;
                EXPECT_EQ(fromText.SetXmlString(QString::fromUtf8(document), false), isGood);
                EXPECT_TRUE(fromText == (isGood ? std::as_const(m_note) : nothing)) << "all or nothing is read";
            }
        }
    }
}

TEST_F(FileTest, AnOpenFileIsReadFromItsPositionAndStaysOpen)
{
    QFile file(write("note", "junk<Note><Title>t</Title></Note>"));
    EXPECT_FALSE(m_note.LoadXml(file));
    EXPECT_FALSE(file.isOpen());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly) && file.seek(4));
    EXPECT_TRUE(m_note.LoadXml(file));
    EXPECT_EQ(m_note, Note("t", QString()));
    EXPECT_TRUE(file.isOpen());
    file.close();
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(m_note.LoadXml(file));
}

TEST_F(FileTest, APipeIsReadHoweverSlowlyItIsFilled)
{
    for (const char* encoding : {"UTF-8", "UTF-16LE", "windows-1252"}) {
        const QString title = QString::fromUtf8("\u00e4");
        const QByteArray document = encoded(encoding, false, encoding, "<Title>" + title + "</Title>");
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        std::thread writer([&] {
            for (const char& byte : document) {
                EXPECT_EQ(::write(ends[1], &byte, 1), 1);
                std::this_thread::sleep_for(std::chrono::microseconds(50));
            }
            close(ends[1]);
        });
        QFile file;
        EXPECT_TRUE(file.open(ends[0], QIODevice::ReadOnly, QFile::AutoCloseHandle) && m_note.LoadXml(file))
            << encoding;
        EXPECT_EQ(m_note.m_title, title) << encoding;
        m_note.Reset();
        writer.join();
    }
}

TEST_F(FileTest, AFailedLoadSaysWhy)
{
    const QString broken = "/proc/self/mem"; // which opens, and reads nothing at its begin
    for (const auto load : {loadXml, loadBinary}) {
        EXPECT_EQ(reason(load, path("missing")), ": No such file or directory");
        EXPECT_EQ(reason(load, broken), ": " + qt_error_string(EIO));
    }
}

TEST_F(FileTest, WhatCannotBeSavedLeavesTheFileAsItWas)
{
    const auto logger = std::make_shared<Recorder>();
    const QString cut = path("cut") + QChar::Null + "short";
    const Note note("t", "b");
    note.SetLogger(logger);
    write("note", "precious");
    EXPECT_FALSE(Note().SaveXml(path("note"))) << "nothing to write";
    EXPECT_FALSE(Note(QString(QChar(1)), QString()).SaveXml(path("note"))) << "not for XML";
    EXPECT_EQ(read("note"), "precious");
    for (const QString& file : {QString(), path(""), cut})
        EXPECT_FALSE(note.SaveXml(file));
    EXPECT_FALSE(QFile::exists(path("cut")));
    EXPECT_EQ(logger->m_messages.mid(2), QStringList(cut + ": A file name cannot hold a zero character."));
}

TEST_F(FileTest, BinaryMayHaveBeenCompressedIntoAStream)
{
    const auto compress = [](QDataStream& out) { sampleNote().GetCompressedBinaryRepresentation(out); };
    EXPECT_TRUE(m_note.LoadBinary(write("note", bytesOf(compress))));
    EXPECT_EQ(m_note, sampleNote());
}

TEST_F(FileTest, InputBeyondTheLimitIsRefused)
{
    const auto restore = qScopeGuard([limit = GetInputLimit()] { SetInputLimit(limit); });
    const Note large("t", QString(1500, 'b'));
    const QByteArray plain = large.GetBinaryRepresentationAsQByteArray();
    const QByteArray small = large.GetCompressedBinaryRepresentationAsQByteArray();
    ASSERT_LT(small.size(), 500);
    EXPECT_TRUE(large.SaveXml(path("xml")));
    const QString file = write("plain", plain);
    SetInputLimit(1000);
    for (const QString& each : {path("xml"), QString("/dev/zero")})
        EXPECT_EQ(reason(loadXml, each), ": Larger than the limit of 1000 bytes.");
    EXPECT_EQ(reason(loadBinary, file), ": Larger than the limit of 1000 bytes.");
    EXPECT_FALSE(m_note.SetBinaryRepresentation(small));
    EXPECT_EQ(m_note, Note());
    SetInputLimit(plain.size());
    EXPECT_TRUE(m_note.LoadBinary(file));
    EXPECT_TRUE(m_note.SetBinaryRepresentation(small));

    SetInputLimit(std::numeric_limits<qint64>::max());
    QByteArray liar(5 << 20, 'x'); // long enough for what it announces
    liar.replace(0, 5, "\xFF\xFF\xFF\xFF\x78");
    EXPECT_FALSE(m_note.SetBinaryRepresentation(liar));
    ASSERT_TRUE(QFile::resize(file, qint64(3) << 30)); // more than bytes in memory can be; takes no room on the disk
    EXPECT_NE(reason(loadBinary, file), "");
}
