#include "base/readfile.h"
#include "base/savefile.h"
#include "note.h"

#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTextCodec>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <thread>
#include <unistd.h>

using namespace TALLYFORM;

namespace {

class FileTest : public testing::Test
{
protected:
    QString path(const char* name = "note") const { return m_dir.filePath(QLatin1String(name)); }
    QByteArray content(const char* name = "note") const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& bytes) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir m_dir;
    std::shared_ptr<Memory> m_logger = std::make_shared<Memory>();
};

} // namespace

TEST_F(FileTest, XmlIsWrittenIndentedAndReadBack)
{
    ASSERT_TRUE(Note(QStringLiteral("\u00e4"), QStringLiteral("")).SaveXml(path()));
    EXPECT_EQ(content(), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Note>\n <Title>\xc3\xa4</Title>\n"
                                    " <Body></Body>\n</Note>\n"));
    ASSERT_TRUE(sampleNote().SaveXml(path()));
    Note read;
    EXPECT_TRUE(read.LoadXml(path()));
    EXPECT_EQ(read, sampleNote());
}

TEST_F(FileTest, XmlIsReadInTheEncodingThatItDeclares)
{
    const QString document
        = QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?><Note><Title>\u00e4</Title></Note>");
    const char* const encodings[] = {"UTF-8",  "utf-8",    "UTF-16",   "UTF-16LE",   "UTF-16BE",
                                     "UTF-32", "UTF-32LE", "UTF-32BE", "ISO-8859-1", "windows-1252"};
    for (const char* encoding : encodings) {
        const QString text = document.arg(QLatin1String(encoding));
        write(QTextCodec::codecForName(encoding)->fromUnicode(text));
        Note note;
        EXPECT_TRUE(note.LoadXml(path())) << encoding;
        EXPECT_EQ(note.m_title, QStringLiteral("\u00e4")) << encoding;

        const QString crowd = QStringLiteral(" a=''").repeated(10000);
        write(QTextCodec::codecForName(encoding)->fromUnicode(QString(text).replace(QLatin1String("Title>"), crowd)));
        EXPECT_FALSE(note.LoadXml(path())) << encoding;
    }
    for (const char* broken :
         {"<Note><Title>\xe4</Title></Note>", "\xff\xfe<", "<?xml version='1.0' encoding='none'?><Note/>"}) {
        write(broken);
        EXPECT_FALSE(Note().LoadXml(path())) << broken;
    }
    const QByteArray ascii = "<?xml version='1.0' encoding='US-ASCII'?><Note><Title>t</Title></Note>";
    write(ascii);
    EXPECT_TRUE(Note().LoadXml(path()));
    write(QByteArray(ascii).replace("t</", "\xE9</"));
    EXPECT_FALSE(Note().LoadXml(path()));
    const QString text = QStringLiteral("<Note><Title>t</Title></Note>");
    const auto inUtf16 = [](QString document) {
        return QByteArray("\xFF\xFE")
             + QByteArray(reinterpret_cast<const char*>(document.utf16()), 2 * document.size());
    };
    write(inUtf16(text));
    EXPECT_TRUE(Note().LoadXml(path()));
    const QString halved = QString(text).replace(QLatin1String("t<"), QChar(0xD800) + QLatin1String("<"));
    write(inUtf16(halved));
    EXPECT_FALSE(Note().LoadXml(path()));
    EXPECT_FALSE(Note().SetXmlString(halved, false));
    for (const char* const wide : {"\xFF\xFF\xFF\xFF", "\x00\x11\x00\x00"}) {
        QByteArray bytes = QTextCodec::codecForName("UTF-32BE")->fromUnicode(text);
        write(bytes);
        EXPECT_TRUE(Note().LoadXml(path()));
        write(bytes.replace(bytes.indexOf(QByteArray("\0\0\0t", 4), 48), 4, QByteArray(wide, 4)));
        EXPECT_FALSE(Note().LoadXml(path()));
    }
}

TEST_F(FileTest, TheFirstBytesOfADocumentDecideOverWhatItDeclares)
{
    for (const char* declared : {"UTF-8", "UTF-16", "ISO-8859-1", "windows-1252"}) {
        const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?><Note><Title>\u3c22</Title></Note>")
                                 .arg(QLatin1String(declared));
        for (const char* encoding : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"}) {
            for (const bool isMarked : {true, false}) {
                if (!isMarked && qstrcmp(encoding, "UTF-8") == 0)
                    continue;
                QTextCodec::ConverterState state(isMarked ? QTextCodec::DefaultConversion : QTextCodec::IgnoreHeader);
                const QByteArray bytes
                    = QTextCodec::codecForName(encoding)->fromUnicode(text.constData(), text.size(), &state);
                write(isMarked && qstrcmp(encoding, "UTF-8") == 0 && !bytes.startsWith('\xEF') ? "\xEF\xBB\xBF" + bytes
                                                                                               : bytes);
                Note note;
                EXPECT_TRUE(note.LoadXml(path())) << declared << " in " << encoding << isMarked;
                EXPECT_EQ(note.m_title, QStringLiteral("\u3c22"));
            }
        }
    }
}

TEST_F(FileTest, EncodingsThatHideATagAreRefusedBeforeAnythingIsRead)
{
    QByteArray crowd("<Note");
    for (int i = 0; i < 20000; ++i)
        crowd += " a" + QByteArray::number(i) + "=''";
    const auto declared = [](const QByteArray& encoding, int blanks = 1) {
        return "<?xml version='1.0'" + QByteArray(blanks, ' ') + "encoding='" + encoding + "'?>";
    };
    const QByteArray utf7 = "+ADw-Note" + QByteArray(crowd).remove(0, 5) + "/>";
    const std::pair<QByteArray, QString> cases[] = {
        {declared("UTF-7") + utf7, QStringLiteral("The encoding 'UTF-7' is not accepted.")},
        {"\xEF\xBB\xBF" + declared("UTF-7") + utf7, QStringLiteral("The encoding 'UTF-7' is not accepted.")},
        {declared("IBM850") + "<Note/>", QStringLiteral("The encoding 'IBM850' is not accepted.")},
        {declared("UTF-7", 2000) + utf7, QStringLiteral("The XML declaration is too long.")},
        {declared("UTF-8", 2000) + "<Note/>", QStringLiteral("The XML declaration is too long.")},
    };
    for (const auto& [document, reason] : cases) {
        write(document);
        Note note;
        note.SetLogger(m_logger);
        EXPECT_FALSE(note.LoadXml(path()));
        EXPECT_EQ(m_logger->m_messages.last(), path() + QStringLiteral(": ") + reason);
        EXPECT_EQ(note, Note());
    }
    write("\xEF\xBB\xBF" + declared("UTF-16") + crowd + "/>");
    EXPECT_FALSE(Note().LoadXml(path()));
}

TEST_F(FileTest, ADocumentIsTheSameWhereverItsPortionsEnd)
{
    const auto crowd = [](int attributes, const QByteArray& value) {
        QByteArray text;
        for (int i = 0; i < attributes; ++i)
            text += " a" + QByteArray::number(i) + '=' + value;
        return text;
    };
    const QByteArray blanks(100000, ' ');
    const struct
    {
        QByteArray text;
        bool isGood;
    } cases[] = {
        {"\xf0\x9f\x93\xa1\xe2\x82\xac\xc3\xa4", true},
        {"\xc3(", false},
        {"&amp;&#x20AC;<![CDATA[<]]>", true},
        {"<!--" + crowd(300, "''") + "--><![CDATA[" + crowd(300, "''") + "]]><?x" + crowd(300, "''") + "?>", true},
        {"<!--1 < 2" + crowd(300, "''") + "--><![CDATA[1 <= 2" + crowd(300, "''") + "]]>", true},
        {"</Title><Body" + crowd(256, "'\"'") + "/><Title>", true},
        {"</Title><Body" + crowd(257, "'\"'") + "/><Title>", false},
        {"</Title><Body" + crowd(257, "\">'\"") + "/><Title>", false},
        {"</Title><Body" + blanks + crowd(256, "''") + blanks + "/><Title>", true},
        {"</Title><Body" + blanks + crowd(256, "''") + blanks + "b=''/><Title>", false},
    };
    for (const auto& [text, isGood] : cases) {
        for (const int end : {8192, 65536, 131072}) { // the portions of the parser, and of what it reads from
            for (int ahead = 0; ahead < 12; ++ahead) {
                const QByteArray open("<Note><Title>"),
                    document = open + QByteArray(end - ahead - open.size(), '.') + text + "</Title></Note>";
                write(document);
                Note note, expected;
                EXPECT_EQ(note.LoadXml(path()), isGood) << text.left(30).constData() << ' ' << end - ahead;
                if (!isGood)
                    continue;
                EXPECT_TRUE(expected.SetXmlString(QString::fromUtf8(document), false));
                EXPECT_EQ(note, expected) << text.left(30).constData() << ' ' << end - ahead;
            }
        }
    }
}

TEST_F(FileTest, AnOpenFileIsReadFromItsPositionAndStaysOpen)
{
    write("junk<Note><Title>t</Title></Note>");
    Note note;
    QFile file(path());
    EXPECT_FALSE(note.LoadXml(file));
    EXPECT_FALSE(file.isOpen());

    ASSERT_TRUE(file.open(QIODevice::ReadOnly) && file.seek(4));
    EXPECT_TRUE(note.LoadXml(file));
    EXPECT_EQ(note.m_title, QStringLiteral("t"));
    EXPECT_TRUE(file.isOpen());

    file.close();
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(note.LoadXml(file));
}

TEST_F(FileTest, APipeIsReadHoweverSlowlyItIsFilled)
{
    const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?><Note><Title>\u00e4</Title></Note>");
    for (const char* encoding : {"UTF-8", "UTF-16", "windows-1252"}) {
        const QByteArray document = QTextCodec::codecForName(encoding)->fromUnicode(text.arg(QLatin1String(encoding)));
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
        Note note;
        EXPECT_TRUE(file.open(ends[0], QIODevice::ReadOnly, QFile::AutoCloseHandle) && note.LoadXml(file)) << encoding;
        EXPECT_EQ(note.m_title, QStringLiteral("\u00e4")) << encoding;
        writer.join();
    }
}

TEST_F(FileTest, AFailedLoadSaysWhere)
{
    write("<Note>\n <Title></Note>");
    Note note;
    note.SetLogger(m_logger);
    EXPECT_FALSE(note.LoadXml(path()));
    EXPECT_FALSE(note.LoadXml(path("missing")));
    EXPECT_FALSE(note.LoadXml(m_dir.path()));
    EXPECT_FALSE(note.LoadBinary(path("missing")));
    ASSERT_EQ(m_logger->m_messages.size(), 4);
    EXPECT_TRUE(m_logger->m_messages[0].startsWith(path() + QLatin1String(", line 2, column 15: ")))
        << m_logger->m_messages[0].toStdString();
    EXPECT_TRUE(m_logger->m_messages[1].startsWith(path("missing")));
}

TEST_F(FileTest, WhatCannotBeSavedLeavesTheFileAsItWas)
{
    write("precious");
    const Note note(QStringLiteral("t"), QStringLiteral("b"));
    note.SetLogger(m_logger);
    EXPECT_FALSE(Note().SaveXml(path())) << "nothing to write";
    EXPECT_FALSE(Note(QString(QChar(1)), QString()).SaveXml(path())) << "not for XML";
    EXPECT_EQ(content(), QByteArray("precious"));
    EXPECT_FALSE(note.SaveXml(path("no/such/directory")));
    EXPECT_FALSE(note.SaveXml(m_dir.path()));
    EXPECT_FALSE(note.SaveXml(QString()));
    EXPECT_FALSE(note.SaveXml(path("cut") + QChar::Null + QLatin1String("short")));
    EXPECT_FALSE(QFile::exists(path("cut")));
    EXPECT_EQ(m_logger->m_messages.size(), 4);
}

TEST_F(FileTest, BinaryIsReadInEveryFormItIsWrittenIn)
{
    QByteArray plain;
    QByteArray compressed;
    QDataStream plainStream(&plain, QIODevice::WriteOnly);
    QDataStream compressedStream(&compressed, QIODevice::WriteOnly);
    EXPECT_TRUE(sampleNote().GetBinaryRepresentation(plainStream));
    EXPECT_TRUE(sampleNote().GetCompressedBinaryRepresentation(compressedStream));
    EXPECT_EQ(plain, sampleNote().GetBinaryRepresentationAsQByteArray());
    for (const QByteArray& form : {plain, compressed, sampleNote().GetCompressedBinaryRepresentationAsQByteArray()}) {
        write(form);
        Note read;
        EXPECT_TRUE(read.LoadBinary(path()));
        EXPECT_EQ(read, sampleNote());
    }
}

TEST_F(FileTest, InputBeyondTheLimitIsRefused)
{
    const auto restore = qScopeGuard([limit = GetInputLimit()] { SetInputLimit(limit); });
    const Note large(QStringLiteral("t"), QString(1500, QLatin1Char('b')));
    const QByteArray plain = large.GetBinaryRepresentationAsQByteArray();
    const QByteArray small = large.GetCompressedBinaryRepresentationAsQByteArray();
    ASSERT_LT(small.size(), 500);
    EXPECT_TRUE(large.SaveXml(path()));
    SetInputLimit(1000);
    const auto logger = std::make_shared<Memory>();
    Note note;
    note.SetLogger(logger);
    EXPECT_FALSE(note.LoadXml(path()));
    EXPECT_EQ(note, Note());
    EXPECT_EQ(logger->m_messages.last(), path() + QStringLiteral(": Larger than the limit of 1000 bytes."));
    EXPECT_FALSE(note.LoadXml(QStringLiteral("/dev/zero")));
    EXPECT_FALSE(note.SetBinaryRepresentation(small));
    write(plain);
    EXPECT_FALSE(note.LoadBinary(path()));
    EXPECT_EQ(note, Note());
    SetInputLimit(plain.size());
    EXPECT_TRUE(note.LoadBinary(path()));
    EXPECT_TRUE(note.SetBinaryRepresentation(small));
    EXPECT_FALSE(note.LoadXml(QStringLiteral("/dev/zero")));

    SetInputLimit(std::numeric_limits<qint64>::max());
    QByteArray liar(5 << 20, 'x'); // long enough for what it announces
    liar.replace(0, 5, "\xFF\xFF\xFF\xFF\x78");
    EXPECT_FALSE(note.SetBinaryRepresentation(liar));
    ASSERT_TRUE(QFile::resize(path(), qint64(3) << 30)); // more than bytes in memory can be; takes no room on the disk
    EXPECT_FALSE(note.LoadBinary(path()));
}

TEST_F(FileTest, AFailedBinaryLoadNamesTheFile)
{
    write(sampleNote().GetBinaryRepresentationAsQByteArray() + "trailing");
    Note note;
    try {
        note.LoadBinary(path());
        FAIL();
    } catch (const BinaryParsingException& failure) {
        EXPECT_EQ(failure.GetOrigin(), path() + QStringLiteral(", byte 8"));
    }
    EXPECT_EQ(note, Note());
}
