#pragma once

#include "frequencystore/records/boundedvalues.h"

#include <QCoreApplication>

namespace Velmara {

/// One signal that a detection chain found.
class VELMARA_EXPORT DetectionResult : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(DetectionResult, "DetectionResult", 0x2F36977D)

    VELMARA_VALUE(QString,   ID,                         0xC59FE1C0, mandatory())
    VELMARA_VALUE(QString,   Type,                       0x0846C2A1, mandatory())
    VELMARA_CHILD(Frequency, Frequency,                  0xCF452ADA, mandatory())
    VELMARA_CHILD(Bandwidth, Bandwidth,                  0xA4B08CAA, mandatory())
    VELMARA_VALUE(double,    Level,                      0xCE3014F1)
    VELMARA_TIME (StartTime, 0x8E59982D)
    VELMARA_TIME (StopTime,  0x27B55067)
    VELMARA_VALUE(int,       Confidence,                 0xCCD7C4A3)
    VELMARA_VALUE(QString,   FFMSettingsWithAnalogDemod, 0x4E62BFEE)
    VELMARA_VALUE(QString,   Modulation,                 0xED7215EF)
    VELMARA_VALUE(QString,   TransmissionSystem,         0xE21EE707)
    VELMARA_VALUE(QString,   DemodulatorRawParameters,   0x6AF3A0FC)
    VELMARA_CHILD(Baudrate,  Baudrate,                   0xA62286A5)
    VELMARA_CHILD(Shift,     Shift,                      0xC92DBEDC)
    VELMARA_VALUE(QString,   Decoder,                    0xAFCAA8C3)
    VELMARA_VALUE(double,    Azimuth,                    0x8E1C3D58)
    VELMARA_VALUE(double,    DFQuality,                  0xE5C3ADA5)
    VELMARA_VALUE(double,    Longitude,                  0x247E7491, within(-180, 180).text(6, 4))
    VELMARA_VALUE(double,    Latitude,                   0xCB2F4B76, within(-90, 90).text(6, 3))
};
VELMARA_EXTERN_RECORD(DetectionResult)

/// The heading and the results of one detection run.
class VELMARA_EXPORT DetectionResultList : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::DetectionResultList)
    VELMARA_RECORD(DetectionResultList, "DetectionResultList", 0x4A821024)

    VELMARA_ENUM (Usage, 0x06C96BAA, mandatory(),
                  Undefined, Resultlist, NotOfInterest, Target, WellKnown, Known, Matching, Notepad, MemoryScan,
                  Suppress)
    VELMARA_VALUE(QString,         Comment,         0x0DBBC5A3, mandatory())
    VELMARA_VALUE(QString,         ID,              0xC59FE1C0, mandatory())
    VELMARA_VALUE(QString,         Type,            0x0846C2A1, mandatory())
    VELMARA_LIST (DetectionResult, DetectionResult, 0x66450982)
};
VELMARA_EXTERN_RECORD(DetectionResultList)

} // namespace Velmara
