#include "conversion.h"

#include "messages.h"
#include "terminal.h"

#include <utility>

using namespace TALLYFORM;
using namespace Velmara;

namespace {

ConversionReport convert(const ListFile& file, const DetectionResultList& results, FrequencyStoreList& store)
{
    const Progress progress(QStringLiteral("converting ") + file.name);
    const BadResults badResults = file.skipsBad ? BadResults::AreSkipped : BadResults::EndConversion;
    ConversionReport report = DetectionResultHelper::Convert(results, store, badResults);
    if (!report.isComplete)
        throw TallyException(describe(file.name, report));
    return report;
}

void drop(const QVector<RefusedResult>& refused, QVector<DetectionResult>& results)
{
    QVector<DetectionResult> kept;
    auto next = refused.begin();
    for (int i = 0; i < results.size(); ++i) {
        if (next != refused.end() && next->index == i)
            ++next;
        else
            kept.append(std::move(results[i]));
    }
    results = kept;
}

} // namespace

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
