#include "note.h"

#include <gtest/gtest.h>

using namespace TALLYFORM;

TEST(XmlTextTest, ComesBackAsItWas)
{
    Note read;
    EXPECT_TRUE(read.SetXmlString(sampleNote().GetXmlString(), false));
    EXPECT_EQ(read, sampleNote());
    EXPECT_EQ(Note(QStringLiteral("t"), QStringLiteral("")).GetXmlString(),
              QStringLiteral("<Note><Title>t</Title><Body></Body></Note>"));
}

TEST(XmlTextTest, GoesOverTheContentOrInItsPlace)
{
    Note note = sampleNote();
    EXPECT_TRUE(note.SetXmlString(QString::fromUtf8("<Note><Line>2</Line></Note>"), false));
    EXPECT_EQ(note.m_title, sampleNote().m_title);
    EXPECT_EQ(note.m_lines, sampleNote().m_lines + QStringList{QStringLiteral("2")});
    EXPECT_TRUE(note.SetXmlString(QString::fromUtf8("<Note><Line>2</Line></Note>"), true));
    EXPECT_EQ(note, Note(QString(), QString(), {QStringLiteral("2")}));
}

TEST(XmlTextTest, AnElementThatIsLeftAloneHasItsChildrenRead)
{
    Note note;
    EXPECT_TRUE(
        note.SetXmlString(QString::fromUtf8("<Note><x><y><Title>t</Title></y></x><Body>b</Body></Note>"), false));
    EXPECT_EQ(note, Note(QStringLiteral("t"), QStringLiteral("b")));
}

TEST(XmlTextTest, BadDocumentsAreRefusedBeforeAnythingIsRead)
{
    const char* const documents[]
        = {"",
           "text",
           "<!-- no root -->",
           "<Memo><Title>t</Title></Memo>",
           "<note><Title>t</Title></note>",
           "<!DOCTYPE Note><Note><Title>t</Title></Note>",
           "<!DOCTYPE Note [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]><Note><Title>&b;</Title></Note>",
           "<!DOCTYPE Note SYSTEM 'file:///etc/passwd'><Note><Title>t</Title></Note>",
           "<Note Title><Title>t</Title></Note>"};
    for (const char* document : documents) {
        const auto logger = std::make_shared<Memory>();
        Note note;
        note.SetLogger(logger);
        EXPECT_FALSE(note.SetXmlString(QString::fromUtf8(document), false)) << document;
        EXPECT_EQ(note, Note()) << document;
        EXPECT_EQ(logger->m_messages.size(), 1) << document;
    }
}

TEST(XmlTextTest, DocumentsThatBreakOffOrGoOnAreRefused)
{
    const char* const documents[] = {"<Note><Title>t</Title>",
                                     "<Note><Title>t",
                                     "<Note><Title>t</Body></Note>",
                                     "<Note><Title>t</Title></Note>trailing",
                                     "<Note/><Note/>",
                                     "<Note>\x01</Note>",
                                     "<Note>&nbsp;</Note>",
                                     "<Note></Note><!DOCTYPE Note>"};
    for (const char* document : documents)
        EXPECT_FALSE(Note().SetXmlString(QString::fromUtf8(document), false)) << document;
}

TEST(XmlTextTest, NestingIsNotBoundByTheStack)
{
    const int depth = 1000000;
    const QString nest
        = QStringLiteral("<a>").repeated(depth) + QLatin1Char('t') + QStringLiteral("</a>").repeated(depth);
    Note note;
    EXPECT_TRUE(note.SetXmlString(QStringLiteral("<Note><Title>%1</Title>%1</Note>").arg(nest), false));
    EXPECT_EQ(note.m_title, QStringLiteral("t"));
}

TEST(XmlTextTest, AnElementHasUpTo256Attributes)
{
    const auto note = [](int attributes, const QString& value) {
        QString tag = QStringLiteral("<Note ");
        for (int i = 0; i < attributes; ++i)
            tag += QStringLiteral("a%1=%2 ").arg(QString::number(i), value);
        return QString(tag + QLatin1String("><Title>t</Title></Note>"));
    };
    for (const char* value : {"''", "\">'\"", "'>\"'"}) {
        EXPECT_TRUE(Note().SetXmlString(note(256, QString::fromUtf8(value)), false)) << value;
        EXPECT_FALSE(Note().SetXmlString(note(257, QString::fromUtf8(value)), false)) << value;
        EXPECT_FALSE(Note().SetXmlString(note(100000, QString::fromUtf8(value)), false)) << value;
    }
    const QString text = QStringLiteral("a='' b=''").repeated(1000);
    Note read;
    EXPECT_TRUE(read.SetXmlString(QStringLiteral("<Note><!--%1--><Title>%1</Title></Note>").arg(text), false));
    EXPECT_EQ(read.m_title, text);
}

TEST(XmlTextTest, NamespacesAreNotLookedUp)
{
    const QString document = QStringLiteral("<Note xmlns:a='a'>") + QStringLiteral("<b xmlns:b='b'>").repeated(50000)
                           + QStringLiteral("<a:a/>").repeated(50000) + QStringLiteral("</b>").repeated(50000);
    Note note;
    EXPECT_TRUE(note.SetXmlString(document + QLatin1String("<Title>t</Title></Note>"), false));
    EXPECT_EQ(note.m_title, QStringLiteral("t"));
}

TEST(XmlTextTest, FailuresOfSettersPassThroughWithTheirPlace)
{
    const QString document
        = QString::fromUtf8("<Note>\n<Title>t</Title>\n<Body>far more than twenty characters</Body></Note>");
    Note note;
    try {
        note.SetXmlString(document, false);
        FAIL();
    } catch (const OutOfRangeException& failure) {
        EXPECT_EQ(failure.GetOrigin(), QStringLiteral("text, line 3, column 44"));
        EXPECT_EQ(failure.GetMessage(), QStringLiteral("Body is too long"));
    }
    note.SetValidate(false);
    EXPECT_TRUE(note.SetXmlString(document, false));
}

TEST(XmlTextTest, WhatXmlCannotCarryIsNotWritten)
{
    EXPECT_TRUE(Note().GetXmlString().isNull());
    EXPECT_TRUE(Note(QString(QChar(1)), QString()).GetXmlString().isNull());
    EXPECT_TRUE(Note(QString(QChar(0xD800)), QString()).GetXmlString().isNull());
    EXPECT_FALSE(Note(QString::fromUtf8("\xf0\x9f\x93\xa1"), QString()).GetXmlString().isNull());
}
