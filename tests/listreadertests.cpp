/// Lists that are read item by item hold what they hold when they are read whole, and fail where those fail.

#include "base/readfile.h"
#include "exchangefixture.h"
#include "frequencystore/listreader.h"

using namespace Velmara;
using namespace TALLYFORM;

namespace {

constexpr ListForm forms[] = {ListForm::Xml, ListForm::Tagged, ListForm::Packed};

template <class List> QByteArray bytesIn(ListForm form, const List& list)
{
    switch (form) {
    case ListForm::Xml: return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + list.GetXmlString().toUtf8();
    case ListForm::Tagged: return list.GetBinaryRepresentationAsQByteArray();
    default: return packed(list);
    }
}

void append(FrequencyStoreList& list, const FrequencyStoreEntry& entry) { list.AppendFrequencyStoreEntry(entry); }
void append(DetectionResultList& list, const DetectionResult& result) { list.AppendDetectionResult(result); }

/// What comes of reading: the list as far as it was read, and the failure.
template <class List> struct Outcome
{
    List list;
    Fault fault;
};

template <class List, class Item> Outcome<List> readSingly(const QString& file, ListForm form, bool isValidated = true)
{
    Outcome<List> outcome;
    ListReader<List, Item> reader(file, form);
    reader.heading().SetValidate(isValidated);
    outcome.list.SetValidate(false);
    std::vector<Item> items;
    try {
        for (Item& item : reader)
            items.push_back(std::move(item));
    } catch (const TallyFormException& failure) {
        outcome.fault = failure.GetFault();
        EXPECT_FALSE(failure.GetMessage().isEmpty());
    }
    EXPECT_FALSE(reader.next()) << "nothing is read behind the end";
    EXPECT_EQ(reader.count(), qint64(items.size()));
    outcome.list = reader.heading();
    for (const Item& item : items)
        append(outcome.list, item);
    return outcome;
}

template <class List> Outcome<List> readWhole(const QString& path, bool isValidated)
{
    Outcome<List> outcome;
    outcome.list.SetValidate(isValidated);
    QFile file(path);
    try {
        outcome.list.ReadXml(file);
    } catch (const TallyFormException& failure) {
        outcome.fault = failure.GetFault();
    }
    return outcome;
}

QString told(const ImportReport& report)
{
    QStringList parts{
        QString::number(report.isComplete),   QString::number(report.entries),  report.error, told(report.failed),
        QString::number(report.isMisencoded), QString::number(report.emptyLine)};
    for (const CsvBadRow& row : report.skipped)
        parts += told(row.place) + row.reason;
    for (const CsvCell& cell : report.misread)
        parts += told(cell);
    return (parts + report.unknownColumns + report.repeatedColumns + report.missingColumns).join(" | ");
}

QString told(const Fault& fault)
{
    return QStringList{QString::number(int(fault.kind)), fault.path, fault.member, fault.place.text(), fault.message}
        .join(" | ");
}

} // namespace

class ListReading : public ExchangeTest
{
protected:
    template <class List, class Item> void expectSame(const List& list)
    {
        for (const ListForm form : forms) {
            const auto outcome = readSingly<List, Item>(write("list", bytesIn(form, list)), form);
            EXPECT_EQ(told(outcome.fault), told(Fault())) << int(form);
            EXPECT_EQ(xml(outcome.list), xml(list)) << int(form);
            EXPECT_TRUE(outcome.list == list) << int(form);
        }
        const QByteArray compressed = list.GetCompressedBinaryRepresentationAsQByteArray();
        for (const QByteArray& bytes : {compressed, bytesOf([&](QDataStream& stream) { stream << compressed; })}) {
            const auto outcome = readSingly<List, Item>(write("list", bytes), ListForm::Tagged);
            EXPECT_EQ(told(outcome.fault), told(Fault()));
            EXPECT_TRUE(outcome.list == list);
        }
    }
};

TEST_F(ListReading, GivesWhatTheListHolds)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        expectSame<FrequencyStoreList, FrequencyStoreEntry>(RandomFiller(seed).make<FrequencyStoreList>());
        expectSame<DetectionResultList, DetectionResult>(RandomFiller(seed).make<DetectionResultList>());
    }
}

TEST_F(ListReading, GoesOnWhereAPortionOfTheFileEnds)
{
    RandomFiller filler(1);
    auto list = filler.make<FrequencyStoreList>();
    while (list.GetFrequencyStoreEntry().size() < 600)
        list.AppendFrequencyStoreEntry(filler.make<FrequencyStoreEntry>());
    list.GetFrequencyStoreEntry()[300].SetComment(QString(3 << 20, 'x')); // longer than a portion
    expectSame<FrequencyStoreList, FrequencyStoreEntry>(list);
}

TEST_F(ListReading, FailsWhereTheWholeListDoes)
{
    const auto list = RandomFiller(3).setEverything().make<FrequencyStoreList>();
    const QByteArray document = bytesIn(ListForm::Xml, list);
    const std::pair<const char*, const char*> damages[] = {
        {"</FrequencyStoreList>", ""},
        {"</FrequencyStoreList>", "</FrequencyStoreList><more/>"},
        {"</FrequencyStoreList>", "<Type>left alone</Type></FrequencyStoreList>"},
        {"</FrequencyStoreList>", "<FrequencyStoreEntry/></FrequencyStoreList>"},
        {"</FrequencyStoreList>",
         "<FrequencyStoreEntry><FFM_Settings><No/></FFM_Settings></FrequencyStoreEntry></FrequencyStoreList>"},
        {"</FrequencyStoreEntry><FrequencyStoreEntry>",
         "</FrequencyStoreEntry>\n<!-- --><Name>behind</Name><FrequencyStoreEntry>"},
        {"</FrequencyStoreEntry><FrequencyStoreEntry>", "</FrequencyStoreEntry><FrequencyStoreEntry></Type>"},
        {"<FrequencyStoreList", "<!-- --><FrequencyStoreList"},
        {"FrequencyStoreList", "DetectionResultList"},
        {"UTF-8", "ISO-8859-1"},
        {"1.2", "0.9"},
    };
    for (const auto& [from, to] : damages) {
        const QString file = write("list", QByteArray(document).replace(from, to));
        for (const bool isValidated : {false, true}) {
            auto expected = readWhole<FrequencyStoreList>(file, isValidated);
            auto found = readSingly<FrequencyStoreList, FrequencyStoreEntry>(file, ListForm::Xml, isValidated);
            EXPECT_EQ(told(found.fault), told(expected.fault)) << to;
            expected.list.SetValidate(false);
            found.list.SetValidate(false);
            EXPECT_EQ(xml(found.list), xml(expected.list)) << to;
        }
    }
}

TEST_F(ListReading, TellsOfEveryFileThatEndsEarly)
{
    const auto list = RandomFiller(4).make<FrequencyStoreList>();
    for (const ListForm form : forms) {
        const QByteArray bytes = bytesIn(form, list);
        for (int size = 0; size < bytes.size(); size += 1 + size / 64) {
            const QString file = write("list", bytes.left(size));
            const auto outcome = readSingly<FrequencyStoreList, FrequencyStoreEntry>(file, form);
            EXPECT_TRUE(outcome.fault.place.text().startsWith(file)) << int(form) << ' ' << size;
            EXPECT_EQ(outcome.list.GetFrequencyStoreEntry(),
                      list.GetFrequencyStoreEntry().mid(0, outcome.list.GetFrequencyStoreEntry().size()));
        }
        const QByteArray compressed = list.GetCompressedBinaryRepresentationAsQByteArray();
        for (int size = 0; size < compressed.size(); size += 1 + size / 16) {
            const QString file = write("list", compressed.left(size));
            EXPECT_FALSE(
                (readSingly<FrequencyStoreList, FrequencyStoreEntry>(file, ListForm::Tagged).fault.message.isEmpty()));
        }
        const QString longer = write("list", bytes + "more");
        EXPECT_TRUE(
            (readSingly<FrequencyStoreList, FrequencyStoreEntry>(longer, form).fault.place.text().startsWith(longer)));
    }
}

TEST_F(ListReading, ReportsOnCsvAsOnAWholeFile)
{
    using ListType = FrequencyStoreListHelper::ListType;
    const QByteArray row = "a;;1000000;8000;AM;\n";
    const QByteArray header = "# remark\r\nType;Comment;Frequency;IFBandwidth;AnalogDemod;Other\n";
    const QByteArray long_ = "long;" + QByteArray(30000, 'x') + ";1;1;AM;\n", wide = "\xE2\x82\xAC;;1;1;AM;\r\n";
    const QByteArray files[] = {header + row.repeated(5000) + wide + row,
                                header + row + "b;;x;8000;XM;o\n" + row + "\n" + row,
                                header + row + ";;1;1;AM;\n" + row,
                                header + row + long_ + row,
                                header + wide + "\xE2\x82",
                                "\xFF\xFE" + QByteArray("T\0y\0p\0e\0\n\0a\0\n\0", 14),
                                "Comment\nx\n",
                                "# no header\n",
                                ""};
    for (const QByteArray& content : files) {
        const QString file = write("list.csv", content);
        FrequencyStoreList expected, found;
        const ImportReport whole = FileHandling().ReadCSV(file, expected, ListType::NotePad, BadRows::AreSkipped);
        EntryReader reader(file, ListForm::Csv, ListType::NotePad, BadRows::AreSkipped);
        try {
            while (reader.next())
                found.AppendFrequencyStoreEntry(reader.item());
        } catch (const TallyException& failure) {
            EXPECT_EQ(failure.GetMessage(), whole.error);
        }
        EXPECT_TRUE(found.GetFrequencyStoreEntry() == expected.GetFrequencyStoreEntry());
        EXPECT_EQ(told(reader.report()), told(whole)) << content.left(80).toStdString();
    }
    EntryReader ending(write("list.csv", header + row + "b;;x;8000;AM;;\n"), ListForm::Csv, ListType::NotePad);
    EXPECT_TRUE(ending.next());
    EXPECT_THROW(ending.next(), TallyException);
    EXPECT_EQ(ending.report().failed.line, 4);
    EXPECT_THROW(ResultReader(path("list.csv"), ListForm::Csv), TallyException);
}

TEST_F(ListReading, IsBoundByTheLimitItemByItem)
{
    RandomFiller filler(5);
    filler.setTexts({"text"});
    auto list = filler.make<FrequencyStoreList>();
    while (list.GetFrequencyStoreEntry().size() < 2000)
        list.AppendFrequencyStoreEntry(filler.make<FrequencyStoreEntry>());
    const qint64 limit = GetInputLimit();
    for (const ListForm form : forms) {
        const QByteArray bytes = bytesIn(form, list);
        SetInputLimit(bytes.size() / 2);
        const auto within = readSingly<FrequencyStoreList, FrequencyStoreEntry>(write("list", bytes), form);
        EXPECT_EQ(told(within.fault), told(Fault())) << int(form);
        auto large = list;
        large.GetFrequencyStoreEntry()[1000].SetComment(QString(3 * bytes.size(), 'x'));
        const auto beyond
            = readSingly<FrequencyStoreList, FrequencyStoreEntry>(write("list", bytesIn(form, large)), form);
        EXPECT_EQ(beyond.list.GetFrequencyStoreEntry().size(), 1000) << int(form);
        EXPECT_TRUE(beyond.fault.message.contains("larger than the limit", Qt::CaseInsensitive))
            << qPrintable(beyond.fault.message);
        SetInputLimit(limit);
    }
}
