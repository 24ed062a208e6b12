#include "commandline.h"
#include "commands.h"
#include "content.h"
#include "json.h"
#include "table.h"
#include "terminal.h"

#include <QHash>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

const QString columns = QStringLiteral("columns"), all = QStringLiteral("all"), json = QStringLiteral("json");

/// What an operator looks for first in a list of each type; columns without content are left out.
QStringList usualColumns(ListType type)
{
    static const QString entry
        = QStringLiteral("FFM_Settings/Frequency,ShortTime_Settings/Frequency,ShortTime_Settings/Range/StartFreq,"
                         "ShortTime_Settings/Range/StopFreq,FFM_Settings/IFBandwidth,ShortTime_Settings/"
                         "Bandwidth,FFM_Settings/AnalogDemod,Type,");
    static const QString scan
        = QStringLiteral("FFM_Settings/Detail/ChannelNo,FFM_Settings/Detail/Active,FFM_Settings/Detail/SquelchState,"
                         "FFM_Settings/Detail/SquelchValue,DF_Settings/DFMode,");
    static const QString target = QStringLiteral("FFM_Settings/Level,Profile_Data/Priority,Profile_Data/SignalClass,"
                                                 "Profile_Data/ThreatClass,");
    static const QString result = QStringLiteral("FFM_Settings/Level,ResultList/ResultTime,ResultList/Confidence,"
                                                 "ResultList/Reason,Detection/StartTime,Detection/StopTime,");
    static const QString rest = QStringLiteral("Antenna,Comment");
    static const QString detection = QStringLiteral(
        "ID,Frequency,Bandwidth,Level,Type,Modulation,TransmissionSystem,StartTime,StopTime,Confidence,Azimuth,"
        "DFQuality,Latitude,Longitude");
    static const QHash<int, QString> byType{
        {int(ListType::DetectionResult), detection},
        {int(ListType::MemoryScan), entry + scan + rest},
        {int(ListType::TargetList), entry + target + rest},
        {int(ListType::DataResults), entry + result + rest},
        {int(ListType::DetectionConventional), entry + result + rest},
        {int(ListType::Invalid), entry + scan + target + result + rest},
    };
    return byType.value(int(type), entry + rest).split(QLatin1Char(','));
}

/// The values of entries by path, and the paths that occur, in the order of an entry, as far as
/// the entries tell it.
class Contents
{
public:
    explicit Contents(const QVector<const ITallyObject*>& entries)
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
            if (withoutPlaces(path) == column)
                paths += path;
        return paths;
    }
    bool isNumber(const QString& path) const { return m_numbers.contains(path); }
    int count() const { return m_entries.size(); }
    QString text(int entry, const QString& path) const { return m_entries[entry].value(path); }

private:
    void add(const QVector<MemberValue>& values)
    {
        m_entries += QHash<QString, QString>();
        int after = 0;
        for (const MemberValue& value : values) {
            m_entries.last().insert(value.path, value.text);
            if (!m_known.contains(value.path)) {
                m_known.insert(value.path);
                m_paths.insert(after, value.path);
                if (isNumeric(*value.member))
                    m_numbers.insert(value.path);
            }
            after = m_paths.indexOf(value.path, after > 0 ? after - 1 : 0) + 1;
        }
    }
    static bool isNumeric(const MemberDescription& member)
    {
        return member.kind <= MemberDescription::Kind::UnsignedInt64;
    }

    QVector<QHash<QString, QString>> m_entries;
    QStringList m_paths;
    QSet<QString> m_known;
    QSet<QString> m_numbers;
};

/// The last members of a path, as far as they tell it from the others.
QString titleOf(const QString& path, const QStringList& paths)
{
    for (int parts = 1;; ++parts) {
        const QString title = path.section(QLatin1Char('/'), -parts);
        const auto isAnother = [&](const QString& other) {
            return other != path && (other == title || other.endsWith(QLatin1Char('/') + title));
        };
        if (title == path || std::none_of(paths.begin(), paths.end(), isAnother))
            return title;
    }
}

void printTable(const Contents& contents, const QStringList& paths)
{
    QVector<Table::Column> header{{QStringLiteral("#"), true}};
    for (const QString& path : paths)
        header += {titleOf(path, paths), contents.isNumber(path)};
    Table table(header);
    for (int entry = 0; entry < contents.count(); ++entry) {
        QStringList cells{QString::number(entry + 1)};
        for (const QString& path : paths)
            cells += contents.text(entry, path);
        table.add(cells);
    }
    table.print();
}

/// The list's own values and its count.
void printHeading(const FrequencyStoreListHelper& helper)
{
    QString heading;
    for (const MemberValue& value : headingOf(listIn(helper)))
        heading += value.path + QStringLiteral(": ") + value.text + QStringLiteral(", ");
    print(heading + countIn(helper) + QLatin1Char('\n'));
}

/// A line for each entry, so that a long list is never there as a whole.
void printJson(const FrequencyStoreListHelper& helper)
{
    const auto textOf = [](const QJsonObject& object) {
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    };
    const QString name = entriesMember(listIn(helper)).name;
    QString heading = textOf(jsonOf(listIn(helper), name));
    heading.chop(1);
    print(heading + (heading.size() > 1 ? QStringLiteral(",") : QString()) + QStringLiteral("\"%1\":[").arg(name));
    QString separator = QStringLiteral("\n");
    for (const ITallyObject* entry : entriesIn(helper)) {
        print(separator + textOf(jsonOf(*entry)));
        separator = QStringLiteral(",\n");
    }
    print(QStringLiteral("\n]}\n"));
}

/// The paths that columns of these names show; those that the operator asked for are there even if they are empty.
QStringList columnsNamed(const QStringList& names, bool areAskedFor, const RecordDescription& entry,
                         const Contents& contents)
{
    QStringList shown;
    for (const QString& name : names) {
        const QStringList named = pathsNamed(name, entry);
        QStringList filled;
        for (const QString& path : named)
            filled += contents.pathsOf(path);
        shown += filled.isEmpty() && areAskedFor ? named.mid(0, 1) : filled;
    }
    shown.removeDuplicates();
    return shown;
}

QStringList columnsFor(const CommandLine& line, const FrequencyStoreListHelper& helper, const Contents& contents)
{
    if (line.isSet(all))
        return contents.paths();
    const bool areAskedFor = line.isSet(columns);
    return columnsNamed(areAskedFor ? line.values(columns) : usualColumns(helper.GetListType()), areAskedFor,
                        entryDescription(helper.GetListType()), contents);
}

} // namespace

int show(const QStringList& arguments)
{
    CommandLine line(QStringLiteral("Shows a list as a table, or as JSON for programs."),
                     {QStringLiteral("velmara show targets.xml --type TargetList"),
                      QStringLiteral("velmara show memoryscan.xml --columns Frequency,ChannelNo,Comment"),
                      QStringLiteral("velmara show --json results.packed | jq '.FrequencyStoreEntry[0]'")});
    line.addArgument(QStringLiteral("FILE"), QStringLiteral("The list."), QStringLiteral("FILE"));
    line.addInputOptions();
    line.addValue({columns}, QStringLiteral("NAMES"),
                  QStringLiteral("What to show of each entry, parted by commas: members by name, or by the path that "
                                 "leads to them, as FFM_Settings/Detail/ChannelNo."));
    line.addFlag(all, QStringLiteral("Show all that any entry holds."));
    line.addFlag(json, QStringLiteral("Write JSON: the list, a line for each entry."));
    return line.run(arguments, [&] {
        if (int(line.isSet(json)) + int(line.isSet(all)) + int(line.isSet(columns)) > 1)
            throw UsageError(QStringLiteral("--json, --all and --columns exclude each other."));
        FrequencyStoreListHelper helper;
        readList(line.input(line.files(1, 1).first()), helper);
        if (line.isSet(json)) {
            printJson(helper);
            return CommandLine::Done;
        }
        const Contents contents(entriesIn(helper));
        const QStringList shown = columnsFor(line, helper, contents);
        printHeading(helper);
        if (contents.count() > 0)
            printTable(contents, shown);
        return CommandLine::Done;
    });
}
