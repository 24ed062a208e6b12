#include "commandline.h"
#include "commands.h"
#include "content.h"
#include "messages.h"
#include "regularfile.h"
#include "terminal.h"

#include <QSet>

#include <limits>
#include <utility>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

struct Fault
{
    QString path; ///< below the list
    QString message;
};

/// What Check says of a record itself; null if nothing.
QString faultOf(const ITallyObject& record)
{
    try {
        record.Check();
        return {};
    } catch (const TallyFormException& failure) {
        return failure.GetMessage();
    }
}

/// Adds the faults of a tree, each where it is: a record of which a child is faulty is so for that reason.
void addFaults(const ITallyObject& record, const QString& path, QVector<Fault>& faults)
{
    const int known = faults.size();
    for (const MemberDescription& member : DescriptionOf(record).members) {
        int place = 0;
        for (const ITallyObject* child : member.children(record)) {
            const QString name = member.isList ? QStringLiteral("%1[%2]").arg(member.name).arg(++place) : member.name;
            addFaults(*child, path.isEmpty() ? name : path + QLatin1Char('/') + name, faults);
        }
    }
    const QString message = faults.size() == known ? faultOf(record) : QString();
    if (!message.isNull())
        faults += {path, message};
}

/// What convert would refuse of detection results that have no other fault.
void addRefusals(const DetectionResultList& results, QVector<Fault>& faults)
{
    QSet<QString> faulty;
    for (const Fault& fault : qAsConst(faults))
        faulty += fault.path.section(QLatin1Char('/'), 0, 0);
    const auto add = [&](const QString& path, const QString& reason) {
        if (!faulty.contains(path))
            faults += {path, reason};
    };
    FrequencyStoreList entries;
    const ConversionReport report = DetectionResultHelper::Convert(results, entries, BadResults::AreSkipped);
    if (!report.isComplete)
        add({}, report.error);
    for (const RefusedResult& refused : report.refused)
        add(QStringLiteral("DetectionResult[%1]").arg(refused.index + 1), refused.reason);
}

/// The faults of a file whose content can be read, one after the other.
QVector<Fault> faultsIn(const ListFile& file, FrequencyStoreListHelper& helper)
{
    QVector<Fault> faults;
    try {
        for (const QString& warning : readThoroughly(file, helper))
            faults += {{}, warning};
        addFaults(listIn(helper), {}, faults);
    } catch (const TallyFormException& failure) {
        if (file.form == Form::Csv)
            throw;
        helper.Reset();
        helper.SetValidate(false);
        readThoroughly(file, helper);
        helper.SetValidate(true);
        addFaults(listIn(helper), {}, faults);
        if (faults.isEmpty()) // what only a reader that validates takes offence at
            throw;
        if (failure.GetMessage().contains(QLatin1String("Unknown Tag"))) // passed over without validation
            faults.prepend({{}, failure.GetMessage()});
    }
    if (helper.GetListType() == FrequencyStoreListHelper::ListType::DetectionResult)
        addRefusals(std::as_const(helper).GetDetectionResultList(), faults);
    return faults;
}

void printFault(const ListFile& file, const Fault& fault)
{
    const QString path = fault.path.isEmpty() ? QStringLiteral("the list") : fault.path;
    QString place;
    if (!tellsFile(fault.message, file.name))
        place = file.name + QStringLiteral(": ") + path + QStringLiteral(": ");
    print(place + coloured(fault.message, Colour::Red) + QLatin1Char('\n'));
}

QString sumOf(const QVector<Fault>& faults)
{
    if (faults.isEmpty())
        return coloured(QStringLiteral("no fault"), Colour::Green);
    return faults.size() == 1 ? QStringLiteral("1 fault") : QStringLiteral("%1 faults").arg(faults.size());
}

bool isFaultless(const ListFile& told)
{
    const ListFile file = asRegularFile(told); // for faults are looked for in a second reading
    FrequencyStoreListHelper helper;
    const QVector<Fault> faults = faultsIn(file, helper);
    for (const Fault& fault : faults)
        printFault(file, fault);
    print(QStringLiteral("%1: %2, %3\n").arg(file.name, countIn(helper), sumOf(faults)));
    return faults.isEmpty();
}

} // namespace

int check(const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral(
            "Reads lists and checks them. Tells the first fault of each record with its place, and "
            "all cells and rows\nof CSV that cannot be read as they stand. A detection result of which convert makes "
            "no entry is faulty, too.\nThe exit status is 1 if there was any fault."),
        {QStringLiteral("velmara check memoryscan.xml targets.packed"),
         QStringLiteral("velmara check --type Suppress suppress.csv")});
    line.addArgument(QStringLiteral("FILE"), QStringLiteral("The files to check."), QStringLiteral("FILE..."));
    line.addInputOptions();
    return line.run(arguments, [&] {
        bool isGood = true;
        for (const QString& path : line.files(1, std::numeric_limits<int>::max())) {
            const ListFile file = line.input(path);
            try {
                isGood = isFaultless(file) && isGood;
            } catch (const TallyFormException& failure) {
                CommandLine::report(failure);
                isGood = false;
            }
        }
        return isGood ? CommandLine::Done : CommandLine::Failed;
    });
}
