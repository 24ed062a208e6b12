#include "commands.h"
#include "identity.h"
#include "terminal.h"

#include <QHash>
#include <QQueue>

#include <vector>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

/// An entry of a list that was read; its texts are made as they are needed.
struct Entry
{
    int number;
    const ITallyObject* record; ///< null once it is paired

    QVector<PathValue> values() const { return valuesOf(*record); }
};
using Entries = std::vector<Entry>;

Entries numberedEntriesIn(const FrequencyStoreListHelper& helper)
{
    Entries entries;
    for (const ITallyObject* record : entriesIn(helper))
        entries.push_back({int(entries.size()) + 1, record});
    return entries;
}

struct Pair
{
    Entry left, right;
};

/// Takes out of both sides what a function finds equal, in order; an empty text is equal to none.
template <class TextOf> QVector<Pair> takePairs(Entries& left, Entries& right, TextOf textOf)
{
    QHash<QString, QQueue<Entry*>> unpaired;
    for (Entry& entry : right)
        unpaired[textOf(entry.values())].enqueue(&entry);
    unpaired.remove(QString());
    QVector<Pair> pairs;
    for (Entry& entry : left) {
        const auto equals = unpaired.find(textOf(entry.values()));
        if (equals == unpaired.end() || equals->isEmpty())
            continue;
        Entry& other = *equals->dequeue();
        pairs += {entry, other};
        entry.record = other.record = nullptr;
    }
    for (Entries* side : {&left, &right})
        std::erase_if(*side, [](const Entry& entry) { return !entry.record; });
    return pairs;
}

void printAll(const Entries& entries, const QString& sign, Colour colour)
{
    for (const Entry& entry : entries)
        printLine(sign + QString(" %1: ").arg(entry.number) + labelOf(entry.values()), colour);
}

void printDifference(const QString& path, const QString& before, const QString& after)
{
    if (before != after)
        print(QString("    %1: %2 -> %3\n").arg(path, before, after));
}

/// The values that differ, a line each: first those of the left side, in its order.
void printDifferences(const QVector<PathValue>& left, const QVector<PathValue>& right)
{
    const QHash<QString, QString> before = textsByPath(left), after = textsByPath(right);
    const QString notSet = "(not set)";
    for (const PathValue& value : left)
        printDifference(value.path, value.text, after.value(value.path, notSet));
    for (const PathValue& value : right)
        if (!before.contains(value.path))
            printDifference(value.path, notSet, value.text);
}

void printChange(const Pair& pair)
{
    const QVector<PathValue> left = pair.left.values(), right = pair.right.values();
    printLine(QString("~ %1 -> %2: ").arg(pair.left.number).arg(pair.right.number) + labelOf(left), Colour::Yellow);
    printDifferences(left, right);
}

/// Whether there is a difference.
bool printDifferences(const ListFile& a, const ListFile& b, const Identity& identity)
{
    const FrequencyStoreListHelper before = readList(a), after = readList(b);
    Entries left = numberedEntriesIn(before), right = numberedEntriesIn(after);
    takePairs(left, right, textOf);
    const QVector<Pair> changed
        = takePairs(left, right, [&](const QVector<PathValue>& values) { return identity.of(values); });
    const QVector<PathValue> leftHeading = headingOf(listIn(before)), rightHeading = headingOf(listIn(after));
    const bool isHeadingChanged = textOf(leftHeading) != textOf(rightHeading);
    if (!isHeadingChanged && left.empty() && right.empty() && changed.isEmpty())
        return false;
    print(coloured(QString("--- %1\n+++ %2\n").arg(a.name, b.name), Colour::Bold));
    if (isHeadingChanged) {
        printLine("~ the list", Colour::Yellow);
        printDifferences(leftHeading, rightHeading);
    }
    printAll(left, "-", Colour::Red);
    for (const Pair& pair : changed)
        printChange(pair);
    printAll(right, "+", Colour::Green);
    return true;
}

} // namespace

int diff(const QStringList& arguments)
{
    constexpr int trouble = 2; // as diff has it
    CommandLine line("Tells which entries are only in A (-), only in B (+), or changed (~), and their "
                     "members that differ.\nValues are compared as show writes them; the order of the entries does "
                     "not count. The exit status is 0 if there\nis no difference, 1 if there is, 2 for trouble.",
                     {"velmara diff yesterday.xml today.xml",
                      "velmara diff memoryscan.csv memoryscan.packed --type MemoryScan --by ChannelNo"});
    line.addPositionalArgument("A", "A list.");
    line.addPositionalArgument("B", "Another, in any form.");
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
