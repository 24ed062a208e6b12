#include "commands.h"
#include "identity.h"
#include "terminal.h"

#include <QHash>

#include <limits>
#include <utility>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

/// Joins lists, and tells of each entry that is there already.
class Joiner
{
public:
    explicit Joiner(const Identity& identity) : m_identity(identity) {}

    void add(const ListFile& file)
    {
        const FrequencyStoreListHelper helper = readList(file);
        if (!std::exchange(m_isBegun, true)) { // what the first list says of itself holds for all
            m_joined = helper;
            m_joined.GetFrequencyStoreList().ResetFrequencyStoreEntry();
        }
        int number = 0;
        for (const FrequencyStoreEntry& entry : helper.GetFrequencyStoreList().GetFrequencyStoreEntry())
            addEntry(entry, file.name + QString(", entry %1").arg(++number));
    }

    FrequencyStoreListHelper& joined() { return m_joined; }
    /// A line for each entry that was dropped.
    const QStringList& dropped() const { return m_dropped; }

private:
    struct Kept
    {
        QString place;
        FrequencyStoreEntry entry;
    };

    void addEntry(const FrequencyStoreEntry& entry, const QString& place)
    {
        const QVector<PathValue> values = valuesOf(entry);
        const QString named = m_identity.of(values), identity = named.isNull() ? textOf(values) : named;
        if (const auto kept = m_kept.constFind(identity); kept != m_kept.constEnd()) {
            const QString how = kept->entry == entry ? "the same as" : "though unlike";
            m_dropped += QString("%1: dropped, %2 %3: %4").arg(place, how, kept->place, labelOf(values));
            return;
        }
        m_kept.insert(identity, {place, entry});
        m_joined.GetFrequencyStoreList().AppendFrequencyStoreEntry(entry);
    }

    const Identity m_identity;
    FrequencyStoreListHelper m_joined;
    bool m_isBegun = false;
    QHash<QString, Kept> m_kept;
    QStringList m_dropped;
};

} // namespace

int merge(const QStringList& arguments)
{
    CommandLine line("Joins the entries of lists under the heading of the first. Of entries that are equal in "
                     "their frequency, or in\nwhat --by names, the first stays, and the others are told; entries "
                     "that have none of that must be equal in all.",
                     {"velmara merge all.xml north.xml south.packed",
                      "velmara merge all.csv a.csv b.csv --type DetectionConventional --by Frequency,StartTime",
                      "velmara merge all.csv a.csv b.csv --type MemoryScan --by Frequency,Antenna"});
    line.addInputOptions();
    line.addSkipOption();
    line.addOutput();
    line.addPositionalArgument("IN", "The lists to join.", "IN IN...");
    Identity::addOption(line);
    return line.run(arguments, [&] {
        const QStringList files = line.files(3, std::numeric_limits<int>::max());
        const ListFile out = line.output(files.first());
        if (out.type == ListType::DetectionResult)
            throw UsageError("detection results are not joined; convert them to entries first.");
        Joiner joiner(Identity(line, entryDescription(out.type)));
        for (const QString& file : files.mid(1))
            joiner.add(line.input(file));
        writeList(out, joiner.joined());
        for (const QString& dropped : joiner.dropped())
            out.isStream() ? tell(dropped) : print(dropped + '\n');
        if (!out.isStream())
            print(QString("%1: %2, %3 dropped\n")
                      .arg(out.name, countIn(joiner.joined()), QString::number(joiner.dropped().size())));
        return CommandLine::Done;
    });
}
