/// The schema, held against the documents that the library writes, and against such as it must not let pass.

#include "exchangefixture.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

#include <cmath>
#include <limits>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

using ListType = FrequencyStoreListHelper::ListType;

QStringList pathsIn(const QString& folder, const char* pattern)
{
    QStringList paths;
    for (const QFileInfo& file : QDir(folder).entryInfoList({pattern}))
        paths += file.filePath();
    return paths;
}

using Seen = QSet<const RecordDescription*>;

void collectClasses(const ITallyObject& record, Seen& seen)
{
    const RecordDescription& description = DescriptionOf(record);
    seen += &description;
    for (const MemberDescription& member : description.members)
        for (const ITallyObject* child : member.children(record))
            collectClasses(*child, seen);
}

QStringList allElements()
{
    QStringList elements;
    for (const RecordDescription* record : RecordDescriptions())
        elements += record->element;
    return elements;
}

} // namespace

class Schema : public ExchangeTest
{
protected:
    void add(const QString& text) { m_documents += write(QString("%1.xml").arg(m_documents.size()), text.toUtf8()); }

    void add(const QStringList& paths)
    {
        EXPECT_FALSE(paths.isEmpty());
        m_documents += paths;
    }

    /// Asks for the validator's verdict on each document.
    void expectAll(const QString& verdict)
    {
        QProcess xmllint;
        xmllint.setProcessChannelMode(QProcess::MergedChannels);
        xmllint.start(VELMARA_XMLLINT, QStringList{"--noout", "--schema", VELMARA_SCHEMA} + m_documents);
        ASSERT_TRUE(xmllint.waitForFinished(-1)) << xmllint.errorString().toStdString();
        const QString words = QString::fromUtf8(xmllint.readAll());
        for (const QString& document : m_documents)
            EXPECT_TRUE(words.contains(document + ' ' + verdict + '\n')) << words.toStdString();
        m_documents.clear();
    }

private:
    QStringList m_documents;
};

TEST_F(Schema, LetsPassEveryRecord)
{
    Seen seen;
    const QStringList elements = allElements();
    forAll(AllRecords(), [&]<class R>() {
        if (elements.count(R::GetStaticObjectName()) > 1)
            return; // it is part of others
        for (unsigned seed = 0; seed < 10; ++seed) {
            RandomFiller filler(seed);
            const R record = seed ? filler.make<R>() : filler.setEverything().make<R>();
            collectClasses(record, seen);
            add(xml(record));
        }
    });
    EXPECT_EQ(seen.size(), RecordDescriptions().size());
    expectAll("validates");
}

TEST_F(Schema, LetsPassWhatIsRareAndLegal)
{
    const double infinity = std::numeric_limits<double>::infinity();
    DetectionResult result;
    result.SetID("");
    result.SetType("\n<&>");
    result.GetFrequency().SetValue(std::numeric_limits<double>::max());
    result.GetBandwidth().SetValue(-infinity);
    result.GetBandwidth().SetMin(-0.);
    result.SetLevel(std::nan(""));
    result.SetAzimuth(infinity);
    result.SetStartTime(QDateTime());
    result.SetStopTime(QDateTime({9999, 12, 31}, {23, 59, 59, 999}, Qt::UTC));
    result.SetConfidence(std::numeric_limits<int>::min());
    result.SetLongitude(-180);
    result.SetLatitude(90);
    add(xml(result));

    MPT_Settings settings;
    settings.SetControlChannelID(std::numeric_limits<unsigned int>::max());
    settings.SetChannelSpace(0);
    add(xml(settings));

    FFM_Settings receiver;
    receiver.GetFrequency().SetValue(1);
    receiver.GetIFBandwidth().SetValue(1);
    receiver.SetFFPDelay(std::numeric_limits<quint64>::max());
    add(xml(receiver));

    add(xml(ShortTime_Settings()));

    for (const auto& [text, value] : {std::pair(" +7 ", 7.), {".5", 0.5}, {"5.", 5.}, {"-1.5E3", -1500.}}) {
        const QString document = QString("<Frequency>%1</Frequency>").arg(text);
        add(document);
        Frequency frequency;
        EXPECT_TRUE(frequency.SetXmlString(document, false));
        EXPECT_EQ(frequency.GetValue(), value);
    }
    expectAll("validates");
}

TEST_F(Schema, LetsPassFixturesAndExamples)
{
    const QMap<QString, ListType> types{
        {"dataresults", ListType::DataResults}, {"detectionconventional", ListType::DetectionConventional},
        {"memoryscan", ListType::MemoryScan},   {"memoryscan_df", ListType::MemoryScan},
        {"notepad", ListType::NotePad},         {"noifrequencies", ListType::NOIFrequencies},
        {"suppress", ListType::Suppress},       {"targetlist", ListType::TargetList},
    };
    for (const QString& table : pathsIn(VELMARA_EXAMPLES, "*.csv")) {
        FrequencyStoreList list;
        FileHandling().ReadCSV(table, list, types.value(QFileInfo(table).baseName(), ListType::Invalid));
        add(xml(list));
    }
    for (const QString& document : pathsIn(VELMARA_EXAMPLES, "*.xml")) {
        DetectionResultList results;
        ASSERT_TRUE(results.LoadXml(document));
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(false, path("entries.xml"), results));
        add(QStringList(path("entries.xml")));
    }
    add(pathsIn(VELMARA_EXAMPLES, "*.xml"));
    add(pathsIn(VELMARA_FIXTURES, "*.xml"));
    expectAll("validates");
}

TEST_F(Schema, RefusesFaults)
{
    const QString sound = R"(<FrequencyStoreList Version="1.2"><Usage>Target</Usage>)"
                          R"(<Timstamp>2026-04-15T11:46:07,639Z</Timstamp><Targetareas><Area Version="1.0">)"
                          R"(<Name>north</Name><Coordinate><Longitude>43.5</Longitude><Latitude>-52</Latitude>)"
                          R"(</Coordinate></Area></Targetareas><FrequencyStoreEntry Version="2.0"><Type>a</Type>)"
                          R"(<FFM_Settings Version="1.2"><Frequency Use="true">1e6</Frequency>)"
                          R"(<IFBandwidth>8300</IFBandwidth><FFPDelay>1</FFPDelay></FFM_Settings>)"
                          R"(</FrequencyStoreEntry></FrequencyStoreList>)";
    const QVector<std::pair<const char*, const char*>> faults{
        {"<Usage>", "<Surplus/><Usage>"},
        {"<Usage>Target</Usage>", "<Usage>Target</Usage><Usage>Target</Usage>"},
        {"<Usage>Target</Usage>", "<Usage>target</Usage>"},
        {"<Usage>Target</Usage>", "<Usage/>"},
        {" Version=\"1.2\"><Usage>", "><Usage>"},
        {"Version=\"1.2\"><Usage>", "Version=\"1.2\" Surplus=\"\"><Usage>"},
        {"07,639Z", "07.639Z"},
        {"07,639Z", "07,639"},
        {"2026-04", "2026-13"},
        {"<Name>north</Name>", ""},
        {"<Longitude>43.5</Longitude>", ""},
        {"<Longitude>43.5</Longitude><Latitude>-52</Latitude>", "<Latitude>-52</Latitude><Longitude>43.5</Longitude>"},
        {">43.5<", ">180.000001<"},
        {">43.5<", ">-180.000001<"},
        {">43.5<", ">nan<"},
        {">43.5<", ">NaN<"},
        {">43.5<", "><"},
        {">1e6<", ">NaN<"},
        {">1e6<", ">INF<"},
        {">1e6<", ">1,5<"},
        {">1e6<", ">0x1<"},
        {">1e6<", "><"},
        {"Use=\"true\"", "Use=\"yes\""},
        {"Use=\"true\"", "Min=\"none\""},
        {">1</FFPDelay>", ">-1</FFPDelay>"},
        {">1</FFPDelay>", ">1.5</FFPDelay>"},
        {"</FFM_Settings>", "</FFM_Settings><ShortTime_Settings/>"},
        {"<Type>a</Type>", ""},
    };
    add(sound);
    expectAll("validates");

    for (const auto& [part, fault] : faults) {
        ASSERT_EQ(sound.count(part), 1) << part;
        add(QString(sound).replace(part, fault));
    }
    add(QString(sound).remove(QRegularExpression("<FFM_Settings.*</FFM_Settings>")));
    add("<Detail/>"); // which is several classes'
    expectAll("fails to validate");
}
