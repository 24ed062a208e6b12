/// Whatever lists a packed stream leaves, as CSV of any list type, which leaves them as they are. Texts, names and
/// times come back unless they are told as damaged.

#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/filehandling.h"
#include "frequencystore/paths.h"
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

/// The columns that carry more than a number, and the members that they carry.
constexpr struct
{
    const char* column;
    const char* path;
} carried[] = {
    {"Type", "Type"},
    {"Comment", "Comment"},
    {"Antenna", "Antenna"},
    {"AnalogDemod", "FFM_Settings/AnalogDemod"},
    {"AFC", "FFM_Settings/Detail/AFC"},
    {"Attenuation", "FFM_Settings/Detail/Attenuation"},
    {"SquelchState", "FFM_Settings/Detail/SquelchState"},
    {"DFSquelchMode", "DF_Settings/DFMode"},
    {"Priority", "Profile_Data/Priority"},
    {"ProfileID", "Profile_Data/ProfileID"},
    {"SignalClass", "Profile_Data/SignalClass"},
    {"TransmissionSystem", "Profile_Data/TransmissionSystem"},
    {"ProfileName", "Profile_Data/ProfileName"},
    {"ThreatClass", "Profile_Data/ThreatClass"},
    {"LockState", "ResultList/Reason"},
    {"SignalTime", "ResultList/ResultTime"},
    {"StartTime", "Detection/StartTime"},
    {"StopTime", "Detection/StopTime"},
};

/// Reads a file of which nothing was told as damaged; bad entries gave rows that are no entries.
void requireCarried(const FrequencyStoreListHelper& lists, const QString& file)
{
    FrequencyStoreList read;
    read.SetValidate(false);
    const ImportReport report = FileHandling().ReadCSV(file, read, lists.GetListType(), BadRows::AreSkipped);
    const QVector<FrequencyStoreEntry> after = std::as_const(read).GetFrequencyStoreEntry();
    const QVector<FrequencyStoreEntry> before = lists.GetFrequencyStoreList().GetFrequencyStoreEntry();
    require(report.isComplete && after.size() + report.skipped.size() == before.size(), "no row is lost");
    if (!report.skipped.isEmpty())
        return;
    const QStringList columns = QString::fromUtf8(contentOf(file)).section('\n', 0, 0).split(';');
    for (int i = 0; i < after.size(); ++i)
        for (const auto& [column, path] : carried)
            if (const QStringList texts = TextsAt(before[i], path); columns.contains(column) && !texts.isEmpty())
                require(TextsAt(after[i], path) == texts, "what is not told as damaged comes back");
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    using ListType = FrequencyStoreListHelper::ListType;
    const std::bitset<8> options = input.bits();
    FrequencyStoreListHelper lists;
    lists.SetValidate(!options[0]);
    QDataStream stream(input.rest());
    isDone([&] { lists.SetVersionSpecificBinaryWithoutValidation(stream); });
    const auto type = ListType((options >> 1).to_ulong() % unsigned(FrequencyStoreListHelper::GetListTypes().size()));
    lists.SetListType(type);
    const std::string before = stateOfCallers(lists);
    const QString path = scratchFile({});
    const ExportReport report = FileHandling().WriteCSV(path, lists);
    require(stateOfCallers(lists) == before, "an export leaves the lists as they are");
    if (type < ListType::DetectionResult && report.isComplete && report.damaged.isEmpty())
        requireCarried(lists, path);
}
