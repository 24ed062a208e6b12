#pragma once

#include "frequencystore/records/detectionresult.h"
#include "frequencystore/records/frequencystoreentry.h"
#include "frequencystore/records/targetareas.h"

#include <QCoreApplication>

namespace Velmara {

/// A named list of entries, with a usage, a time stamp and target areas.
class VELMARA_EXPORT FrequencyStoreList : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FrequencyStoreList)
    VELMARA_RECORD(FrequencyStoreList, "FrequencyStoreList", 0x2CD4FD4D)
    VELMARA_VERSION("1.2")

    VELMARA_VALUE(QString,             Name,                0x8C9FBCA8)
    VELMARA_ENUM (Usage, 0x06C96BAA, optional(),
                  Undefined, Resultlist, NotOfInterest, Target, WellKnown, Known, Matching, Notepad, MemoryScan,
                  Suppress)
    VELMARA_TIME (Timstamp, 0xE1FE7EC6)
    VELMARA_CHILD(Targetareas,         Targetareas,         0x2A13B65D)
    VELMARA_LIST (FrequencyStoreEntry, FrequencyStoreEntry, 0x81B08290, mandatory())
};
VELMARA_EXTERN_RECORD(FrequencyStoreList)

/// The envelope that tells what kind of list it carries. Type and content are not tied to each other.
class VELMARA_EXPORT FrequencyStoreListHelper : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FrequencyStoreListHelper)
    VELMARA_RECORD(FrequencyStoreListHelper, "FrequencyStoreListHelper", 0x265C2A18)

    VELMARA_ENUM (ListType, 0xC2733376, mandatory(),
                  NotePad, Suppress, TargetList, DataResults, NOIFrequencies, DetectionConventional, MemoryScan,
                  DetectionResult, TransducerList)
    VELMARA_CHILD(FrequencyStoreList,  FrequencyStoreList,  0x2B7FA58C)
    VELMARA_CHILD(DetectionResultList, DetectionResultList, 0x09AA75BF)
};
VELMARA_EXTERN_RECORD(FrequencyStoreListHelper)

} // namespace Velmara
