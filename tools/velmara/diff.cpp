#include "commands.h"
#include "identity.h"
#include "terminal.h"

#include <QHash>

#include <deque>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

struct Entry
{
    int number;
    const ITallyObject* record;
};

/// A list that was read; the texts of its entries are made as they are needed.
class List
{
public:
    explicit List(const ListFile& file) { readList(file, m_helper); }

    QVector<PathValue> heading() const { return headingOf(listIn(m_helper)); }
    QVector<Entry> entries() const
    {
        QVector<Entry> entries;
        for (const ITallyObject* record : entriesIn(m_helper))
            entries += {entries.size() + 1, record};
        return entries;
    }

private:
    FrequencyStoreListHelper m_helper;
};

struct Pair
{
    Entry left, right;
};

/// Takes out of both sides what a function finds equal, in order; an empty text is equal to none.
template <class TextOf> QVector<Pair> takePairs(QVector<Entry>& left, QVector<Entry>& right, TextOf textOf)
{
    QHash<QString, std::deque<int>> places;
    for (int i = 0; i < right.size(); ++i)
        places[textOf(valuesOf(*right[i].record))].push_back(i);
    places.remove(QString());
    QVector<Pair> pairs;
    QVector<Entry> alone;
    QVector<bool> isTaken(right.size(), false);
    for (const Entry& entry : qAsConst(left)) {
        const auto found = places.find(textOf(valuesOf(*entry.record)));
        if (found == places.end() || found->empty()) {
            alone += entry;
            continue;
        }
        isTaken[found->front()] = true;
        pairs += {entry, right[found->front()]};
        found->pop_front();
    }
    left = alone;
    QVector<Entry> rest;
    for (int i = 0; i < right.size(); ++i)
        if (!isTaken[i])
            rest += right[i];
    right = rest;
    return pairs;
}

void printAll(const QVector<Entry>& entries, const QString& sign, Colour colour)
{
    for (const Entry& entry : entries)
        print(coloured(sign + QStringLiteral(" %1: ").arg(entry.number) + labelOf(valuesOf(*entry.record)), colour)
              + QLatin1Char('\n'));
}

QHash<QString, QString> textsByPath(const QVector<PathValue>& values)
{
    QHash<QString, QString> texts;
    for (const PathValue& value : values)
        texts.insert(value.path, value.text);
    return texts;
}

void printDifference(const QString& path, const QString& before, const QString& after)
{
    if (before != after)
        print(QStringLiteral("    %1: %2 -> %3\n").arg(path, before, after));
}

/// The values that differ, a line each: first those of the left side, in its order.
void printDifferences(const QVector<PathValue>& left, const QVector<PathValue>& right)
{
    const QHash<QString, QString> before = textsByPath(left), after = textsByPath(right);
    const QString notSet = QStringLiteral("(not set)");
    for (const PathValue& value : left)
        printDifference(value.path, value.text, after.value(value.path, notSet));
    for (const PathValue& value : right)
        if (!before.contains(value.path))
            printDifference(value.path, notSet, value.text);
}

void printChange(const QString& what)
{
    print(coloured(QStringLiteral("~ ") + what, Colour::Yellow) + QLatin1Char('\n'));
}

void printChange(const Pair& pair)
{
    const QVector<PathValue> left = valuesOf(*pair.left.record), right = valuesOf(*pair.right.record);
    printChange(QStringLiteral("%1 -> %2: %3")
                    .arg(QString::number(pair.left.number), QString::number(pair.right.number), labelOf(left)));
    printDifferences(left, right);
}

/// Whether there is a difference.
bool printDifferences(const ListFile& a, const ListFile& b, const Identity& identity)
{
    const List before(a), after(b);
    QVector<Entry> left = before.entries(), right = after.entries();
    takePairs(left, right, [](const QVector<PathValue>& values) { return textOf(values); });
    const QVector<Pair> changed
        = takePairs(left, right, [&](const QVector<PathValue>& values) { return identity.of(values); });
    const bool isHeadingChanged = textOf(before.heading()) != textOf(after.heading());
    if (!isHeadingChanged && left.isEmpty() && right.isEmpty() && changed.isEmpty())
        return false;
    print(coloured(QStringLiteral("--- %1\n+++ %2\n").arg(a.name, b.name), Colour::Bold));
    if (isHeadingChanged) {
        printChange(QStringLiteral("the list"));
        printDifferences(before.heading(), after.heading());
    }
    printAll(left, QStringLiteral("-"), Colour::Red);
    for (const Pair& pair : changed)
        printChange(pair);
    printAll(right, QStringLiteral("+"), Colour::Green);
    return true;
}

} // namespace

int diff(const QStringList& arguments)
{
    constexpr int trouble = 2; // as diff has it
    CommandLine line(
        QStringLiteral("Tells which entries are only in A (-), only in B (+), or changed (~), and their "
                       "members that differ.\nValues are compared as show writes them; the order of the entries does "
                       "not count. The exit status is 0 if there\nis no difference, 1 if there is, 2 for trouble."),
        {QStringLiteral("velmara diff yesterday.xml today.xml"),
         QStringLiteral("velmara diff memoryscan.csv memoryscan.packed --type MemoryScan --by ChannelNo")});
    line.addArgument(QStringLiteral("A"), QStringLiteral("A list."), QStringLiteral("A"));
    line.addArgument(QStringLiteral("B"), QStringLiteral("Another, in any form."), QStringLiteral("B"));
    line.addInputOptions();
    line.addSkipOption();
    Identity::addOption(line);
    return line.run(
        arguments,
        [&] {
            const QStringList files = line.files(2, 2);
            const ListFile a = line.input(files[0]), b = line.input(files[1]);
            const Identity identity(line, entryDescription(a.type));
            return printDifferences(a, b, identity) ? CommandLine::Failed : CommandLine::Done;
        },
        trouble);
}
