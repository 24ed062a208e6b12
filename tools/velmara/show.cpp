#include "commandline.h"
#include "commands.h"
#include "content.h"
#include "json.h"
#include "terminal.h"

#include <QHash>
#include <QJsonDocument>

#include <algorithm>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

const QString columns = "columns", all = "all", json = "json";

/// What an operator looks for first in a list of each type; columns without content are left out.
QStringList usualColumns(ListType type)
{
    if (type == ListType::DetectionResult)
        return QString("ID,Frequency,Bandwidth,Level,Type,Modulation,TransmissionSystem,StartTime,StopTime,"
                       "Confidence,Azimuth,DFQuality,Latitude,Longitude")
            .split(',');
    QString names = "FFM_Settings/Frequency,ShortTime_Settings/Frequency,ShortTime_Settings/Range/StartFreq,"
                    "ShortTime_Settings/Range/StopFreq,FFM_Settings/IFBandwidth,ShortTime_Settings/Bandwidth,"
                    "FFM_Settings/AnalogDemod,Type,";
    const bool isAny = type == ListType::Invalid;
    if (isAny || type == ListType::MemoryScan)
        names += "FFM_Settings/Detail/ChannelNo,FFM_Settings/Detail/Active,FFM_Settings/Detail/"
                 "SquelchState,FFM_Settings/Detail/SquelchValue,DF_Settings/DFMode,";
    if (isAny || type == ListType::TargetList)
        names += "FFM_Settings/Level,Profile_Data/Priority,Profile_Data/SignalClass,"
                 "Profile_Data/ThreatClass,";
    if (isAny || type == ListType::DataResults || type == ListType::DetectionConventional)
        names += "FFM_Settings/Level,ResultList/ResultTime,ResultList/Confidence,ResultList/Reason,"
                 "Detection/StartTime,Detection/StopTime,";
    return (names + "Antenna,Comment").split(',');
}

/// Where entries have values, in the order of an entry as far as the entries tell it, and the room that these take.
class Outline
{
public:
    struct Room
    {
        bool isNumber = false; ///< and stands to the right
        int width = 0;         ///< of the longest text
    };

    explicit Outline(const QVector<const ITallyObject*>& entries)
    {
        for (const ITallyObject* entry : entries)
            add(valuesOf(*entry));
    }

    const QStringList& paths() const { return m_paths; }
    /// The paths that a column stands for: itself, or the items of a list.
    QStringList pathsOf(const QString& column) const
    {
        QStringList paths;
        for (const QString& path : m_paths)
            if (WithoutPlaces(path) == column)
                paths += path;
        return paths;
    }
    Room roomAt(const QString& path) const { return m_rooms.value(path); }

private:
    void add(const QVector<PathValue>& values)
    {
        int after = 0;
        for (const PathValue& value : values) {
            if (!m_rooms.contains(value.path))
                m_paths.insert(after, value.path);
            Room& room = m_rooms[value.path];
            room = {value.member->kind <= MemberDescription::Kind::UnsignedInt64, qMax(room.width, value.text.size())};
            after = m_paths.indexOf(value.path, after > 0 ? after - 1 : 0) + 1;
        }
    }

    QStringList m_paths;
    QHash<QString, Room> m_rooms;
};

/// The last members of a path, as far as they tell it from the others.
QString titleOf(const QString& path, const QStringList& paths)
{
    for (int parts = 1;; ++parts) {
        const QString title = path.section('/', -parts);
        const auto isAnother
            = [&](const QString& other) { return other != path && (other == title || other.endsWith('/' + title)); };
        if (title == path || std::none_of(paths.begin(), paths.end(), isAnother))
            return title;
    }
}

QString lineOf(const QStringList& cells, const QVector<Outline::Room>& rooms)
{
    QString line;
    for (int i = 0; i < cells.size(); ++i) {
        const auto [isNumber, width] = rooms[i];
        line += isNumber ? cells[i].rightJustified(width) : cells[i].leftJustified(width);
        line += "  ";
    }
    while (line.endsWith(' '))
        line.chop(1);
    return line;
}

/// Row by row, so that the texts of a long list are never there as a whole.
void printTable(const QVector<const ITallyObject*>& entries, const Outline& outline, const QStringList& paths)
{
    QStringList titles{"#"};
    QVector<Outline::Room> rooms{{true, QString::number(entries.size()).size()}};
    for (const QString& path : paths) {
        titles += titleOf(path, paths);
        rooms += outline.roomAt(path);
        rooms.last().width = qMax(rooms.last().width, titles.last().size());
    }
    printLine(lineOf(titles, rooms), Colour::Bold);
    int number = 0;
    for (const ITallyObject* entry : entries) {
        const QHash<QString, QString> texts = textsByPath(valuesOf(*entry));
        QStringList cells{QString::number(++number)};
        for (const QString& path : paths)
            cells += texts.value(path);
        print(lineOf(cells, rooms) + '\n');
    }
}

/// The list's own values and its count.
void printHeading(const FrequencyStoreListHelper& helper)
{
    QString heading;
    for (const PathValue& value : headingOf(listIn(helper)))
        heading += value.path + ": " + value.text + ", ";
    print(heading + countIn(helper) + '\n');
}

/// A line for each entry, likewise.
void printJson(const FrequencyStoreListHelper& helper)
{
    const auto textOf = [](const QJsonObject& object) {
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    };
    const QString name = entriesMember(listIn(helper)).name;
    QString heading = textOf(jsonOf(listIn(helper), name));
    heading.chop(1);
    print(heading + (heading.size() > 1 ? "," : QString()) + QString("\"%1\":[").arg(name));
    QString separator = "\n";
    for (const ITallyObject* entry : entriesIn(helper)) {
        print(separator + textOf(jsonOf(*entry)));
        separator = ",\n";
    }
    print(QString("\n]}\n"));
}

/// The paths that columns show; those that the operator asked for are there even if they are empty.
QStringList columnsFor(const CommandLine& line, ListType type, const Outline& outline)
{
    if (line.isSet(all))
        return outline.paths();
    const bool areAskedFor = line.isSet(columns);
    QStringList shown;
    for (const QString& name : areAskedFor ? line.valuesOf(columns) : usualColumns(type)) {
        const QStringList named = pathsNamed(name, entryDescription(type));
        QStringList filled;
        for (const QString& path : named)
            filled += outline.pathsOf(path);
        shown += filled.isEmpty() && areAskedFor ? named.mid(0, 1) : filled;
    }
    shown.removeDuplicates();
    return shown;
}

} // namespace

int show(const QStringList& arguments)
{
    CommandLine line("Shows a list as a table, or as JSON for programs.",
                     {"velmara show targets.xml --type TargetList",
                      "velmara show memoryscan.xml --columns Frequency,ChannelNo,Comment",
                      "velmara show --json results.packed | jq '.FrequencyStoreEntry[0]'"});
    line.addPositionalArgument("FILE", "The list.");
    line.addInputOptions();
    line.addSkipOption();
    line.addOption({columns,
                    "What to show of each entry, separated by commas: members by name, or by the path that "
                    "leads to them, as FFM_Settings/Detail/ChannelNo.",
                    "NAMES"});
    line.addOption({all, "Show all that any entry holds."});
    line.addOption({json, "Write JSON: the list, a line for each entry."});
    return line.run(arguments, [&] {
        if (int(line.isSet(json)) + int(line.isSet(all)) + int(line.isSet(columns)) > 1)
            throw UsageError("--json, --all and --columns exclude each other.");
        const FrequencyStoreListHelper helper = readList(line.input(line.files(1, 1).first()));
        if (line.isSet(json)) {
            printJson(helper);
            return CommandLine::Done;
        }
        const QVector<const ITallyObject*> entries = entriesIn(helper);
        const Outline outline(entries);
        const QStringList shown = columnsFor(line, helper.GetListType(), outline);
        printHeading(helper);
        if (!entries.isEmpty())
            printTable(entries, outline, shown);
        return CommandLine::Done;
    });
}
