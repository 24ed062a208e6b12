#pragma once

/// The parts of an entry that CSV knows, for filling and for looking at. A part may have no data, and reading a value
/// of it would make some: see readable().

#include "frequencystore/readable.h"
#include "frequencystore/records/frequencystoreentry.h"

namespace Velmara {

/// Defines both ways to the PART of type T that HOLDER(entry) has.
#define VELMARA_PART(T, NAME, HOLDER, PART)                                                                            \
    inline T& NAME(FrequencyStoreEntry& entry) { return HOLDER(entry).Get##PART(); }                                   \
    inline const T& NAME(const FrequencyStoreEntry& entry) { return readable(HOLDER(entry)).Get##PART(); }

VELMARA_PART(FFM_Settings, settingsOf, , FFM_Settings)
VELMARA_PART(FFM_SettingsDetail, detailOf, settingsOf, Detail)
VELMARA_PART(DF_Settings, directionOf, , DF_Settings)
VELMARA_PART(DF_SettingsDetail, thresholdsOf, directionOf, Detail)
VELMARA_PART(Profile_Data, profileOf, , Profile_Data)
VELMARA_PART(ResultList, resultOf, , ResultList)
VELMARA_PART(Detection, detectionOf, , Detection)

#undef VELMARA_PART

} // namespace Velmara
