/// The program of docs/guide.md: what stands between two marks of one name stands there too, with what it prints.

#include <frequencystore/frequencystore.h>

#include <QDataStream>
#include <QDebug>
#include <QDir>
#include <QTemporaryDir>

//! [namespaces]
using namespace TALLYFORM;
using namespace Velmara;
//! [namespaces]

namespace {

//! [entry]
FrequencyStoreEntry airband(const QString& comment, double frequency)
{
    FrequencyStoreEntry entry;
    entry.SetType(QStringLiteral("airband"));
    entry.SetComment(comment);

    FFM_Settings& tuning = entry.GetFFM_Settings(); // an editing getter: from now on it is set
    tuning.GetFrequency().SetValue(frequency);
    tuning.GetIFBandwidth().SetValue(8300);
    tuning.SetAnalogDemod(FFM_Settings::AnalogDemod::AM);
    return entry;
}
//! [entry]

//! [list]
FrequencyStoreList channels()
{
    FrequencyStoreList list;
    list.SetName(QStringLiteral("Tower and approach"));
    list.SetUsage(FrequencyStoreList::Usage::MemoryScan);
    list.AppendFrequencyStoreEntry(airband(QStringLiteral("Emergency"), 121.5e6));
    list.AppendFrequencyStoreEntry(airband(QStringLiteral("Tower"), 118.5e6));
    return list;
}
//! [list]

void reading()
{
    //! [reading]
    const FrequencyStoreList list = channels();
    for (const FrequencyStoreEntry& entry : list.GetFrequencyStoreEntry()) {
        const FFM_Settings& tuning = entry.GetFFM_Settings();
        qInfo("%s: %.0f, %s", qPrintable(entry.GetComment()), tuning.GetFrequency().GetValue(),
              qPrintable(tuning.GetAnalogDemodAsString()));
    }
    qInfo() << "level set:" << list.GetFrequencyStoreEntry().first().GetFFM_Settings().IsLevelSet();
    //! [reading]
}

void validation()
{
    //! [validation]
    const auto attempt = [](auto action) {
        try {
            action();
        } catch (const OutOfRangeException& failure) {
            qInfo("out of range: %s", failure.what());
        } catch (const IncompleteDefinitionException& failure) {
            qInfo("incomplete: %s", failure.what());
        }
    };

    Coordinate place;
    attempt([&] { place.SetLatitude(95); });
    attempt([&] { place.Check(); });

    FrequencyStoreEntry untuned;
    untuned.SetType(QStringLiteral("airband"));
    FrequencyStoreList list;
    attempt([&] { list.AppendFrequencyStoreEntry(untuned); });
    qInfo() << list.GetFrequencyStoreEntry().size() << "entries, complete:" << list.HasData();
    //! [validation]
}

void draft()
{
    //! [draft]
    Coordinate place;
    place.SetValidate(false);
    place.SetLatitude(95); // stored as it is
    place.SetValidate(true);
    qInfo() << "valid:" << place.IsValidLatitude(place.GetLatitude());
    //! [draft]
}

void choice()
{
    //! [choice]
    using Choice = FrequencyStoreEntry::ChoiceFrequencyStoreEntry;
    FrequencyStoreEntry entry = airband(QStringLiteral("Emergency"), 121.5e6);
    const auto show = [&] {
        const Choice chosen = entry.GetChoiceFrequencyStoreEntry();
        qInfo() << entry.ChoiceFrequencyStoreEntryToName(chosen) << entry.IsFFM_SettingsSet()
                << entry.IsShortTime_SettingsSet();
    };
    show();
    entry.GetShortTime_Settings().SetHopsPerSecond(200); // chooses it, and leaves the other where it is
    show();
    entry.InitChoice(Choice::FFM_Settings); // resets the whole entry, and chooses nothing yet
    show();
    //! [choice]
}

void xml()
{
    //! [xml]
    const QString path = QStringLiteral("channels.xml");
    FrequencyStoreList loaded;
    if (!channels().SaveXml(path) || !loaded.LoadXml(path))
        return;
    qInfo() << "same:" << (loaded == channels());
    qInfo("%s", qPrintable(airband(QStringLiteral("Emergency"), 121.5e6).GetXmlString()));
    //! [xml]
}

//! [logger]
class Journal : public Logger
{
public:
    void Log(const QString& message) override { qInfo("journal: %s", qPrintable(message)); }
};
//! [logger]

void telling()
{
    //! [telling]
    FrequencyStoreList list;
    list.SetLogger(std::make_shared<Journal>());
    qInfo() << "loaded:" << list.LoadXml(QStringLiteral("nowhere.xml"));
    list.ResetLogger();

    const QString text = QStringLiteral("<FrequencyStoreList Version=\"1.2\"><Usage>Target</Usage>\n"
                                        "<FrequencyStoreEntry Version=\"2.0\"><Type>airband</Type>\n"
                                        "<Usage>Unheard</Usage></FrequencyStoreEntry></FrequencyStoreList>");
    try {
        list.SetXmlString(text, true);
    } catch (const TallyException& failure) {
        qInfo("%s\nat %s", failure.what(), qPrintable(failure.GetOrigin()));
    }
    //! [telling]
}

void faults()
{
    //! [faults]
    FrequencyStoreList list = channels();
    list.SetValidate(false); // as an editor does
    FrequencyStoreEntry& tower = list.GetFrequencyStoreEntry()[1];
    tower.ResetType();
    tower.GetFFM_Settings().GetFrequency().ResetValue();
    for (const Fault& fault : list.FindFaults())
        qInfo("%s: %s", qPrintable(fault.path), qPrintable(fault.member));

    list.SetValidate(true);
    try {
        list.SaveXml(QStringLiteral("channels.xml"));
    } catch (const TallyException& failure) {
        const Fault& fault = failure.GetFault();
        qInfo("not saved, for %s in %s", qPrintable(fault.member), qPrintable(fault.path));
    }
    //! [faults]
}

void tagged()
{
    //! [tagged]
    const FrequencyStoreList list = channels();
    const QByteArray plain = list.GetBinaryRepresentationAsQByteArray();
    const QByteArray small = list.GetCompressedBinaryRepresentationAsQByteArray();
    qInfo() << plain.size() << "bytes, less when compressed:" << (small.size() < plain.size());

    QString reason;
    const QString path = QStringLiteral("channels.tagged");
    if (SaveFile(path, small, reason) != SaveResult::Saved)
        qWarning("%s", qPrintable(reason));

    FrequencyStoreList received, loaded;
    qInfo() << "read:" << received.SetBinaryRepresentation(plain) << loaded.LoadBinary(path); // either form
    qInfo() << "same:" << (received == list) << (loaded == list);
    //! [tagged]
}

void packed()
{
    //! [packed]
    const FrequencyStoreList list = channels();
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    list.GetVersionSpecificBinaryWithoutValidation(out);
    qInfo() << bytes.size() << "bytes";

    FrequencyStoreList received;
    QDataStream in(bytes);
    received.SetVersionSpecificBinaryWithoutValidation(in);
    qInfo() << "same:" << (in.status() == QDataStream::Ok && received == list);
    //! [packed]
}

void table()
{
    //! [table]
    FrequencyStoreListHelper helper;
    helper.SetListType(FrequencyStoreListHelper::ListType::NotePad);
    helper.SetFrequencyStoreList(channels());

    FileHandling files;
    const QString path = QStringLiteral("notepad.csv");
    const ExportReport written = files.WriteCSV(path, helper);
    qInfo("%d entries written, %d cells damaged", written.entries, int(written.damaged.size()));

    FrequencyStoreList read;
    const ImportReport report = files.ReadCSV(path, read, helper.GetListType());
    qInfo("%d entries read, %s", report.entries, report.isComplete ? "complete" : qPrintable(report.error));
    //! [table]
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        qInfo("%s", file.readAll().trimmed().constData());
}

void badRow()
{
    //! [badrow]
    const QByteArray table = "Type;Comment;Frequency;IFBandwidth;AnalogDemod;Colour;\n"
                             "airband;Tower;118.5 MHz;8300;AM;red;\n"
                             "airband;Emergency;121500000;8300;AMX;red;\n";
    const QString path = QStringLiteral("edited.csv");
    QString reason;
    if (SaveFile(path, table, reason) != SaveResult::Saved)
        return;

    FrequencyStoreList list;
    const ImportReport report = FileHandling().ReadCSV(path, list, FrequencyStoreListHelper::ListType::NotePad);
    qInfo("%d entry; line %d, column %s: \"%s\"", report.entries, report.failed.line, qPrintable(report.failed.column),
          qPrintable(report.failed.text));
    for (const CsvCell& cell : report.misread)
        qInfo("misread: line %d, column %s: \"%s\"", cell.line, qPrintable(cell.column), qPrintable(cell.text));
    qInfo() << "unknown:" << report.unknownColumns;
    //! [badrow]
}

void loading()
{
    //! [loading]
    FrequencyStoreList list = channels();
    const auto reload = [](FrequencyStoreList& fresh) { return fresh.LoadXml(QStringLiteral("channels.xml")); };
    reload(list);
    qInfo() << "loaded over what was there:" << list.GetFrequencyStoreEntry().size() << "entries";
    LoadWhole(list, reload);
    qInfo() << "loaded whole:" << list.GetFrequencyStoreEntry().size() << "entries";
    //! [loading]
}

void singly()
{
    //! [singly]
    EntryReader reader(QStringLiteral("channels.xml"), ListForm::Xml);
    try {
        for (FrequencyStoreEntry& entry : reader)
            qInfo("%s: %.3f MHz", qPrintable(entry.GetComment()),
                  entry.GetFFM_Settings().GetFrequency().GetValue() / 1e6);
    } catch (const TallyException& failure) {
        qInfo("%s: %s", qPrintable(failure.GetOrigin()), failure.what());
    }
    qInfo() << reader.count() << "entries of" << reader.heading().GetName();
    //! [singly]
}

void filter()
{
    //! [filter]
    EntryReader reader(QStringLiteral("channels.xml"), ListForm::Xml);
    EntryWriter writer(QStringLiteral("high.csv"), ListForm::Csv, FrequencyStoreListHelper::ListType::Suppress);
    for (const FrequencyStoreEntry& entry : reader)
        if (entry.GetFFM_Settings().GetFrequency().GetValue() > 120e6)
            writer.write(entry);
    writer.finish(); // ahead of which nothing is at the path
    qInfo() << writer.count() << "of" << reader.count();
    //! [filter]
}

void upgrade()
{
    //! [upgrade]
    const QString old = QStringLiteral("<FrequencyStoreEntry Version=\"1.5\">"
                                       "<Type>airband</Type><Shelf>7</Shelf>"
                                       "<FFM_Settings Version=\"1.1\"><Frequency>121500000</Frequency>"
                                       "<IFBandwidth>8300</IFBandwidth></FFM_Settings>"
                                       "</FrequencyStoreEntry>");
    FrequencyStoreEntry entry;
    qInfo() << "read:" << entry.SetXmlString(old, true);
    qInfo("%s is now %s", qPrintable(entry.GetInitialVersionLoaded()), qPrintable(entry.GetVersion()));
    qInfo() << entry;

    QString foreign = old;
    foreign.replace(QStringLiteral("1.5"), entry.GetVersion());
    try {
        entry.SetXmlString(foreign, true);
    } catch (const InvalidXmlException& failure) {
        qInfo("%s", failure.what());
    }
    //! [upgrade]
}

void printing()
{
    //! [printing]
    qInfo() << airband(QStringLiteral("Tower"), 118.5e6);
    //! [printing]
}

//! [reflection]
void outline(const ITallyObject& record, int depth = 0)
{
    for (const MemberDescription& member : DescriptionOf(record).members) {
        if (!member.isSet(record))
            continue;
        const QStringList line = QStringList(member.name) + member.texts(record);
        qInfo("%*s%s", 2 * depth, "", qPrintable(line.join(QLatin1Char(' '))));
        for (const ITallyObject* child : member.children(record))
            outline(*child, depth + 1);
    }
}
//! [reflection]

void reflection() { outline(airband(QStringLiteral("Emergency"), 121.5e6)); }

void classes()
{
    //! [classes]
    const RecordDescription* coordinate = FindRecordDescription(QStringLiteral("Coordinate"));
    const MemberDescription* latitude = coordinate->member(QStringLiteral("Latitude"));
    qInfo() << RecordDescriptions().size() << "classes; members of Coordinate:" << coordinate->members.size();
    qInfo("%s: %s, from %g to %g", qPrintable(latitude->name),
          latitude->need == MemberDescription::Need::Mandatory ? "mandatory" : "optional", latitude->range->lower,
          latitude->range->upper);
    //! [classes]
}

void editing()
{
    //! [editing]
    FrequencyStoreEntry entry = airband(QStringLiteral("Tower"), 118.5e6);
    SetTextAt(entry, QStringLiteral("FFM_Settings/Detail/ChannelNo"), QStringLiteral("7"));
    qInfo() << TextsAt(entry, QStringLiteral("FFM_Settings/Frequency"))
            << entry.GetFFM_Settings().GetDetail().GetChannelNo();
    qInfo() << PathsNamed(QStringLiteral("ChannelNo"), DescriptionOf(entry));

    const MemberDescription* type = DescriptionOf(entry).member(QStringLiteral("Type"));
    type->set(entry, QStringLiteral("ground"));
    qInfo() << entry.GetType();
    type->reset(entry);
    qInfo() << "set:" << type->isSet(entry);
    //! [editing]
}

void chapter(const char* name, void (*run)())
{
    qInfo("== %s", name);
    run();
}

} // namespace

int main()
{
    ErrorHandler::Instance().SetMask(0); // no trace of what fails here on purpose
    const QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path()))
        return 1;
    chapter("reading", reading);
    chapter("validation", validation);
    chapter("draft", draft);
    chapter("choice", choice);
    chapter("xml", xml);
    chapter("telling", telling);
    chapter("faults", faults);
    chapter("tagged", tagged);
    chapter("packed", packed);
    chapter("table", table);
    chapter("badrow", badRow);
    chapter("loading", loading);
    chapter("singly", singly);
    chapter("filter", filter);
    chapter("upgrade", upgrade);
    chapter("printing", printing);
    chapter("reflection", reflection);
    chapter("classes", classes);
    chapter("editing", editing);
    return 0;
}
