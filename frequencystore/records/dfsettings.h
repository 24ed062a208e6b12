#pragma once

#include "frequencystore/records/boundedvalues.h"

#include <QCoreApplication>

namespace Velmara {

/// Thresholds and elevation limits of a direction finder.
class VELMARA_EXPORT DF_SettingsDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(DF_SettingsDetail, "Detail", 0x699367AB)

    VELMARA_VALUE(int,    QualityThreshold, 0xA6BB938B, mandatory())
    VELMARA_VALUE(double, LevelThreshold,   0x0D5933E0, mandatory())
    VELMARA_VALUE(int,    ElevationMin,     0xC0497AE1)
    VELMARA_VALUE(int,    ElevationMax,     0x4450AB68)
};
VELMARA_EXTERN_RECORD(DF_SettingsDetail)

/// How a direction finder is to work on an entry.
class VELMARA_EXPORT DF_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::DF_Settings)
    VELMARA_RECORD(DF_Settings, "DF_Settings", 0xE629902F)
    VELMARA_VERSION("1.0")

    VELMARA_CHILD(Bandwidth,         Bandwidth,               0xA4B08CAA, mandatory())
    VELMARA_ENUM (DFMode, 0x218BD08F, mandatory(), Cont, Norm, Gate)
    VELMARA_VALUE(double,            DFStep,                  0xCA4DC094)
    VELMARA_VALUE(double,            FreqSpan,                0x07ACBD4A)
    VELMARA_VALUE(double,            Averaging,               0x2D44EDAD, mandatory())
    VELMARA_ENUM (Workflow, 0xCF82C683, named("Continuous|Single shot"), Continuous, SingleShot)
    VELMARA_ENUM (LocateType, 0xA050B315, optional(), Auto, Online, History)
    VELMARA_ENUM (Activity, 0x81DF3D97, named("No DF/Locate|DF allowed|Locate allowed"),
                  NoDFLocate, DFAllowed, LocateAllowed)
    VELMARA_ENUM (ActivityTrigger, 0xE7331CA2, named("Frequency change|User request"), FrequencyChange, UserRequest)
    VELMARA_ENUM (Method, 0x06C16B0F, optional(), AUTO, WATSONWATT, CORRELATION, SUPERRESOLUTION, VECTORMATCHING)
    VELMARA_ENUM (Selectivity, 0xE6A92623, optional(), AUTO, NORMAL, NARROW, SHARP)
    VELMARA_VALUE(double,            FrequencyOffset,         0xE80F6123)
    VELMARA_VALUE(QString,           ApplicationMode,         0xAC296443)
    VELMARA_VALUE(QString,           ICMMode,                 0xC8956039)
    VELMARA_VALUE(QString,           MonitoredVTCFrequencies, 0x401F18E1)
    VELMARA_CHILD(DF_SettingsDetail, Detail,                  0x01FE391D)
};
VELMARA_EXTERN_RECORD(DF_Settings)

} // namespace Velmara
