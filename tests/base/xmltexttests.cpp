#include "../goldencases.h"
#include "note.h"

using namespace TALLYFORM;

namespace {

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
                                          : encoded(isText ? "UTF-8" : given[0].toLatin1(), text);
        const QString file = write("note", bytes);
        const QString outcome = outcomeOf(file, [&](Note& note) { return note.LoadXml(file); });
        if (!areBytes) {
            const QString ofText = outcomeOf("text", [&](Note& note) { return note.SetXmlString(text, false); });
            EXPECT_EQ(ofText, outcome);
        }
        return outcome;
    });
}

TEST_F(XmlTextTest, ComesBackAndGoesOverTheContentOrInItsPlace)
{
    const QStringList lines = sampleNote().m_lines;
    EXPECT_EQ(Note("t", "").GetXmlString(), "<Note><Title>t</Title><Body></Body></Note>");
    Note note("old", "old");
    EXPECT_TRUE(note.SetXmlString(sampleNote().GetXmlString(), false));
    EXPECT_EQ(note, sampleNote());
    EXPECT_TRUE(note.SetXmlString("<Note><Line>2</Line></Note>", false));
    EXPECT_EQ(note, Note(sampleNote().m_title, sampleNote().m_body, lines + QStringList{"2"}));
    EXPECT_TRUE(note.SetXmlString("<Note><Line>2</Line></Note>", true));
    EXPECT_EQ(note, Note(QString(), QString(), {"2"}));
}

TEST_F(XmlTextTest, MayNestDeepAndDeclareManyNamespaces)
{
    const auto nest = [](const char* start, const QString& inner, const char* end, int depth) {
        return QString(start).repeated(depth) + inner + QString(end).repeated(depth);
    };
    const QString deep = nest("<a>", "t", "</a>", 1000000);
    const QString wide = nest("<b xmlns:b='b'>", QString("<a:a/>").repeated(50000), "</b>", 50000);
    for (const QString& text : {QString("<Note><Title>%1</Title>%1</Note>").arg(deep),
                                QString("<Note xmlns:a='a'>%1<Title>t</Title></Note>").arg(wide)}) {
        Note note;
        EXPECT_TRUE(note.SetXmlString(text, false));
        EXPECT_EQ(note.m_title, "t");
    }
}

TEST_F(XmlTextTest, WhatXmlCannotCarryIsNotWritten)
{
    for (const QString& text : {QString(), QString(QChar(1)), QString(QChar(0xD800))})
        EXPECT_TRUE(Note(text, QString()).GetXmlString().isNull());
    EXPECT_FALSE(Note(QString::fromUtf8("\xf0\x9f\x93\xa1"), QString()).GetXmlString().isNull());
}
