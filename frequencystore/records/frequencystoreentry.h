#pragma once

#include "frequencystore/records/demodulatorsettings.h"
#include "frequencystore/records/dfsettings.h"
#include "frequencystore/records/ffmsettings.h"
#include "frequencystore/records/locationresult.h"
#include "frequencystore/records/profiledata.h"
#include "frequencystore/records/shapedetectorsettings.h"
#include "frequencystore/records/shorttimesettings.h"
#include "frequencystore/records/station.h"

#include <QCoreApplication>

namespace Velmara {

/// The frequency range that an entry blanks.
class VELMARA_EXPORT BlankingRange : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(BlankingRange, "BlankingRange", 0x07A002C6)

    VELMARA_VALUE(double, StartFrequency, 0xC83EDC48, mandatory())
    VELMARA_VALUE(double, StopFrequency,  0xC043211E, mandatory())
};
VELMARA_EXTERN_RECORD(BlankingRange)

/// The time span of a detection.
class VELMARA_EXPORT Detection : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Detection, "Detection", 0x61D156AB)

    VELMARA_TIME(StartTime, 0x8E59982D, mandatory())
    VELMARA_TIME(StopTime,  0x27B55067)
};
VELMARA_EXTERN_RECORD(Detection)

/// A result with its reason, time and confidence.
class VELMARA_EXPORT ResultList : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ResultList, "ResultList", 0x01A8DB53)

    VELMARA_VALUE(QString, Reason,     0x4072E6FE)
    VELMARA_TIME (ResultTime, 0xAA46F36B)
    VELMARA_VALUE(int,     Confidence, 0xCCD7C4A3, mandatory())
};
VELMARA_EXTERN_RECORD(ResultList)

/// One line of a frequency store: fixed-frequency or short-time settings, and what goes with them.
class VELMARA_EXPORT FrequencyStoreEntry : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FrequencyStoreEntry)
    VELMARA_RECORD(FrequencyStoreEntry, "FrequencyStoreEntry", 0x874D44FC)
    VELMARA_VERSION("2.0")
    VELMARA_CHOICE(ChoiceFrequencyStoreEntry, mandatory(), FFM_Settings, ShortTime_Settings)

    VELMARA_ENUM       (Usage, 0x06C96BAA, optional(),
                        Undefined, Resultlist, NotOfInterest, Target, WellKnown, Known, Matching, Notepad, MemoryScan,
                        Suppress)
    VELMARA_VALUE      (QString,                     ID,                    0xC59FE1C0)
    VELMARA_VALUE      (QString,                     Type,                  0x0846C2A1, mandatory())
    VELMARA_VALUE      (QString,                     Antenna,               0xE015130A)
    VELMARA_VALUE      (QString,                     Comment,               0x0DBBC5A3)
    VELMARA_ALTERNATIVE(CHILD, FFM_Settings,         FFM_Settings,          0x6AF0189E)
    VELMARA_ALTERNATIVE(CHILD, ShortTime_Settings,   ShortTime_Settings,    0xA75869F2)
    VELMARA_CHILD      (Profile_Data,                Profile_Data,          0x2366E7F8)
    VELMARA_CHILD      (Demodulator_Settings,        Demodulator_Settings,  0x6652DD14)
    VELMARA_CHILD      (FrequencyStoreEntryLocation, Location,              0xA070FD38)
    VELMARA_LIST       (Station,                     Station,               0xEDB9086F)
    VELMARA_CHILD      (Detection,                   Detection,             0x8AD73365)
    VELMARA_CHILD      (ResultList,                  ResultList,            0x41750E17)
    VELMARA_CHILD      (DF_Settings,                 DF_Settings,           0x61AC6DFF)
    VELMARA_CHILD      (ShapeDetectorSettings,       ShapeDetectorSettings, 0x079205C9)
    VELMARA_VALUE      (QString,                     AdditionalInfo,        0x00F249E3)
    VELMARA_CHILD      (BlankingRange,               BlankingRange,         0x04B7BDE6)
};
VELMARA_EXTERN_RECORD(FrequencyStoreEntry)

} // namespace Velmara
