/// Stops with records that show everything that the debugger's printers tell apart.

#include "frequencystore/frequencystore.h"

using namespace Velmara;

namespace {

FrequencyStoreEntry entry()
{
    FrequencyStoreEntry e;
    e.SetUsage(FrequencyStoreEntry::Usage::Target);
    e.SetType(QStringLiteral("air\"band\" \u00fc \U0001F4E1"));
    e.SetComment(QStringLiteral(""));
    e.GetShortTime_Settings().SetHopsPerSecond(200);
    e.GetFFM_Settings().GetFrequency().SetValue(121.5e6);
    e.GetFFM_Settings().SetIFStepAuto(true);
    e.GetFFM_Settings().SetFFPDelay(1);
    e.SetAdditionalInfo(QString(250, QLatin1Char('x')));
    return e;
}

Targetareas areas()
{
    Coordinate place;
    place.SetLongitude(11.5);
    place.SetLatitude(-48.25);
    Area area;
    area.SetName(QStringLiteral("north"));
    area.SetCoordinate({place, place});
    Targetareas areas;
    areas.SetValidate(false);
    areas.SetArea({area, Area()});
    return areas;
}

Demodulator_Settings demodulator()
{
    Demodulator_Settings settings;
    settings.GetChannelSelection().SetValue({});
    settings.GetMT_Settings().GetDetail().GetToneSpacing().SetValue({1.5, -2});
    settings.GetDecoder().SetValue({QStringLiteral("a"), QStringLiteral("b")});
    return settings;
}

FrequencyStoreList listAt(const QDateTime& time)
{
    FrequencyStoreList list;
    list.SetTimstamp(time);
    return list;
}

} // namespace

Q_NEVER_INLINE void stop(const TALLYFORM::ITallyObject& record) { asm volatile("" ::"r"(&record) : "memory"); }

int main()
{
    const qint64 moment = 1771272000250;
    FrequencyStoreEntry none;
    FrequencyStoreEntry some = entry();
    Targetareas tree = areas();
    Demodulator_Settings lists = demodulator();
    const FrequencyStoreList times[] = {
        listAt(QDateTime::fromMSecsSinceEpoch(moment, Qt::UTC)),
        listAt(QDateTime::fromMSecsSinceEpoch(moment, Qt::OffsetFromUTC, 5400)),
        listAt(QDateTime(QDate(2026, 2, 16), QTime(20, 0), Qt::LocalTime)),
        listAt(QDateTime(QDate(40000, 1, 1), QTime(0, 0), Qt::UTC)),
    };
    stop(some);
    return none.IsInitialized() || tree.GetArea().isEmpty() || !lists.AnyData() || !times[0].IsTimstampSet();
}
