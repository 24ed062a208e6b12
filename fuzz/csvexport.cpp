/// Whatever lists a packed stream leaves, as CSV of every list type.

#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/filehandling.h"
#include "fuzz/target.h"

#include <QDataStream>

using namespace Velmara;
using namespace Velmara::fuzz;

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
        handling.WriteCSV(path, copy);
    }
}
