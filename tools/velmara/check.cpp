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

/// What convert would refuse of detection results that have no other fault.
void addRefusals(const DetectionResultList& results, QVector<Fault>& faults)
{
    QSet<QString> faulty;
    for (const Fault& fault : qAsConst(faults))
        faulty += fault.path.section('/', 0, 0);
    const auto add = [&](const QString& path, const QString& reason) {
        if (!faulty.contains(path))
            faults += Fault{.path = path, .message = reason};
    };
    FrequencyStoreList entries;
    const ConversionReport report = DetectionResultHelper::Convert(results, entries, BadResults::AreSkipped);
    if (!report.isComplete)
        add({}, report.error);
    for (const RefusedResult& refused : report.refused)
        add(QString("DetectionResult[%1]").arg(refused.index + 1), refused.reason);
}

QString placeOf(const Fault& fault) { return fault.path.isEmpty() ? fault.member : fault.path + '/' + fault.member; }

/// The faults of a list that a validating reader refuses, that for which it does among them.
QVector<Fault> faultsOfRefused(const ListFile& file, FrequencyStoreListHelper& helper,
                               const TallyFormException& failure)
{
    helper.Reset();
    helper.SetValidate(false);
    readThoroughly(file, helper);
    helper.SetValidate(true);
    QVector<Fault> faults = listIn(helper).FindFaults();
    if (faults.isEmpty()) // what only a reader that validates takes offence at
        throw failure;
    const QString first = placeOf(failure.GetFault());
    const auto isItsReason = [&](const Fault& fault) { return placeOf(fault).startsWith(first); }; // here or below
    if (std::none_of(faults.begin(), faults.end(), isItsReason))
        faults.prepend(failure.GetFault());
    return faults;
}

/// The faults of a file whose content can be read, one after the other.
QVector<Fault> faultsIn(const ListFile& file, FrequencyStoreListHelper& helper)
{
    QVector<Fault> faults;
    try {
        for (const QString& warning : readThoroughly(file, helper))
            faults += Fault{.message = warning};
        faults += listIn(helper).FindFaults();
    } catch (const TallyFormException& failure) {
        if (file.form == Form::Csv)
            throw;
        faults = faultsOfRefused(file, helper, failure);
    }
    if (helper.GetListType() == ListType::DetectionResult)
        addRefusals(std::as_const(helper).GetDetectionResultList(), faults);
    return faults;
}

void printFault(const ListFile& file, const Fault& fault)
{
    QString place = fault.place.text(); // of the input, or else of the tree
    if (place.isEmpty() && !tellsFile(fault.message, file.name))
        place = file.name + ": " + (fault.path.isEmpty() ? "the list" : fault.path);
    if (!place.isEmpty())
        place += ": ";
    print(place);
    printLine(fault.message, Colour::Red);
}

QString sumOf(const QVector<Fault>& faults)
{
    if (faults.isEmpty())
        return coloured("no fault", Colour::Green);
    return counted(faults.size(), "fault", "faults");
}

bool isFaultless(const ListFile& told)
{
    const ListFile file = asRegularFile(told); // for faults are looked for in a second reading
    FrequencyStoreListHelper helper;
    const QVector<Fault> faults = faultsIn(file, helper);
    for (const Fault& fault : faults)
        printFault(file, fault);
    print(QString("%1: %2, %3\n").arg(file.name, countIn(helper), sumOf(faults)));
    return faults.isEmpty();
}

} // namespace

int check(const QStringList& arguments)
{
    CommandLine line("Reads lists and checks them. Tells each fault with its place, and all cells and "
                     "rows\nof CSV that cannot be read as they stand. A detection result of which convert makes "
                     "no entry is faulty, too.\nThe exit status is 1 if there was any fault.",
                     {"velmara check memoryscan.xml targets.packed", "velmara check --type Suppress suppress.csv"});
    line.addPositionalArgument("FILE", "The files to check.", "FILE...");
    line.addInputOptions();
    return line.run(arguments, [&] {
        bool isGood = true;
        for (const QString& path : line.files(1, std::numeric_limits<int>::max())) {
            const ListFile file = line.input(path);
            try {
                isGood = isFaultless(file) && isGood;
            } catch (const TallyFormException& failure) {
                tell(describe(failure.GetFault()));
                isGood = false;
            }
        }
        return isGood ? CommandLine::Done : CommandLine::Failed;
    });
}
