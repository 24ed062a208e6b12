#include "commands.h"
#include "identity.h"
#include "terminal.h"

#include <QHash>

#include <algorithm>
#include <deque>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

struct Entry
{
    int number;
    QVector<MemberValue> values;
};

struct List
{
    QVector<MemberValue> heading;
    QVector<Entry> entries;
};

List listOf(const ListFile& file)
{
    FrequencyStoreListHelper helper;
    readList(file, helper);
    List list{headingOf(listIn(helper)), {}};
    for (const ITallyObject* entry : entriesIn(helper))
        list.entries += {list.entries.size() + 1, valuesOf(*entry)};
    return list;
}

QString contentOf(const QVector<MemberValue>& values)
{
    return textOf(values, [](const QString&) { return true; });
}

struct Pair
{
    Entry left, right;
};

/// Takes out of both sides what a function finds equal, in order; an empty text is equal to none.
template <class TextOf> QVector<Pair> takePairs(QVector<Entry>& left, QVector<Entry>& right, TextOf textOf)
{
    QHash<QString, std::deque<int>> places;
    for (int i = 0; i < right.size(); ++i)
        places[textOf(right[i].values)].push_back(i);
    places.remove(QString());
    QVector<Pair> pairs;
    QVector<Entry> alone;
    QVector<bool> isTaken(right.size(), false);
    for (const Entry& entry : qAsConst(left)) {
        const auto found = places.find(textOf(entry.values));
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
        print(coloured(sign + QStringLiteral(" %1: ").arg(entry.number) + labelOf(entry.values), colour)
              + QLatin1Char('\n'));
}

QString textAt(const QVector<MemberValue>& values, const QString& path)
{
    const auto found = std::find_if(values.begin(), values.end(), [&](const MemberValue& v) { return v.path == path; });
    return found == values.end() ? QStringLiteral("(not set)") : found->text;
}

/// The values that differ, a line each.
void printDifferences(const QVector<MemberValue>& left, const QVector<MemberValue>& right)
{
    QStringList paths;
    for (const auto& values : {left, right})
        for (const MemberValue& value : values)
            if (!paths.contains(value.path))
                paths += value.path;
    for (const QString& path : qAsConst(paths)) {
        const QString before = textAt(left, path), after = textAt(right, path);
        if (before != after)
            print(QStringLiteral("    %1: %2 -> %3\n").arg(path, before, after));
    }
}

void printChange(const QString& what)
{
    print(coloured(QStringLiteral("~ ") + what, Colour::Yellow) + QLatin1Char('\n'));
}

void printChange(const Pair& pair)
{
    printChange(
        QStringLiteral("%1 -> %2: %3")
            .arg(QString::number(pair.left.number), QString::number(pair.right.number), labelOf(pair.left.values)));
    printDifferences(pair.left.values, pair.right.values);
}

/// Whether there is a difference.
bool printDifferences(const ListFile& a, const ListFile& b, const Identity& identity)
{
    List left = listOf(a), right = listOf(b);
    takePairs(left.entries, right.entries, contentOf);
    const QVector<Pair> changed = takePairs(left.entries, right.entries,
                                            [&](const QVector<MemberValue>& values) { return identity.of(values); });
    const bool isHeadingChanged = contentOf(left.heading) != contentOf(right.heading);
    if (!isHeadingChanged && left.entries.isEmpty() && right.entries.isEmpty() && changed.isEmpty())
        return false;
    print(coloured(QStringLiteral("--- %1\n+++ %2\n").arg(a.name, b.name), Colour::Bold));
    if (isHeadingChanged) {
        printChange(QStringLiteral("the list"));
        printDifferences(left.heading, right.heading);
    }
    printAll(left.entries, QStringLiteral("-"), Colour::Red);
    for (const Pair& pair : changed)
        printChange(pair);
    printAll(right.entries, QStringLiteral("+"), Colour::Green);
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
