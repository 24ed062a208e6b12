#include "../goldencases.h"
#include "note.h"

#include <QTextCodec>

using namespace TALLYFORM;

namespace {

QByteArray encoded(const QString& encoding, const QString& text)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForName(encoding.toLatin1())->fromUnicode(text.constData(), text.size(), &state);
}

/// What a load gives, tells of `source`, and leaves in a note.
template <class Load> QString outcomeOf(const QString& source, Load load)
{
    const auto logger = std::make_shared<Recorder>();
    Note note;
    note.SetLogger(logger);
    const bool isRead = load(note);
    EXPECT_EQ(isRead, logger->m_messages.isEmpty());
    const QString told = isRead ? "read" : logger->m_messages.join('|').remove(source);
    return QStringList{told + ' ' + note.m_title, note.m_body, note.m_lines.join(',')}.join('/');
}

} // namespace

using XmlTextTest = ExchangeTest;

TEST_F(XmlTextTest, IsReadAsItsExamplesTell)
{
    expectRows("base/documents.txt", [&](const QStringList& given) {
        const QString text = unescaped(given[1]);
        const bool areBytes = given[0] == "bytes", isText = given[0] == "text";
        const QByteArray bytes = areBytes ? QByteArray::fromPercentEncoding(given[1].toLatin1())
                                          : encoded(isText ? "UTF-8" : given[0], text);
        const QString file = write("note", bytes);
        const QString outcome = outcomeOf(file, [&](Note& note) { return note.LoadXml(file); });
        if (!areBytes) {
            const QString ofText = outcomeOf("text", [&](Note& note) { return note.SetXmlString(text, false); });
            EXPECT_EQ(ofText, outcome);
        }
        return outcome;
    });
}

TEST_F(XmlTextTest, ComesBackAsItWas)
{
    Note read;
    EXPECT_TRUE(read.SetXmlString(sampleNote().GetXmlString(), false));
    EXPECT_EQ(read, sampleNote());
    EXPECT_EQ(Note("t", "").GetXmlString(), "<Note><Title>t</Title><Body></Body></Note>");
}

TEST_F(XmlTextTest, GoesOverTheContentOrInItsPlace)
{
    Note note = sampleNote();
    EXPECT_TRUE(note.SetXmlString("<Note><Line>2</Line></Note>", false));
    EXPECT_EQ(note, Note(sampleNote().m_title, sampleNote().m_body, sampleNote().m_lines + QStringList{"2"}));
    EXPECT_TRUE(note.SetXmlString("<Note><Line>2</Line></Note>", true));
    EXPECT_EQ(note, Note(QString(), QString(), {"2"}));
}

TEST_F(XmlTextTest, NestingIsNotBoundByTheStack)
{
    const int depth = 1000000;
    const QString nest = QString("<a>").repeated(depth) + 't' + QString("</a>").repeated(depth);
    Note note;
    EXPECT_TRUE(note.SetXmlString(QString("<Note><Title>%1</Title>%1</Note>").arg(nest), false));
    EXPECT_EQ(note.m_title, "t");
}

TEST_F(XmlTextTest, AnElementHasUpTo256Attributes)
{
    for (const char* value : {"''", "\">'\"", "'>\"'"}) {
        for (const auto& [attributes, isGood] : {std::pair(256, true), {257, false}, {100000, false}}) {
            QString document = "<Note><Title>t</Title><Body";
            for (int i = 0; i < attributes; ++i)
                document += QString(" a%1=%2").arg(QString::number(i), value);
            Note note;
            EXPECT_EQ(note.SetXmlString(document + "/></Note>", false), isGood) << value << attributes;
            EXPECT_EQ(note, isGood ? Note("t", "") : Note()) << "nothing is read";
        }
    }
    const QString text = QString("a='' b=''").repeated(1000);
    Note read;
    EXPECT_TRUE(read.SetXmlString(QString("<Note><!--%1--><Title>%1</Title></Note>").arg(text), false));
    EXPECT_EQ(read.m_title, text);
}

TEST_F(XmlTextTest, NamespacesAreNotLookedUp)
{
    const QString document = "<Note xmlns:a='a'>" + QString("<b xmlns:b='b'>").repeated(50000)
                           + QString("<a:a/>").repeated(50000) + QString("</b>").repeated(50000);
    Note note;
    EXPECT_TRUE(note.SetXmlString(document + "<Title>t</Title></Note>", false));
    EXPECT_EQ(note.m_title, "t");
}

TEST_F(XmlTextTest, FailuresOfSettersPassThroughWithTheirPlace)
{
    const QString document = "<Note>\n<Title>t</Title>\n<Body>far more than twenty characters</Body></Note>";
    Note note;
    try {
        note.SetXmlString(document, false);
        FAIL();
    } catch (const OutOfRangeException& failure) {
        EXPECT_EQ(failure.GetOrigin(), "text, line 3, column 44");
        EXPECT_EQ(failure.GetMessage(), "Body is too long");
    }
    note.SetValidate(false);
    EXPECT_TRUE(note.SetXmlString(document, false));
}

TEST_F(XmlTextTest, WhatXmlCannotCarryIsNotWritten)
{
    EXPECT_TRUE(Note().GetXmlString().isNull());
    EXPECT_TRUE(Note(QString(QChar(1)), QString()).GetXmlString().isNull());
    EXPECT_TRUE(Note(QString(QChar(0xD800)), QString()).GetXmlString().isNull());
    EXPECT_FALSE(Note(QString::fromUtf8("\xf0\x9f\x93\xa1"), QString()).GetXmlString().isNull());
}
