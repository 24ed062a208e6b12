#include "frequencystore/detectionresulthelper.h"

#include "base/exceptions.h"
#include "frequencystore/csv/format.h"
#include "frequencystore/kernel/model/description.h"
#include "frequencystore/readable.h"
#include "frequencystore/reported.h"
#include "frequencystore/trace.h"

#include <QVarLengthArray>

#include <algorithm>
#include <iterator>

using namespace TALLYFORM;

namespace Velmara {

namespace {

using Mode = Demodulator_Settings::Mode;

/// What is taken over of a record, as lists of members.
using Taken = QVarLengthArray<const char*, 8>;

/// An entry in the making.
struct Draft
{
    FrequencyStoreEntry entry;
    Taken taken; ///< of its result
};

/// What becomes of a result by its modulation text: the mode of the demodulator, and what its settings take over.
struct Modulation
{
    QStringList texts;
    Mode mode;
    const char* taken;
    void (*fill)(Demodulator_Settings&, const DetectionResult&);
};

void fillASK(Demodulator_Settings& settings, const DetectionResult& result)
{
    settings.GetASK_Settings().SetBaudrate(result.GetBaudrate());
}

void fillFSK(Demodulator_Settings& settings, const DetectionResult& result)
{
    FSK_Settings& fsk = settings.GetFSK_Settings();
    fsk.SetModType(fsk.NameToModType(result.GetModulation()));
    fsk.SetBaudrate(result.GetBaudrate());
    fsk.AppendShift(result.GetShift());
}

void fillPSK(Demodulator_Settings& settings, const DetectionResult& result)
{
    PSK_Settings& psk = settings.GetPSK_Settings();
    psk.SetModType(psk.NameToModType(result.GetModulation()));
    psk.SetBaudrate(result.GetBaudrate());
}

void fillMorse(Demodulator_Settings& settings, const DetectionResult& result)
{
    Morse_Settings& morse = settings.GetMorse_Settings();
    morse.SetAutoMode(true);
    morse.SetSpeed(valueOf(result.GetBaudrate()));
}

template <MPSK_Settings::ModType type> void fillMPSK(Demodulator_Settings& settings, const DetectionResult& result)
{
    MPSK_Settings& mpsk = settings.GetMPSK_Settings();
    mpsk.SetModType(type);
    mpsk.SetBaudrate(result.GetBaudrate());
}

void fillMFSK(Demodulator_Settings& settings, const DetectionResult& result)
{
    MFSK_Settings& mfsk = settings.GetMFSK_Settings();
    mfsk.SetModType(MFSK_Settings::ModType::McFSK2);
    mfsk.SetBaudrate(result.GetBaudrate());
    mfsk.SetShift(result.GetShift());
}

void fillTransmissionSystem(Demodulator_Settings& settings, const DetectionResult& result)
{
    TransmissionSystem& system = settings.GetTransmissionSystem();
    system.SetMode(result.IsTransmissionSystemSet() ? result.GetTransmissionSystem() : result.GetModulation());
    system.SetModType(result.GetModulation());
    if (result.IsBaudrateSet())
        system.SetBaudrate(result.GetBaudrate());
    if (result.IsShiftSet())
        system.AppendShift(result.GetShift());
}

const Modulation& modulationOf(const QString& text)
{
    using MPSK = MPSK_Settings::ModType;
    static const Modulation catalogue[] = {
        {kernel::splitNames("ASK2"), Mode::ASK, "Baudrate", fillASK},
        {kernel::splitNames("MSK, FSK2, FSK4"), Mode::FSK, "Baudrate, Shift", fillFSK},
        {kernel::splitNames("PSK2A, PSK2B, PSK4A, PSK4B, PSK8A, PSK8B"), Mode::PSK, "Baudrate", fillPSK},
        {kernel::splitNames("MORSE"), Mode::Morse, "Baudrate/Value", fillMorse},
        {kernel::splitNames("MPSK2A, MPSK2B"), Mode::MPSK, "Baudrate", fillMPSK<MPSK::McPSK2>},
        {kernel::splitNames("MPSK4A, MPSK4B"), Mode::MPSK, "Baudrate", fillMPSK<MPSK::McPSK4>},
        {kernel::splitNames("MFSK2"), Mode::MFSK, "Baudrate, Shift", fillMFSK},
    };
    static const Modulation other{
        {}, Mode::TransmissionSystem, "TransmissionSystem, Baudrate, Shift", fillTransmissionSystem};
    const auto modulation = std::find_if(std::begin(catalogue), std::end(catalogue),
                                         [&](const Modulation& each) { return each.texts.contains(text); });
    return modulation == std::end(catalogue) ? other : *modulation;
}

/// One bearing, taken where the result was received.
Station stationOf(const DetectionResult& result)
{
    Station station;
    DFData& data = station.GetDFData();
    data.SetQuality(result.GetDFQuality());
    data.SetFrequency(result.GetFrequency());
    data.SetAzimuth(result.GetAzimuth());
    data.SetLevel(result.GetLevel());
    return station;
}

void locate(Draft& draft, const DetectionResult& result)
{
    if (!result.IsLongitudeSet() || !result.IsLatitudeSet())
        return;
    LocationResult located;
    located.SetTimeStamp(result.GetStartTime());
    located.SetDFBandwidth(valueOf(result.GetBandwidth()));
    located.GetLocation().SetLongitude(result.GetLongitude());
    located.GetLocation().SetLatitude(result.GetLatitude());
    located.GetDetail().SetFrequency(result.GetFrequency());
    located.AppendStation(stationOf(result));
    FrequencyStoreEntryLocation location;
    location.AppendLocationResult(located);
    draft.entry.SetLocation(location);
    draft.taken.append("Longitude, Latitude, Azimuth, DFQuality");
}

/// Takes over the receiver settings that a result has as XML.
void takeReceiver(Draft& draft, const DetectionResult& result, const QString& failurePrefix)
{
    FFM_Settings& tuning = draft.entry.GetFFM_Settings();
    try {
        if (tuning.SetXmlString(result.GetFFMSettingsWithAnalogDemod(), false))
            draft.taken.append("FFMSettingsWithAnalogDemod");
    } catch (const TallyException& failure) {
        trace(failurePrefix + failure.GetMessage());
        tuning.Reset();
    }
}

void tune(Draft& draft, const DetectionResult& result, const QString& failurePrefix)
{
    FrequencyStoreEntry& entry = draft.entry;
    entry.SetType(result.GetType().isEmpty() ? QStringLiteral("a") : result.GetType());
    if (result.IsFFMSettingsWithAnalogDemodSet())
        takeReceiver(draft, result, failurePrefix);
    FFM_Settings& tuning = entry.GetFFM_Settings();
    tuning.SetFrequency(result.GetFrequency());
    tuning.GetIFBandwidth().SetValue(valueOf(result.GetBandwidth()));
    tuning.SetLevel(result.GetLevel());
    entry.GetDetection().SetStartTime(result.GetStartTime());
    if (result.IsStopTimeSet())
        entry.GetDetection().SetStopTime(result.GetStopTime());
    draft.taken.append("Type, Frequency, Bandwidth/Value, Level, StartTime, StopTime");
}

Draft withoutDemodulator(const DetectionResult& result)
{
    Draft draft;
    draft.entry.SetID(result.GetID());
    draft.taken.append("ID");
    tune(draft, result, QStringLiteral("InitWithoutDemodulator : "));
    locate(draft, result);
    return draft;
}

Draft withDemodulator(const DetectionResult& result)
{
    const Modulation& modulation = modulationOf(result.GetModulation());
    Draft draft;
    tune(draft, result, QString());
    draft.entry.GetResultList().SetConfidence(result.GetConfidence());
    locate(draft, result);
    Demodulator_Settings& settings = draft.entry.GetDemodulator_Settings();
    settings.SetFrequencyOffset(0.0);
    const QStringList decoders = result.GetDecoder().split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (!decoders.isEmpty()) {
        settings.GetDecoder().SetValue(decoders.toVector());
        draft.taken.append("Decoder");
    }
    if (!result.GetDemodulatorRawParameters().isEmpty())
        settings.SetParameters(result.GetDemodulatorRawParameters());
    settings.SetMode(modulation.mode);
    modulation.fill(settings, result);
    draft.taken.append("Confidence, DemodulatorRawParameters, Modulation");
    draft.taken.append(modulation.taken);
    return draft;
}

Draft draftOf(const DetectionResult& result)
{
    return result.IsModulationSet() ? withDemodulator(result) : withoutDemodulator(result);
}

bool holdsAnything(const ITallyObject& record, const MemberDescription& member)
{
    const auto isHolding = [&member](const ITallyObject* child) {
        const QVector<MemberDescription>& members = member.record().members;
        return std::any_of(members.begin(), members.end(),
                           [child](const MemberDescription& each) { return holdsAnything(*child, each); });
    };
    const QVector<const ITallyObject*> children = member.children(record);
    return !member.texts(record).join(QString()).isEmpty() || std::any_of(children.begin(), children.end(), isHolding);
}

/// The members, behind the path to their record, that hold something which is not taken over.
QStringList leftOut(const ITallyObject& record, const RecordDescription& description, const QStringList& taken,
                    const QString& path)
{
    QStringList left;
    for (const MemberDescription& member : description.members) {
        const QString name = path + member.name, below = name + QLatin1Char('/');
        if (taken.contains(name) || !holdsAnything(record, member))
            continue;
        if (std::none_of(taken.begin(), taken.end(), [&](const QString& each) { return each.startsWith(below); }))
            left += name;
        else
            for (const ITallyObject* child : member.children(record))
                left += leftOut(*child, member.record(), taken, below);
    }
    return left;
}

/// The same of a whole record, of which lists of members are taken over.
template <class R> QStringList leftOut(const R& record, const Taken& taken)
{
    QStringList names;
    for (const char* members : taken)
        names += kernel::splitNames(members);
    return leftOut(record, kernel::Record<R>::description(), names, QString());
}

/// Throws if the store that takes the entry could not be saved then.
void demandWritable(const FrequencyStoreEntry& entry)
{
    if (const QVector<Fault> faults = entry.FindFaults(); !faults.isEmpty())
        throw TallyException(faults.first());
    for (const WrittenForm form : {WrittenForm::Xml, WrittenForm::Tagged})
        if (const QString uncarried = entry.FindUncarried(form); !uncarried.isNull())
            throw OutOfRangeException(uncarried);
}

static_assert(DetectionResultList::identifiersOfUsage == FrequencyStoreList::identifiersOfUsage
                  && DetectionResultList::identifiersOfUsage == FrequencyStoreEntry::identifiersOfUsage,
              "a usage means the same in all of them");

/// Takes over what the list itself tells; false if the store declines the heading entry.
bool appendHeading(const DetectionResultList& results, FrequencyStoreList& store)
{
    store.SetUsage(static_cast<FrequencyStoreList::Usage>(results.GetUsage()));
    FrequencyStoreEntry heading;
    heading.InitChoice(FrequencyStoreEntry::ChoiceFrequencyStoreEntry::ShortTime_Settings);
    heading.SetUsage(static_cast<FrequencyStoreEntry::Usage>(results.GetUsage()));
    heading.SetComment(results.GetComment());
    heading.SetID(results.GetID());
    heading.SetType(results.GetType());
    try {
        store.AppendFrequencyStoreEntry(heading);
        return true;
    } catch (const TallyException& failure) {
        trace(QStringLiteral("DetectionResultHelper::Init ") + failure.GetMessage());
        return false;
    }
}

void appendHeading(const DetectionResultList& results, FrequencyStoreList& store, ConversionReport& report)
{
    const bool isTaken = appendHeading(results, store);
    report.entries += isTaken;
    report.heading = leftOut(results, Taken{"Usage, DetectionResult", isTaken ? "Comment, ID, Type" : ""});
}

void appendResult(const DetectionResult& result, int index, FrequencyStoreList& store, ConversionReport& report)
{
    try {
        const Draft draft = draftOf(result);
        if (store.GetValidate())
            demandWritable(draft.entry);
        store.AppendFrequencyStoreEntry(draft.entry);
        ++report.entries;
        if (const QStringList members = leftOut(result, draft.taken); !members.isEmpty())
            report.reduced.append({index, result.GetID(), members});
    } catch (const TallyException& failure) {
        const RefusedResult refused{index, result.GetID(), failure.GetMessage()};
        if (report.badResults == BadResults::AreSkipped) {
            report.refused.append(refused);
            return;
        }
        report.failed = refused;
        throw;
    }
}

} // namespace

DetectionResultHelper::DetectionResultHelper(DetectionResultList& results, FrequencyStoreList& store)
    : m_results(results), m_store(store)
{
    appendHeading(readable(m_results), m_store);
    const QVector<DetectionResult> list = m_results.GetDetectionResult();
    for (const DetectionResult& result : list)
        m_store.AppendFrequencyStoreEntry(draftOf(readable(result)).entry);
}

DetectionResultHelper::DetectionResultHelper(DetectionResultHelper const&) = default;
DetectionResultHelper::~DetectionResultHelper() = default;

QString DetectionResultHelper::GetCSVString() const
{
    ExportReport report;
    return GetCSVString(report);
}

QString DetectionResultHelper::GetCSVString(ExportReport& report) const
{
    return csv::write(csv::formatOfResults(), readable(m_results).GetDetectionResult(), report);
}

ConversionReport DetectionResultHelper::Convert(DetectionResultList const& results, FrequencyStoreList& store,
                                                BadResults badResults)
{
    return reported<ConversionReport>([&](ConversionReport& report) {
        report.badResults = badResults;
        appendHeading(readable(results), store, report);
        const QVector<DetectionResult>& list = results.GetDetectionResult();
        for (int i = 0; i < list.size(); ++i)
            appendResult(readable(list[i]), i, store, report);
    });
}

} // namespace Velmara
