#include "commandline.h"
#include "commands.h"
#include "content.h"
#include "messages.h"
#include "terminal.h"

#include <QSet>

using namespace TALLYFORM;
using namespace Velmara;

namespace {

ConversionReport convert(const ListFile& file, const DetectionResultList& results, FrequencyStoreList& store)
{
    const Progress progress("converting " + file.name);
    const BadResults badResults = file.skipsBad ? BadResults::AreSkipped : BadResults::EndConversion;
    ConversionReport report = DetectionResultHelper::Convert(results, store, badResults);
    if (!report.isComplete)
        throw TallyException(describe(file.name, report));
    return report;
}

void drop(const QVector<RefusedResult>& refused, QVector<DetectionResult>& results)
{
    QSet<int> dropped;
    for (const RefusedResult& result : refused)
        dropped += result.index;
    QVector<DetectionResult> kept;
    for (int i = 0; i < results.size(); ++i)
        if (!dropped.contains(i))
            kept.append(std::move(results[i]));
    results = kept;
}

/// Turns the detection results in the helper, which were read from a file, into the store entries that all forms but
/// CSV hold; those that give none are dropped if the file is to be read so. Warns of what is lost.
void convertResults(const ListFile& file, FrequencyStoreListHelper& helper, Form to)
{
    DetectionResultList& results = helper.GetDetectionResultList();
    FrequencyStoreList store;
    store.SetValidate(to != Form::Csv); // which is made of the results, and written though the entries could not be
    const ConversionReport report = convert(file, results, store);
    warn(refusalsIn(file.name, report));
    if (!report.refused.isEmpty())
        drop(report.refused, results.GetDetectionResult());
    if (to == Form::Csv)
        return;
    warn(lossesIn(file.name, report));
    helper.SetFrequencyStoreList(store);
}

/// Tells how many entries there were.
QString convert(const ListFile& in, const ListFile& out)
{
    if (in.type != ListType::DetectionResult)
        if (const auto count = copyList(in, out))
            return counted(int(*count), "entry", "entries");
    FrequencyStoreListHelper helper = readList(in);
    if (in.type == ListType::DetectionResult)
        convertResults(in, helper, out.form);
    writeList(out, helper);
    return countIn(helper);
}

} // namespace

int convert(const QStringList& arguments)
{
    CommandLine line("Converts a list between CSV (.csv), XML (.xml), tagged (.tagged) and packed binary (.packed).\n"
                     "Detection results are not read from CSV, and become store entries in all forms but CSV.",
                     {"velmara convert memoryscan.csv memoryscan.xml --type MemoryScan",
                      "velmara convert results.xml - --to csv --type DetectionResult"});
    line.addPositionalArgument("IN", "The file to read.");
    line.addInputOptions();
    line.addSkipOption();
    line.addOutput();
    return line.run(arguments, [&] {
        const QStringList files = line.files(2, 2);
        const ListFile in = line.input(files[0]), out = line.output(files[1]);
        const QString count = convert(in, out);
        if (!out.isStream())
            print(QString("%1: %2 -> %3\n").arg(count, in.name, out.name));
        return CommandLine::Done;
    });
}
