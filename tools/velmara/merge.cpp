#include "commands.h"
#include "identity.h"
#include "terminal.h"

#include <QHash>

#include <limits>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

/// Joins lists, and tells of each entry that is there already.
class Joiner
{
public:
    explicit Joiner(const Identity& identity) : m_identity(identity) {}

    void add(const ListFile& file)
    {
        FrequencyStoreListHelper helper;
        readList(file, helper);
        if (m_joined.GetListType() == ListType::Invalid && file.type != ListType::Invalid)
            m_joined.SetListType(file.type);
        FrequencyStoreList& list = helper.GetFrequencyStoreList();
        int number = 0;
        for (const FrequencyStoreEntry& entry : std::as_const(list).GetFrequencyStoreEntry())
            addEntry(entry, QStringLiteral("%1, entry %2").arg(file.path).arg(++number));
    }

    FrequencyStoreListHelper& joined() { return m_joined; }
    int dropped() const { return m_dropped; }

private:
    void addEntry(const FrequencyStoreEntry& entry, const QString& place)
    {
        const QVector<MemberValue> values = valuesOf(entry);
        const QString identity = m_identity.of(values);
        if (m_places.contains(identity)) {
            print(QStringLiteral("%1: dropped, the same as %2: %3\n")
                      .arg(place, m_places.value(identity), labelOf(values)));
            ++m_dropped;
            return;
        }
        if (!identity.isEmpty())
            m_places.insert(identity, place);
        m_joined.GetFrequencyStoreList().AppendFrequencyStoreEntry(entry);
    }

    const Identity& m_identity;
    FrequencyStoreListHelper m_joined;
    QHash<QString, QString> m_places;
    int m_dropped = 0;
};

} // namespace

int merge(const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("Joins the entries of lists. Of entries that are the same, the first stays, and the "
                       "others are told."),
        {QStringLiteral("velmara merge all.xml north.xml south.packed"),
         QStringLiteral("velmara merge all.csv a.csv b.csv --type MemoryScan --by Frequency,Antenna")});
    line.addArgument(QStringLiteral("OUT"), QStringLiteral("The file to write; left alone if anything fails."),
                     QStringLiteral("OUT"));
    line.addArgument(QStringLiteral("IN"), QStringLiteral("The lists to join."), QStringLiteral("IN..."));
    line.addInputOptions();
    line.addOutputOption();
    Identity::addOption(line);
    return line.run(arguments, [&] {
        const QStringList files = line.files(2, std::numeric_limits<int>::max());
        const ListFile out = line.output(files.first());
        if (out.type == ListType::DetectionResult)
            throw UsageError(QStringLiteral("detection results are not joined; convert them to entries first."));
        const Identity identity(line, *FindRecordDescription(QStringLiteral("FrequencyStoreEntry")));
        Joiner joiner(identity);
        for (const QString& file : files.mid(1))
            joiner.add(line.input(file));
        writeList(out, joiner.joined());
        if (files.first() != QLatin1String("-"))
            print(QStringLiteral("%1: %2, %3 dropped\n")
                      .arg(files.first(), countIn(joiner.joined()))
                      .arg(joiner.dropped()));
        return CommandLine::Done;
    });
}
