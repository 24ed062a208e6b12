/// Lists that are read and written item by item are what they are as a whole, and fail where those fail.

#include "base/readfile.h"
#include "exchangefixture.h"

#include <QDir>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

constexpr ListForm forms[] = {ListForm::Xml, ListForm::Tagged, ListForm::Packed, ListForm::Csv};

const QVector<FrequencyStoreEntry>& itemsOf(const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry(); }
const QVector<DetectionResult>& itemsOf(const DetectionResultList& list) { return list.GetDetectionResult(); }
void reset(FrequencyStoreList& list) { list.ResetFrequencyStoreEntry(); }
void reset(DetectionResultList& list) { list.ResetDetectionResult(); }
void append(FrequencyStoreList& list, const FrequencyStoreEntry& entry) { list.AppendFrequencyStoreEntry(entry); }
void append(DetectionResultList& list, const DetectionResult& result) { list.AppendDetectionResult(result); }
void give(FrequencyStoreListHelper& helper, const FrequencyStoreList& list) { helper.SetFrequencyStoreList(list); }
void give(FrequencyStoreListHelper& helper, const DetectionResultList& list) { helper.SetDetectionResultList(list); }

template <class List> using ItemOf = typename std::decay_t<decltype(itemsOf(List()))>::value_type;

FrequencyStoreList longList(int size, RandomFiller filler)
{
    auto list = filler.make<FrequencyStoreList>();
    while (itemsOf(list).size() < size)
        append(list, filler.make<FrequencyStoreEntry>());
    return list;
}

/// The list as far as it was read, and the failure.
template <class List = FrequencyStoreList>
std::pair<List, Fault> readSingly(const QString& file, ListForm form, bool isValidated = true)
{
    ListReader<List, ItemOf<List>> reader(file, form);
    reader.heading().SetValidate(isValidated);
    std::vector<ItemOf<List>> items;
    const Fault fault = faultOf([&] {
        for (auto& item : reader)
            items.push_back(std::move(item));
    });
    EXPECT_FALSE(reader.next()) << "nothing is read behind the end";
    EXPECT_EQ(reader.count(), qint64(items.size()));
    List list = reader.heading();
    list.SetValidate(false);
    for (const auto& item : items)
        append(list, item);
    return {list, fault};
}

} // namespace

class Lists : public ExchangeTest
{
protected:
    /// Saves the list whole; what the report tells is for CSV alone.
    template <class List> QByteArray whole(const List& list, ListForm form, ListType type, ExportReport& report)
    {
        FrequencyStoreListHelper helper;
        switch (form) {
        case ListForm::Xml: list.WriteXml(path("whole")); break;
        case ListForm::Tagged: return list.GetBinaryRepresentationAsQByteArray();
        case ListForm::Packed: return packed(list);
        case ListForm::Csv:
            helper.SetListType(type);
            give(helper, list);
            report = FileHandling().WriteCSV(path("whole"), helper);
        }
        return read("whole");
    }

    template <class List> void expectSame(const List& list, ListType type)
    {
        const auto expectRead = [&](const QByteArray& bytes, ListForm form) {
            const auto [found, fault] = readSingly<List>(write("list", bytes), form, list.GetValidate());
            EXPECT_EQ(told(fault), told(Fault())) << int(form);
            EXPECT_TRUE(found == list) << int(form);
        };
        for (const ListForm form : forms) {
            ExportReport report;
            const QByteArray expected = whole(list, form, type, report);
            ListWriter<List, ItemOf<List>> writer(path("list"), form, type);
            writer.heading() = list;
            reset(writer.heading());
            writer.heading().SetValidate(list.GetValidate());
            for (const auto& item : itemsOf(list))
                writer.write(item);
            QFile::remove(path("list"));
            writer.finish();
            EXPECT_TRUE(read("list") == expected) << int(form);
            if (form == ListForm::Csv)
                EXPECT_EQ(told(writer.report()), told(report));
            else
                expectRead(expected, form);
        }
        const QByteArray compressed = list.GetCompressedBinaryRepresentationAsQByteArray();
        expectRead(compressed, ListForm::Tagged);
        expectRead(bytesOf([&](QDataStream& stream) { stream << compressed; }), ListForm::Tagged);
    }
};

TEST_F(Lists, AreTheSameItemByItem)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        auto list = RandomFiller(seed).make<FrequencyStoreList>();
        expectSame(list, ListType(seed % int(ListType::DetectionResult)));
        list.SetValidate(false);
        expectSame(list, ListType::MemoryScan);
        expectSame(RandomFiller(seed).make<DetectionResultList>(), ListType::DetectionResult);
    }
    FrequencyStoreList list = longList(3000, RandomFiller(1));
    list.GetFrequencyStoreEntry()[300].SetComment(QString(3 << 20, 'x')); // longer than a portion
    expectSame(list, ListType::MemoryScan);
}

TEST_F(Lists, OfNoItemsAreEmptyLists)
{
    FrequencyStoreList list;
    for (const ListForm form : {ListForm::Xml, ListForm::Tagged}) {
        EntryWriter writer(path("list"), form);
        EXPECT_EQ(messageOf<OutOfRangeException>([&] { writer.finish(); }),
                  messageOf<OutOfRangeException>([&] { list.Check(); }));
    }
    list.SetValidate(false);
    expectSame(list, ListType::Suppress);
}

TEST_F(Lists, FailWhereTheWholeListDoes)
{
    ExportReport none;
    const QByteArray document
        = whole(RandomFiller(3).setEverything().make<FrequencyStoreList>(), ListForm::Xml, {}, none);
    const QByteArray end = "</FrequencyStoreList>", next = "</FrequencyStoreEntry>\n <FrequencyStoreEntry";
    const std::pair<QByteArray, QByteArray> damages[] = {
        {end, ""},
        {end, end + "<more/>"},
        {end, "<Type>left alone</Type>" + end},
        {end, "<FrequencyStoreEntry/>" + end},
        {end, "<FrequencyStoreEntry Version='2.0'><No/></FrequencyStoreEntry>" + end},
        {next, "</FrequencyStoreEntry><!-- --><Name>behind</Name><FrequencyStoreEntry"},
        {next, "</FrequencyStoreEntry></Type><FrequencyStoreEntry"},
        {"<FrequencyStoreList", "<!-- --><FrequencyStoreList"},
        {"FrequencyStoreList", "DetectionResultList"},
        {"UTF-8", "ISO-8859-1"},
        {"1.2", "0.9"},
    };
    for (const auto& [from, to] : damages) {
        EXPECT_TRUE(document.contains(from)) << from.toStdString();
        const QString path = write("list", QByteArray(document).replace(from, to));
        for (const bool isValidated : {false, true}) {
            FrequencyStoreList expected;
            QFile file(path);
            expected.SetValidate(isValidated);
            const Fault expectedFault = faultOf([&] { expected.ReadXml(file); });
            const auto [found, fault] = readSingly(path, ListForm::Xml, isValidated);
            EXPECT_EQ(told(fault), told(expectedFault)) << to.toStdString();
            expected.SetValidate(false);
            EXPECT_EQ(xml(found), xml(expected)) << to.toStdString();
        }
    }
}

TEST_F(Lists, TellOfEveryFileThatEndsEarly)
{
    ExportReport none;
    const auto list = RandomFiller(4).make<FrequencyStoreList>();
    std::vector<std::pair<ListForm, QByteArray>> files{
        {ListForm::Tagged, list.GetCompressedBinaryRepresentationAsQByteArray()}};
    for (const ListForm form : {ListForm::Xml, ListForm::Tagged, ListForm::Packed})
        files.emplace_back(form, whole(list, form, {}, none) + "more");
    for (const auto& [form, bytes] : files) {
        for (int size = 0; size < bytes.size(); size += 1 + size / 64) {
            const QString file = write("list", bytes.left(size));
            const auto [found, fault] = readSingly(file, form);
            EXPECT_TRUE(fault.place.text().startsWith(file)) << int(form) << ' ' << size;
            EXPECT_EQ(itemsOf(found), itemsOf(list).mid(0, itemsOf(found).size()));
        }
    }
}

TEST_F(Lists, ReportOnCsvAsOnAWholeFile)
{
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
        const Fault fault = faultOf([&] {
            while (reader.next())
                append(found, reader.item());
        });
        EXPECT_EQ(fault.message, whole.error);
        EXPECT_TRUE(itemsOf(found) == itemsOf(expected));
        EXPECT_EQ(told(reader.report()), told(whole)) << content.left(80).toStdString();
    }
    EntryReader ending(write("list.csv", header + row + "b;;x;8000;AM;;\n"), ListForm::Csv, ListType::NotePad);
    EXPECT_TRUE(ending.next());
    EXPECT_THROW(ending.next(), TallyException);
    EXPECT_EQ(ending.report().failed.line, 4);
    EXPECT_THROW(ResultReader(path("list.csv"), ListForm::Csv), TallyException);
}

TEST_F(Lists, AreBoundByTheLimitItemByItem)
{
    ExportReport none;
    const FrequencyStoreList list = longList(2000, RandomFiller(5).setTexts({"text"}));
    const qint64 limit = GetInputLimit();
    for (const ListForm form : {ListForm::Xml, ListForm::Tagged, ListForm::Packed}) {
        const QByteArray bytes = whole(list, form, {}, none);
        auto large = list;
        large.GetFrequencyStoreEntry()[1000].SetComment(QString(3 * bytes.size(), 'x'));
        SetInputLimit(bytes.size() / 2);
        EXPECT_EQ(told(readSingly(write("list", bytes), form).second), told(Fault())) << int(form);
        const auto [found, fault] = readSingly(write("list", whole(large, form, {}, none)), form);
        EXPECT_EQ(itemsOf(found).size(), 1000) << int(form);
        EXPECT_TRUE(fault.message.contains("larger than the limit", Qt::CaseInsensitive)) << qPrintable(fault.message);
        SetInputLimit(limit);
    }
}

TEST_F(Lists, LeaveTheFileAsItWasIfTheyFail)
{
    write("list", "precious");
    const FrequencyStoreEntry good = itemsOf(RandomFiller(2).make<FrequencyStoreList>()).first(), incomplete;
    FrequencyStoreEntry uncarried = good;
    uncarried.SetComment(QString(QChar(1)));
    for (const ListForm form : forms)
        EntryWriter(path("list"), form, ListType::Suppress).write(good);
    for (const FrequencyStoreEntry& bad : {incomplete, uncarried}) {
        FrequencyStoreList whole;
        whole.GetFrequencyStoreEntry() = {good, bad};
        Fault expected = faultOf([&] { whole.WriteXml(path("other")); });
        expected.place = {}; // which is the other file
        EntryWriter writer(path("list"), ListForm::Xml);
        writer.write(good);
        EXPECT_EQ(told(faultOf([&] { writer.write(bad); })), told(expected));
        EXPECT_THROW(writer.write(good), TallyException);
        EXPECT_THROW(writer.finish(), TallyException);
    }
    EntryWriter refused(path("no/such/folder/list"), ListForm::Packed);
    refused.write(good);
    EXPECT_THROW(refused.finish(), TallyException);
    EXPECT_EQ(read("list"), "precious");
    EXPECT_EQ(QDir(path("")).entryList(QDir::Files | QDir::Hidden), QStringList{"list"}) << "no remains";
}
