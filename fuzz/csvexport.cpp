/// Whatever lists a packed stream leaves, as CSV of every list type, which leaves them as they are.

#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/filehandling.h"
#include "fuzz/target.h"
#include "tests/recordstate.h"

#include <QDataStream>

using namespace Velmara;
using namespace Velmara::fuzz;

namespace {

/// What an export leaves alone: not the list to which detection results are converted, and the mark on their own.
std::string stateOfCallers(const FrequencyStoreListHelper& lists)
{
    if (lists.GetListType() != FrequencyStoreListHelper::ListType::DetectionResult)
        return stateOf(lists);
    std::string state;
    for (const DetectionResult& result : lists.GetDetectionResultList().GetDetectionResult())
        state += stateOf(result);
    return state;
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    FrequencyStoreListHelper lists;
    lists.SetValidate(!input.bits()[0]);
    QDataStream stream(input.rest());
    isDone([&] { lists.SetVersionSpecificBinaryWithoutValidation(stream); });
    FileHandling handling;
    const QString path = scratchFile({});
    for (int type = 0; type < FrequencyStoreListHelper::GetListTypes().size(); ++type) {
        FrequencyStoreListHelper copy = lists;
        copy.SetListType(FrequencyStoreListHelper::ListType(type));
        const std::string before = stateOfCallers(copy);
        handling.WriteCSV(path, copy);
        require(stateOfCallers(copy) == before, "an export leaves the lists as they are");
    }
}
