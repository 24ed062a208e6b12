/// The schema, held against the documents that the library writes, and against such as it must not let pass.

#include "everyrecord.h"
#include "exchangefixture.h"
#include "goldencases.h"

#include <QDir>
#include <QMap>
#include <QProcess>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

using Kind = MemberDescription::Kind;

QStringList pathsIn(const QString& folder, const char* pattern)
{
    QStringList paths;
    for (const QFileInfo& file : QDir(folder).entryInfoList({pattern}))
        paths += file.filePath();
    EXPECT_FALSE(paths.isEmpty());
    return paths;
}

/// Texts at the ends of what a value may be.
QStringList rareTexts(const MemberDescription& member)
{
    static const QMap<Kind, QStringList> rare{
        {Kind::Double, {"nan", "inf", "-inf", "-0", "1.7976931348623157e308"}},
        {Kind::Int, {"-2147483648", "2147483647"}},
        {Kind::UnsignedInt, {"4294967295"}},
        {Kind::UnsignedInt64, {"18446744073709551615"}},
        {Kind::DateTime, {"0001-01-01T00:00:00,000Z", "9999-12-31T23:59:59,999Z"}},
        {Kind::Text, {"", "\n<&>"}},
    };
    if (member.range)
        return {QString::number(member.range->lower), QString::number(member.range->upper)};
    return member.isList ? QStringList() : rare.value(member.kind);
}

/// Whether an element is that of one class alone, and not part of others.
bool isRoot(const RecordDescription& of)
{
    const auto& all = RecordDescriptions();
    return std::count_if(all.begin(), all.end(), [&](const auto* other) { return other->element == of.element; }) == 1;
}

/// The validator's words on documents.
QString wordsOn(const QStringList& documents)
{
    QProcess xmllint;
    xmllint.setProcessChannelMode(QProcess::MergedChannels);
    xmllint.start(VELMARA_XMLLINT, QStringList{"--noout", "--schema", VELMARA_SCHEMA} + documents);
    EXPECT_TRUE(xmllint.waitForFinished(-1)) << xmllint.errorString().toStdString();
    return QString::fromUtf8(xmllint.readAll());
}

} // namespace

class Schema : public ExchangeTest
{
protected:
    void add(const QString& text) { m_documents += write(QString("%1.xml").arg(m_documents.size()), text.toUtf8()); }

    QString verdictOn(const QString& text)
    {
        const QString document = write("x.xml", text.toUtf8());
        return wordsOn({document}).section(document + ' ', -1).trimmed();
    }

    void expectAllToPass() { EXPECT_EQ(wordsOn(m_documents), m_documents.join(" validates\n") + " validates\n"); }

    QStringList m_documents;
};

TEST_F(Schema, LetsPassEveryRecordAndWhatIsRareAndLegal)
{
    int count = 0;
    forRecords(10, [&](const RecordDescription& of, ITallyObject& record) {
        if (!isRoot(of))
            return;
        add(xml(record));
        for (const MemberDescription& member : of.members)
            if (const QStringList texts = rareTexts(member); member.isSet(record) && !texts.isEmpty())
                member.set(record, texts[count % texts.size()]);
        add(xml(record));
        ++count;
    });
    expectAllToPass();
}

TEST_F(Schema, LetsPassFixturesAndExamples)
{
    for (const QString& table : pathsIn(VELMARA_EXAMPLES, "*.csv")) {
        const QString file = QFileInfo(table).fileName();
        FrequencyStoreList list;
        for (const QString& type : FrequencyStoreListHelper::GetListTypes())
            if (file.startsWith(type, Qt::CaseInsensitive))
                FileHandling().ReadCSV(table, list, FrequencyStoreListHelper().NameToListType(type));
        add(xml(list));
    }
    for (const QString& document : pathsIn(VELMARA_EXAMPLES, "*.xml")) {
        DetectionResultList results;
        ASSERT_TRUE(results.LoadXml(document));
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(false, path("entries.xml"), results));
        m_documents += path("entries.xml");
    }
    m_documents += pathsIn(VELMARA_EXAMPLES, "*.xml") + pathsIn(VELMARA_FIXTURES, "*.xml");
    expectAllToPass();
}

TEST_F(Schema, JudgesAsItsExamplesTell)
{
    const QString sound = fixture("schema/sound.xml");
    expectRows("schema/faults.txt", [&](const QStringList& cells) {
        EXPECT_EQ(sound.count(cells[0]), 1) << cells[0].toStdString();
        return verdictOn(QString(sound).replace(cells[0], cells[1]));
    });
    EXPECT_EQ(verdictOn("<Detail/>"), "fails to validate"); // which is several classes'
}
