/// What holds for every list type that goes to CSV and back.

#include "exchangefixture.h"
#include "recordstate.h"
#include "recordvalues.h"

using namespace Velmara;
using namespace TALLYFORM;

namespace {

using Entry = FrequencyStoreEntry;
using Entries = QVector<Entry>;
using ListType = FrequencyStoreListHelper::ListType;

const QString typeNames = "NotePad Suppress TargetList DataResults NOIFrequencies DetectionConventional MemoryScan";

ListType typeOf(const QString& name) { return FrequencyStoreListHelper().NameToListType(name); }

Entries entriesOf(const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry(); }

/// What an entry must hold to come back whole, whatever the list type.
Entry plainEntry()
{
    Entry entry;
    setValues(entry, "Type='t' FFM_Settings/Frequency='1' FFM_Settings/IFBandwidth='2' Profile_Data/ProfileID='i' "
                     "Profile_Data/SignalClass='c' Profile_Data/TransmissionSystem='s' Profile_Data/ProfileName='n'");
    return entry;
}

} // namespace

class CsvFormats : public ExchangeTest
{
protected:
    /// The entries of out.csv.
    Entries imported(const QString& type)
    {
        FrequencyStoreList list;
        m_files.ReadCSV(path("out.csv"), list, typeOf(type), BadRows::AreSkipped);
        return entriesOf(list);
    }
    /// Writes out.csv, which leaves the caller's lists as they were.
    ExportReport exported(const Entries& entries, const QString& type)
    {
        FrequencyStoreList list;
        list.SetValidate(false);
        list.SetFrequencyStoreEntry(entries);
        FrequencyStoreListHelper helper;
        helper.SetListType(typeOf(type));
        helper.SetFrequencyStoreList(FrequencyStoreList(list));
        const std::string before = stateOf(list), beforeInHelper = stateOf(helper);
        EXPECT_TRUE(m_files.ExportFrequencyStoreList(true, path("own.csv"), list, typeOf(type)));
        EXPECT_EQ(stateOf(list), before);
        const ExportReport report = m_files.WriteCSV(path("out.csv"), helper);
        EXPECT_EQ(stateOf(helper), beforeInHelper);
        EXPECT_EQ(read("own.csv"), read("out.csv"));
        return report;
    }
    /// What an export tells and writes, and of which entries a reader gets others.
    QString exchanged(const Entries& entries, const QString& type)
    {
        const QString report = told(exported(entries, type));
        const Entries got = imported(type);
        QString outcome = QString(report + read("out.csv")).replace('\r', "\\r");
        if (got.size() != entries.size())
            return outcome + QString("%1 come back\n").arg(got.size());
        for (int i = 0; i < entries.size(); ++i)
            if (const QString values = valuesOf(got[i]); values != valuesOf(entries[i]))
                outcome += QString("%1 comes back as %2\n").arg(QString::number(i + 1), values);
        return outcome;
    }
    /// What an export tells of an entry, which must be nothing if a reader gets a value back, and something if not.
    QString fate(const Entry& entry, const QString& type, const QString& path)
    {
        QStringList damages;
        for (const QString& line : told(exported({entry}, type)).split('\n'))
            if (line.contains(" at "))
                damages += line.section(' ', 3, 3) + ' ' + line.section(' ', 0, 0);
        const Entries got = imported(type);
        const bool isCarried = got.size() == 1 && TextsAt(got[0], path) == TextsAt(entry, path);
        EXPECT_EQ(isCarried, damages.isEmpty()) << qPrintable(path) << qPrintable(valuesOf(entry));
        EXPECT_EQ(read("out.csv").contains('?'), damages.join(' ').contains("NoCharacter"));
        return isCarried ? "carried" : damages.join(", ");
    }

    FileHandling m_files;
};

TEST_F(CsvFormats, AreReadAsTheirExamplesTell)
{
    expectCases("csv/imports.txt", [&](const QString& head, const QString& given) {
        const QString file = write("in.csv", QByteArray::fromPercentEncoding(unescaped(given).toUtf8()));
        const ListType type = typeOf(head.section(", ", 0, 0));
        const BadRows badRows = head.endsWith("bad rows are skipped") ? BadRows::AreSkipped : BadRows::EndReading;
        FrequencyStoreList list;
        const ImportReport report = m_files.ReadCSV(file, list, type, badRows);
        EXPECT_EQ(report.entries, entriesOf(list).size());
        if (badRows == BadRows::EndReading) { // as an import does, which appends
            FrequencyStoreList both(list);
            const QStringList trace{"Import: Cannot export frequency store to file as error " + report.error};
            traces().clear();
            EXPECT_EQ(m_files.ImportCSV(file, both, type), report.isComplete);
            EXPECT_EQ(traces(), report.isComplete ? QStringList() : trace);
            EXPECT_TRUE(entriesOf(both) == entriesOf(list) + entriesOf(list));
        }
        QString outcome = told(report).replace(file, "in.csv");
        for (const Entry& entry : entriesOf(list))
            outcome += valuesOf(entry) + '\n';
        return outcome;
    });
}

TEST_F(CsvFormats, AreWrittenAsTheirExamplesTell)
{
    for (const char* file : {"csv/exports.txt", "csv/memoryscan.txt"}) {
        expectCases(file, [&](const QString& head, const QString& given) {
            QStringList outcomes;
            for (const QString& name : head.section(": ", 0, 0).split(", "))
                outcomes += exchanged(recordsIn<Entry>(given), name);
            outcomes.removeDuplicates();
            EXPECT_EQ(outcomes.size(), 1) << qPrintable(head);
            return outcomes.first();
        });
    }
}

TEST_F(CsvFormats, LoseOnlyWhatTheirExamplesTell)
{
    expectRows("csv/losses.txt", [&](const QStringList& given) {
        Entry entry = plainEntry();
        entry.SetValidate(false);
        SetTextAt(entry, given[1], unescaped(given[2]));
        return fate(entry, given[0], given[1]);
    });
}

TEST_F(CsvFormats, LoseTimesThatHaveNoText)
{
    for (const auto& [start, stop, damages] : {std::tuple(1, 9999, "carried"),
                                               {1, 10000, "StopTime ReadAsUnset"},
                                               {10000, 1, "StartTime ReadAsUnset, StopTime ReadAsUnset"},
                                               {-1, 1, "StartTime ReadAsUnset, StopTime ReadAsUnset"}}) {
        Entry entry = plainEntry();
        entry.GetDetection().SetStartTime(QDateTime({start, 1, 1}, {0, 0}, Qt::UTC));
        entry.GetDetection().SetStopTime(QDateTime({stop, 1, 1}, {0, 0}, Qt::UTC));
        EXPECT_EQ(fate(entry, "DetectionConventional", "Detection/StopTime"), damages);
    }
    Entry undated = plainEntry();
    undated.GetResultList().SetResultTime(QDateTime());
    EXPECT_EQ(fate(undated, "DataResults", "ResultList/ResultTime"), "SignalTime ReadAsUnset");
}

TEST_F(CsvFormats, LoseWhatIsBehindALineThatIsTooLong)
{
    for (const int length : {10239, 10240, 20000}) {
        Entry first = plainEntry();
        first.SetComment(QString(length - int(strlen("t;;1.00;2.00;")), 'x'));
        const ExportReport report = exported({first, plainEntry()}, "Suppress");
        const bool areRead = imported("Suppress").size() == 2;
        EXPECT_EQ(areRead, length < 10240);
        EXPECT_EQ(told(report), areRead ? "2 written\n" : "2 written\nLongLine at 2  ''\n");
    }
}

namespace {

/// What comes back of an entry, as a file tells that knows nothing of columns.
Entry carried(const Entry& entry, const QString& type)
{
    Entry copy;
    for (const QString& row : fixture("csv/members.txt").split('\n')) {
        const QStringList cells = row.split(" | ");
        if (cells.size() != 5 || !(cells[0] == "all" || cells[0].split(' ').contains(type)))
            continue;
        const QString path = cells[1], given = TextsAt(entry, path).value(0);
        QString text = given.isEmpty() ? cells[3] : cells[2] == "as it is" ? given : cells[2];
        if (text == "six digits")
            text = QString::number(given.toDouble(), 'g', 6);
        const bool isAlone = cells[4] != "-" && TextsAt(entry, cells[4]).isEmpty();
        if (!isAlone && text != "nothing")
            SetTextAt(copy, path, text);
    }
    return copy;
}

} // namespace

TEST_F(CsvFormats, CarryOfRandomEntriesWhatTheyAreToCarry)
{
    RandomFiller filler(5);
    filler.setTexts({"", "a b", "<&>\"'", "Z09 -_.", QString::fromUtf8("\u00e4\u20ac\u4e2d\ufeff")});
    for (const QString& type : typeNames.split(' ')) {
        Entries entries;
        for (int i = 0; i < 60; ++i)
            entries += filler.make<Entry>();
        exported(entries, type);
        const Entries got = imported(type);
        ASSERT_EQ(got.size(), entries.size());
        for (int i = 0; i < got.size(); ++i)
            EXPECT_EQ(xml(got[i]), xml(carried(entries[i], type))) << qPrintable(type) << i;
    }
}

TEST_F(CsvFormats, LeaveTheCallersListsAsTheyWere)
{
    Entry tuned, detailed, directed, resulted; // parts of which are marked and hold nothing
    tuned.GetFFM_Settings();
    detailed.GetFFM_Settings().GetDetail();
    directed.SetDF_Settings(DF_Settings());
    resulted.GetResultList(), resulted.GetDetection(), resulted.GetProfile_Data();
    for (const QString& type : typeNames.split(' '))
        exported({Entry(), tuned, detailed, directed, resulted}, type); // which compares them
    FrequencyStoreListHelper none;
    EXPECT_FALSE(m_files.WriteCSV(path("x.csv"), none).isComplete);
    EXPECT_FALSE(none.IsInitialized());
}
