#include "bench/workloads.h"

#include "tests/randomfiller.h"

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
    RandomFiller filler(1);
    filler.setEverything().setTexts({text("GPS"), text("Pilot station"), text("from the morning watch")});
    FrequencyStoreEntry entry;
    do {
        entry = filler.make<FrequencyStoreEntry>();
    } while (!entry.IsFFM_SettingsSet());
    return entry;
}

} // namespace Velmara::bench
