#include "bench/workloads.h"

#include <random>

namespace Velmara::bench {

namespace {

/// Even numbers in a range, from a generator that gives the same ones everywhere.
class Dice
{
public:
    int below(int end) { return int(m_random() % quint32(end)); }
    double within(double low, double high, double step) { return low + step * below(int((high - low) / step) + 1); }
    template <class T, int n> const T& of(const T (&choice)[n]) { return choice[below(n)]; }

private:
    std::mt19937 m_random{20261122};
};

QString text(const char* latin) { return QString::fromLatin1(latin); }
QString numbered(const char* prefix, int number) { return text(prefix) + QString::number(number); }

QDateTime timeOf(int seconds) { return QDateTime({2026, 11, 22}, {6, 0, 0, 250}, Qt::UTC).addSecs(seconds); }

struct Band
{
    const char* name;
    const char* antenna;
    double first;
    double spacing;
    double bandwidth;
    FFM_Settings::AnalogDemod demodulation;
};

constexpr Band bands[] = {
    {"airband", "VHF DF array", 118e6, 8333.33, 8300, FFM_Settings::AnalogDemod::AM},
    {"marine", "VHF DF array", 156.025e6, 25e3, 16e3, FFM_Settings::AnalogDemod::FM},
    {"shortwave", "HF loop", 2.1825e6, 3e3, 3100, FFM_Settings::AnalogDemod::USB},
    {"land mobile", "UHF discone", 410.0125e6, 12.5e3, 12.5e3, FFM_Settings::AnalogDemod::FM},
};

const char* const remarks[] = {"Tower", "Approach", "Port operations", "Distress, calling", "Harbour pilots", "Relay"};

void fillDetail(FFM_SettingsDetail& detail, int channel, Dice& dice)
{
    detail.SetAttenuation(dice.below(4) ? FFM_SettingsDetail::Attenuation::OFF : FFM_SettingsDetail::Attenuation::AUTO);
    detail.SetAFC(FFM_SettingsDetail::AFC(dice.below(2)));
    detail.SetActive(dice.below(8) != 0);
    detail.SetAlarm(dice.below(20) == 0);
    detail.SetChannelNo(channel);
    detail.SetSquelchState(FFM_SettingsDetail::SquelchState::ON);
    detail.SetSquelchValue(dice.below(40));
}

void fillTuning(FFM_Settings& tuning, const Band& band, int channel, Dice& dice)
{
    tuning.GetFrequency().SetValue(band.first + band.spacing * dice.below(800));
    tuning.GetIFBandwidth().SetValue(band.bandwidth);
    tuning.SetIFStep(band.bandwidth * dice.below(5));
    tuning.SetAnalogDemod(band.demodulation);
    tuning.SetLevel(dice.within(-110, -30, 0.25));
    fillDetail(tuning.GetDetail(), channel, dice);
}

void fillDirection(DF_Settings& direction, const Band& band, Dice& dice)
{
    direction.GetBandwidth().SetValue(band.bandwidth);
    direction.SetDFMode(DF_Settings::DFMode(dice.below(3)));
    direction.SetDFStep(dice.within(100, 2500, 100));
    direction.SetAveraging(dice.within(0.25, 5, 0.25));
    direction.GetDetail().SetQualityThreshold(dice.below(100));
    direction.GetDetail().SetLevelThreshold(dice.within(0, 30, 0.5));
}

FrequencyStoreEntry channel(int number, Dice& dice)
{
    const Band& band = dice.of(bands);
    FrequencyStoreEntry entry;
    entry.SetType(text(band.name));
    entry.SetAntenna(text(band.antenna));
    entry.SetComment(numbered(dice.of(remarks), number).insert(0, text("Channel: ")));
    fillTuning(entry.GetFFM_Settings(), band, number, dice);
    fillDirection(entry.GetDF_Settings(), band, dice);
    return entry;
}

Area polygon(int number, int points, Dice& dice)
{
    Area area;
    area.SetName(numbered("Area ", number));
    for (int i = 0; i < points; ++i) {
        Coordinate point;
        point.SetLongitude(dice.within(5, 15, 0.000001));
        point.SetLatitude(dice.within(47, 55, 0.000001));
        area.AppendCoordinate(point);
    }
    return area;
}

DetectionResult detectionResult(int number, Dice& dice)
{
    static const char* const modulations[] = {"FSK2", "PSK8A", "MORSE", "MFSK2", "ASK2", "OFDM"};
    DetectionResult result;
    result.SetID(numbered("d-", number));
    result.SetType(text("teleprinter"));
    result.GetFrequency().SetValue(dice.within(3e6, 30e6, 250));
    result.GetBandwidth().SetValue(dice.within(250, 3000, 250));
    result.SetLevel(dice.within(-110, -30, 0.25));
    result.SetStartTime(timeOf(number));
    result.SetStopTime(timeOf(number + 1 + dice.below(600)));
    result.SetConfidence(dice.below(101));
    result.SetModulation(text(dice.of(modulations)));
    result.GetBaudrate().SetValue(dice.within(25, 2400, 25));
    result.GetShift().SetValue(dice.within(85, 850, 85));
    result.SetDecoder(text("Baudot,ASCII"));
    result.SetAzimuth(dice.within(0, 359.75, 0.25));
    result.SetDFQuality(dice.below(100));
    result.SetLongitude(dice.within(5, 15, 0.000001));
    result.SetLatitude(dice.within(47, 55, 0.000001));
    return result;
}

Emission emission(int bursts)
{
    Emission emission;
    emission.SetAzimuth(14.25);
    emission.SetAzimuthVar(0.5);
    emission.SetElevation(3);
    emission.SetElevationVar(0.25);
    emission.SetLevel(-71.5);
    emission.SetStartTime(timeOf(0));
    emission.SetStopTime(timeOf(1));
    for (int i = 0; i < bursts; ++i) {
        Burst burst;
        burst.GetFrequency().SetValue(43e6 + 25e3 * i);
        burst.GetBandwidth().SetValue(25e3);
        burst.SetQuality(90);
        burst.SetAzimuth(14);
        burst.SetAzimuthVar(0.5);
        burst.SetLevel(-70);
        burst.SetStartTime(timeOf(0));
        burst.SetStopTime(timeOf(1));
        emission.GetBursts().AppendBurst(burst);
    }
    emission.GetBursts().SetCount(bursts);
    return emission;
}

Station station(int number)
{
    Station station;
    station.SetStationID(number);
    station.SetOWNStation(number == 1);
    station.SetTimeStamp(timeOf(number));
    station.SetLongitude(10.117 + number);
    station.SetLatitude(53.872);
    station.SetName(numbered("Station ", number));
    station.SetPositionSource(text("GPS"));
    DFData& data = station.GetDFData();
    data.SetQuality(87);
    data.GetFrequency().SetValue(43e6);
    data.SetAzimuth(14.25);
    data.SetLevel(-71.5);
    data.GetDetail().SetAntenna(text("VHF DF array"));
    data.GetDetail().SetElevation(3);
    data.GetDetail().SetCompass(180);
    data.GetPlot_Info().SetKVT_CL_ID(number);
    data.GetPlot_Info().GetEmissions().SetCount(2);
    data.GetPlot_Info().GetEmissions().AppendEmission(emission(3));
    data.GetPlot_Info().GetEmissions().AppendEmission(emission(1));
    return station;
}

void fillPlot(Plot& plot)
{
    plot.SetName(text("hopper"));
    plot.SetSignal_ID(7);
    plot.SetEmitter_ID(3);
    plot.GetBandwidth().SetValue(25e3);
    plot.SetType(Plot::Type::Hopper);
    plot.GetEllipse().SetMinRadius(250);
    plot.GetEllipse().SetMaxRadius(800);
    plot.GetEllipse().SetRotation(35);
    plot.SetStartTime(timeOf(0));
    plot.SetStopTime(timeOf(90));
    for (int i = 0; i < 8; ++i) {
        Value value;
        value.GetFrequency().SetValue(43e6 + 25e3 * i);
        value.SetTimeStamp(timeOf(i));
        plot.GetFrequencyList().AppendValue(value);
    }
    plot.GetDetail().SetComment(text("seen twice"));
    plot.GetDetail().SetAnalogDemod(PlotDetail::AnalogDemod::FM);
}

LocationResult locationResult()
{
    LocationResult result;
    result.SetTimeStamp(timeOf(60));
    result.SetDFBandwidth(25e3);
    result.GetLocation().SetLongitude(10.25);
    result.GetLocation().SetLatitude(53.75);
    result.GetDetail().GetFrequency().SetValue(43e6);
    fillPlot(result.GetPlot());
    result.AppendStation(station(1));
    return result;
}

void fillProfile(Profile_Data& profile)
{
    profile.SetSignalClass(text("voice"));
    profile.SetProfileID(text("p-17"));
    profile.SetTransmissionSystem(text("analogue"));
    profile.SetProfileName(text("Harbour"));
    profile.SetLocalObjectName(text("Pilot station"));
    profile.SetPriority(text("high"));
    profile.SetThreatClass(text("none"));
    PointOfInterest point;
    point.SetDisplayName(text("Pier 3"));
    point.GetLocation().SetLongitude(9.98);
    point.GetLocation().SetLatitude(53.54);
    point.SetRadius(500);
    profile.AppendPointOfInterest(point);
}

void fillDemodulator(Demodulator_Settings& settings)
{
    settings.SetMode(Demodulator_Settings::Mode::FSK);
    settings.SetFrequencyOffset(0.5);
    settings.GetDecoder().AppendValue(text("Baudot"));
    settings.GetDecoder().AppendValue(text("ASCII"));
    settings.GetChannelSelection().AppendValue(text("left"));
    settings.SetAlphabet(text("ITA2"));
    settings.SetParameters(text("inverted"));
    settings.GetFSK_Settings().SetModType(FSK_Settings::ModType::FSK2);
    settings.GetFSK_Settings().GetBaudrate().SetValue(50);
    Shift shift;
    shift.SetValue(450);
    settings.GetFSK_Settings().AppendShift(shift);
}

void fillShapes(ShapeDetectorSettings& settings)
{
    GenericShape generic;
    generic.SetName(text("chirp"));
    generic.SetConfidence(80);
    settings.AppendGenericShape(generic);
    Shape shape;
    shape.SetName(text("comb"));
    shape.SetConfidence(60);
    settings.AppendShape(shape);
}

void fillRest(FrequencyStoreEntry& entry)
{
    entry.SetUsage(FrequencyStoreEntry::Usage::Target);
    entry.SetID(text("e-1"));
    entry.GetDetection().SetStartTime(timeOf(0));
    entry.GetDetection().SetStopTime(timeOf(90));
    entry.GetResultList().SetReason(text("matched"));
    entry.GetResultList().SetResultTime(timeOf(91));
    entry.GetResultList().SetConfidence(93);
    entry.SetAdditionalInfo(text("from the morning watch"));
    entry.GetBlankingRange().SetStartFrequency(42.9e6);
    entry.GetBlankingRange().SetStopFrequency(43.1e6);
}

template <class Bounded> void change(Bounded& bounded) { bounded.SetValue(bounded.GetValue() + 1); }

void change(Station& station)
{
    for (Emission& emission : station.GetDFData().GetPlot_Info().GetEmissions().GetEmission()) {
        for (Burst& burst : emission.GetBursts().GetBurst()) {
            change(burst.GetFrequency());
            change(burst.GetBandwidth());
        }
    }
}

void change(FrequencyStoreEntryLocation& location)
{
    for (Station& station : location.GetStation())
        change(station);
    for (LocationResult& result : location.GetLocationResult()) {
        for (Value& value : result.GetPlot().GetFrequencyList().GetValue())
            change(value.GetFrequency());
        for (Station& station : result.GetStation())
            change(station);
    }
}

} // namespace

FrequencyStoreList memoryScan(int entries)
{
    Dice dice;
    FrequencyStoreList list;
    list.SetName(text("Memory scan"));
    list.SetUsage(FrequencyStoreList::Usage::MemoryScan);
    list.SetTimstamp(timeOf(0));
    for (int i = 0; i < entries; ++i)
        list.AppendFrequencyStoreEntry(channel(i + 1, dice));
    return list;
}

FrequencyStoreList targetAreas(int areas, int points)
{
    Dice dice;
    FrequencyStoreList list = memoryScan(1);
    for (int i = 0; i < areas; ++i)
        list.GetTargetareas().AppendArea(polygon(i + 1, points, dice));
    return list;
}

DetectionResultList detectionResults(int results)
{
    Dice dice;
    DetectionResultList list;
    list.SetUsage(DetectionResultList::Usage::Resultlist);
    list.SetComment(text("morning watch on HF"));
    list.SetID(text("run-42"));
    list.SetType(text("detection"));
    for (int i = 0; i < results; ++i)
        list.AppendDetectionResult(detectionResult(i + 1, dice));
    return list;
}

FrequencyStoreEntry fullEntry()
{
    Dice dice;
    FrequencyStoreEntry entry = channel(1, dice);
    entry.GetFFM_Settings().GetPScanSettings().SetStartFrequency(30e6);
    entry.GetFFM_Settings().GetPScanSettings().SetStopFrequency(88e6);
    fillProfile(entry.GetProfile_Data());
    fillDemodulator(entry.GetDemodulator_Settings());
    entry.GetLocation().AppendStation(station(2));
    entry.GetLocation().AppendLocationResult(locationResult());
    entry.AppendStation(station(3));
    fillShapes(entry.GetShapeDetectorSettings());
    fillRest(entry);
    return entry;
}

void touch(FrequencyStoreEntry& entry)
{
    change(entry.GetFFM_Settings().GetFrequency());
    change(entry.GetFFM_Settings().GetIFBandwidth());
    entry.GetFFM_Settings().GetDetail().SetAlarm(true);
    change(entry.GetDF_Settings().GetBandwidth());
    entry.GetDF_Settings().GetDetail().SetQualityThreshold(1);
    if (entry.IsLocationSet())
        change(entry.GetLocation());
    if (entry.IsStationSet())
        for (Station& station : entry.GetStation())
            change(station);
}

void touch(FrequencyStoreList& list)
{
    for (FrequencyStoreEntry& entry : list.GetFrequencyStoreEntry())
        touch(entry);
    if (!list.IsTargetareasSet())
        return;
    for (Area& area : list.GetTargetareas().GetArea())
        for (Coordinate& point : area.GetCoordinate())
            point.SetLongitude(0);
}

void touch(DetectionResultList& list)
{
    for (DetectionResult& result : list.GetDetectionResult()) {
        change(result.GetFrequency());
        change(result.GetBandwidth());
        change(result.GetBaudrate());
        change(result.GetShift());
    }
}

} // namespace Velmara::bench
