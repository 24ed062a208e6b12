/// Detection results as store entries and as CSV.

#include "exchangefixture.h"
#include "recordstate.h"
#include "recordvalues.h"

using namespace Velmara;
using namespace TALLYFORM;

namespace {

using Results = QVector<DetectionResult>;

/// What the results of the examples have unless they tell something else.
const QString common = "ID='id' Type='type' Frequency='100.126' Frequency/Min='99' Bandwidth='8000' "
                       "StartTime='2024-02-29T23:59:58,007Z' Baudrate='50' Shift='450'";

/// A result with all its members.
DetectionResult fullResult()
{
    DetectionResult full;
    setValues(full, fixture("results/full.txt"));
    return full;
}

DetectionResultList listOf(const Results& results)
{
    DetectionResultList list;
    setValues(list, "Usage='Target' Comment='comment' ID='run' Type='heading'");
    list.SetDetectionResult(results);
    return list;
}

QVector<FrequencyStoreEntry> entriesOf(const FrequencyStoreList& store) { return store.GetFrequencyStoreEntry(); }

QString told(const RefusedResult& refused)
{
    return QString("%1 %2: %3\n").arg(QString::number(refused.index), refused.id, refused.reason);
}

QString told(const ConversionReport& report)
{
    EXPECT_EQ(report.isComplete, report.error.isEmpty());
    QString text = QString("%1 converted\n").arg(report.entries);
    if (!report.isComplete)
        text += "failed: " + report.error + '\n';
    if (report.failed.index >= 0)
        text += "failed at " + told(report.failed);
    for (const RefusedResult& refused : report.refused)
        text += "refused " + told(refused);
    if (!report.heading.isEmpty())
        text += "left out of the heading: " + report.heading.join(", ") + '\n';
    for (const ReducedResult& reduced : report.reduced)
        text += QString("left out of %1 %2: ").arg(QString::number(reduced.index), reduced.id)
              + reduced.members.join(", ") + '\n';
    return text;
}

/// How the constructor fails, and how many entries it gives; it gives those of the conversion if it does not fail.
QString constructed(DetectionResultList list, FrequencyStoreList store, const FrequencyStoreList& converted)
{
    try {
        const DetectionResultHelper helper(list, store), copy(helper); // which converts nothing
    } catch (const TallyException& failure) {
        return QString("the constructor gives %1, %2\n")
            .arg(QString::number(entriesOf(store).size()), failure.GetDetail());
    }
    if (packed(store) == packed(converted))
        return {};
    return QString("the constructor gives %1\n").arg(entriesOf(store).size());
}

} // namespace

using DetectionFiles = ExchangeTest;

TEST_F(DetectionFiles, BecomeEntriesAsTheirExamplesTell)
{
    expectCases("results/conversions.txt", [&](const QString& head, const QString& given) {
        DetectionResultList list = listOf(recordsIn<DetectionResult>(given, common));
        if (head.contains("without a usage"))
            list.ResetUsage();
        FrequencyStoreList store;
        store.SetValidate(!head.contains("without validation"));
        const FrequencyStoreList none = store;
        const auto badResults
            = head.contains("bad ones are skipped") ? BadResults::AreSkipped : BadResults::EndConversion;
        traces().clear();
        const std::string before = stateOf(list);
        const ConversionReport report = DetectionResultHelper::Convert(list, store, badResults);
        EXPECT_EQ(stateOf(list), before);
        QString outcome = told(report);
        for (const QString& trace : traces())
            outcome += "traced: " + trace + '\n';
        EXPECT_EQ(entriesOf(store).size(), report.entries);
        EXPECT_TRUE(!store.GetValidate() || report.entries == 0 || store.SaveXml(path("d.xml")));
        outcome += constructed(list, none, store);
        for (const FrequencyStoreEntry& entry : entriesOf(store))
            outcome += valuesOf(entry) + '\n';
        return outcome;
    });
}

TEST_F(DetectionFiles, BecomeWhatTheirModulationTellsAsTheirExamplesTell)
{
    expectRows("results/modulations.txt", [&](const QStringList& given) {
        Results results = recordsIn<DetectionResult>(given[1], common);
        results.first().SetModulation(unescaped(given[0]));
        DetectionResultList list = listOf(results);
        FrequencyStoreList store;
        const std::string before = stateOf(list);
        DetectionResultHelper(list, store).GetCSVString();
        EXPECT_EQ(stateOf(list), before);
        const QString settings = xml(entriesOf(store).first().GetDemodulator_Settings());
        return settings.section('>', 1).remove("</Demodulator_Settings>");
    });
}

namespace {

/// The entry of a result as bytes, and what the report tells that is left out.
QByteArray converted(const DetectionResult& result, QStringList& leftOut)
{
    FrequencyStoreList store;
    const DetectionResultList list = listOf({result});
    const std::string before = stateOf(list);
    const ConversionReport report = DetectionResultHelper::Convert(list, store);
    EXPECT_EQ(stateOf(list), before);
    EXPECT_TRUE(report.isComplete) << report.error.toStdString();
    leftOut = report.reduced.value(0).members;
    return packed(entriesOf(store).value(0));
}

/// The same result with another value there.
DetectionResult changedAt(const PathValue& value, DetectionResult result)
{
    if (value.member->kind == MemberDescription::Kind::DateTime)
        SetTextAt(result, value.path, "2025-01-01T00:00:00,000Z");
    else if (value.member->kind == MemberDescription::Kind::Bool)
        SetTextAt(result, value.path, value.text == "true" ? "false" : "true");
    else
        SetTextAt(result, value.path, value.text.contains("USB") ? QString(value.text).replace("USB", "AM") : "80");
    return result;
}

} // namespace

TEST_F(DetectionFiles, TellWhatTheirEntriesDoNotTakeOver)
{
    for (const QString modulation : {"", "ASK2", "FSK2", "PSK8A", "MORSE", "MPSK4B", "MFSK2", "link"}) {
        for (const char* member : {"", "no Latitude", "no Longitude"}) {
            DetectionResult full = fullResult();
            setValues(full, modulation.isEmpty() ? "no Modulation" : "Modulation='" + modulation + "'");
            setValues(full, member);
            QStringList leftOut, others;
            const QByteArray entry = converted(full, leftOut);
            for (const PathValue& value : ValuesIn(full)) {
                const QString &path = value.path, holder = path.section('/', 0, 0);
                const bool isTold
                    = leftOut.contains(path) || leftOut.contains(path + "/Value") || leftOut.contains(holder);
                EXPECT_EQ(isTold, converted(changedAt(value, full), others) == entry)
                    << qPrintable(path) << qPrintable(modulation) << member;
            }
        }
    }
    class SiteList : public DetectionResultList
    {
    } list;
    static_cast<DetectionResultList&>(list) = listOf({fullResult()});
    FrequencyStoreList store;
    store.SetValidate(false);
    EXPECT_EQ(DetectionResultHelper::Convert(list, store).reduced.size(), 1);
    const FrequencyStoreEntry heading = entriesOf(store).first();
    EXPECT_EQ(heading.GetChoiceFrequencyStoreEntry(), FrequencyStoreEntry::ChoiceFrequencyStoreEntry::Invalid);
    const DetectionResultList empty;
    EXPECT_FALSE(DetectionResultHelper::Convert(empty, store).isComplete);
    EXPECT_FALSE(empty.IsInitialized());
}

TEST_F(DetectionFiles, StandInCsvAsTheirExamplesTell)
{
    expectCases("results/exports.txt", [&](const QString&, const QString& given) {
        DetectionResultList list = listOf(recordsIn<DetectionResult>(given, common));
        FrequencyStoreListHelper helper;
        helper.SetListType(FrequencyStoreListHelper::ListType::DetectionResult);
        helper.SetDetectionResultList(list);
        const std::string before = stateOf(list);
        const ExportReport report = FileHandling().WriteCSV(path("d.csv"), helper);
        EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("same.csv"), list));
        EXPECT_EQ(stateOf(list), before);
        EXPECT_EQ(stateOf(std::as_const(helper).GetDetectionResultList()), before);
        EXPECT_EQ(read("same.csv"), read("d.csv"));
        return told(report) + read("d.csv");
    });
}

TEST_F(DetectionFiles, LoseTimesThatHaveNoText)
{
    DetectionResult future = fullResult();
    future.ResetLatitude();
    future.SetStartTime(QDateTime({10000, 1, 1}, {0, 0}, Qt::UTC));
    future.SetStopTime(future.GetStartTime());
    DetectionResultList list = listOf({future, fullResult()});
    FrequencyStoreList store;
    const ConversionReport conversion = DetectionResultHelper::Convert(list, store, BadResults::AreSkipped);
    EXPECT_EQ(conversion.entries, 1);
    EXPECT_EQ(told(conversion.refused.value(0)), "0 id: Detection/StartTime: A date-time that has no text.\n");
    ExportReport report;
    DetectionResultHelper(list, store).GetCSVString(report);
    report.isComplete = true;
    EXPECT_EQ(told(report), "2 written\nReadAsUnset at 2 StartTime ''\nReadAsUnset at 2 StopTime ''\n");
}

TEST_F(DetectionFiles, AreFilesAsStoreEntriesToo)
{
    FileHandling files;
    DetectionResultList list = listOf({fullResult()}), noUsage;
    FrequencyStoreList store, loaded;
    DetectionResultHelper(list, store);
    EXPECT_TRUE(files.ExportFrequencyStoreList(false, path("d.xml"), list));
    EXPECT_TRUE(loaded.LoadXml(path("d.xml")));
    EXPECT_EQ(xml(loaded), xml(store));
    EXPECT_EQ(loaded.GetUsage(), FrequencyStoreList::Usage::Target);
    EXPECT_EQ(entriesOf(store).first().GetFFM_Settings().GetFrequency().GetValue(), 100.126) << "not rounded";

    traces().clear();
    EXPECT_THROW(files.ExportFrequencyStoreList(true, path("d.csv"), noUsage), OutOfRangeException);
    EXPECT_FALSE(files.ExportFrequencyStoreList(true, path("no/d.csv"), list));
    const QString reason = "Can't open file for writing: '" + path("no/d.csv") + "'";
    EXPECT_EQ(traces().last(),
              "Error writing file " + path("no/d.csv") + ". " + TallyException(reason).GetDetail() + ": " + reason);
    EXPECT_FALSE(files.ExportFrequencyStoreList(true, path("d.csv"), store,
                                                FrequencyStoreListHelper::ListType::DetectionResult));
    EXPECT_TRUE(traces().last().endsWith("enum is not valid (classname=FrequencyStoreList,membername=m_usage)"));
}
