#include "frequencystore/detectionresulthelper.h"

#include "base/exceptions.h"
#include "frequencystore/trace.h"

#include <algorithm>
#include <iterator>

using namespace TALLYFORM;

namespace Velmara {

namespace {

using Mode = Demodulator_Settings::Mode;

/// What becomes of a result by its modulation text: the mode of the demodulator, and what its settings take over.
struct Modulation
{
    QStringList texts;
    Mode mode;
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
    morse.SetSpeed(result.GetBaudrate().GetValue());
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
        {kernel::splitNames("ASK2"), Mode::ASK, fillASK},
        {kernel::splitNames("MSK, FSK2, FSK4"), Mode::FSK, fillFSK},
        {kernel::splitNames("PSK2A, PSK2B, PSK4A, PSK4B, PSK8A, PSK8B"), Mode::PSK, fillPSK},
        {kernel::splitNames("MORSE"), Mode::Morse, fillMorse},
        {kernel::splitNames("MPSK2A, MPSK2B"), Mode::MPSK, fillMPSK<MPSK::McPSK2>},
        {kernel::splitNames("MPSK4A, MPSK4B"), Mode::MPSK, fillMPSK<MPSK::McPSK4>},
        {kernel::splitNames("MFSK2"), Mode::MFSK, fillMFSK},
    };
    static const Modulation other{{}, Mode::TransmissionSystem, fillTransmissionSystem};
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

void locate(FrequencyStoreEntry& entry, const DetectionResult& result)
{
    if (!result.IsLongitudeSet() || !result.IsLatitudeSet())
        return;
    LocationResult located;
    located.SetTimeStamp(result.GetStartTime());
    located.SetDFBandwidth(result.GetBandwidth().GetValue());
    located.GetLocation().SetLongitude(result.GetLongitude());
    located.GetLocation().SetLatitude(result.GetLatitude());
    located.GetDetail().SetFrequency(result.GetFrequency());
    located.AppendStation(stationOf(result));
    FrequencyStoreEntryLocation location;
    location.AppendLocationResult(located);
    entry.SetLocation(location);
}

void traceFailure(const QString& message, int line)
{
    trace(message, QStringLiteral("frequencystore/detectionresulthelper"), line);
}

} // namespace

DetectionResultHelper::DetectionResultHelper(DetectionResultList& results, FrequencyStoreList& store)
    : m_results(results), m_store(store)
{
    Init();
}

DetectionResultHelper::DetectionResultHelper(DetectionResultHelper const&) = default;
DetectionResultHelper::~DetectionResultHelper() = default;

void DetectionResultHelper::Init()
{
    m_store.SetUsage(static_cast<FrequencyStoreList::Usage>(m_results.GetUsage()));
    InitHeading();
    const QVector<DetectionResult> results = m_results.GetDetectionResult();
    for (const DetectionResult& result : results) {
        if (result.IsModulationSet())
            InitWithDemodulator(result);
        else
            InitWithoutDemodulator(result);
    }
}

void DetectionResultHelper::InitHeading()
{
    FrequencyStoreEntry heading;
    heading.InitChoice(FrequencyStoreEntry::ChoiceFrequencyStoreEntry::ShortTime_Settings);
    heading.SetUsage(static_cast<FrequencyStoreEntry::Usage>(m_results.GetUsage()));
    heading.SetComment(m_results.GetComment());
    heading.SetID(m_results.GetID());
    heading.SetType(m_results.GetType());
    try {
        m_store.AppendFrequencyStoreEntry(heading);
    } catch (const TallyException& failure) {
        traceFailure(QStringLiteral("DetectionResultHelper::Init ") + failure.GetMessage(), __LINE__);
    }
}

void DetectionResultHelper::InitTuning(FrequencyStoreEntry& entry, DetectionResult const& result,
                                       QString const& failurePrefix)
{
    entry.SetType(result.GetType().isEmpty() ? QStringLiteral("a") : result.GetType());
    FFM_Settings& tuning = entry.GetFFM_Settings();
    if (result.IsFFMSettingsWithAnalogDemodSet()) {
        try {
            tuning.SetXmlString(result.GetFFMSettingsWithAnalogDemod(), false);
        } catch (const TallyException& failure) {
            traceFailure(failurePrefix + failure.GetMessage(), __LINE__);
            tuning.Reset();
        }
    }
    tuning.SetFrequency(result.GetFrequency());
    tuning.GetIFBandwidth().SetValue(result.GetBandwidth().GetValue());
    tuning.SetLevel(result.GetLevel());
    entry.GetDetection().SetStartTime(result.GetStartTime());
    if (result.IsStopTimeSet())
        entry.GetDetection().SetStopTime(result.GetStopTime());
}

void DetectionResultHelper::InitCommonSettings(FrequencyStoreEntry& entry, DetectionResult const& result)
{
    InitTuning(entry, result, QString());
    entry.GetResultList().SetConfidence(result.GetConfidence());
    locate(entry, result);
    Demodulator_Settings& settings = entry.GetDemodulator_Settings();
    settings.SetFrequencyOffset(0.0);
    const QStringList decoders = result.GetDecoder().split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (!decoders.isEmpty())
        settings.GetDecoder().SetValue(decoders.toVector());
    if (!result.GetDemodulatorRawParameters().isEmpty())
        settings.SetParameters(result.GetDemodulatorRawParameters());
}

void DetectionResultHelper::InitWithDemodulator(DetectionResult const& result)
{
    const Modulation& modulation = modulationOf(result.GetModulation());
    FrequencyStoreEntry entry;
    InitCommonSettings(entry, result);
    Demodulator_Settings& settings = entry.GetDemodulator_Settings();
    settings.SetMode(modulation.mode);
    modulation.fill(settings, result);
    m_store.AppendFrequencyStoreEntry(entry);
}

void DetectionResultHelper::InitWithoutDemodulator(DetectionResult const& result)
{
    FrequencyStoreEntry entry;
    entry.SetID(result.GetID());
    InitTuning(entry, result, QStringLiteral("InitWithoutDemodulator : "));
    locate(entry, result);
    m_store.AppendFrequencyStoreEntry(entry);
}

} // namespace Velmara
