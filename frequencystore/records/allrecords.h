#pragma once

#include "frequencystore/records/askfsksettings.h"
#include "frequencystore/records/boundedvalues.h"
#include "frequencystore/records/demodulatorparts.h"
#include "frequencystore/records/demodulatorsettings.h"
#include "frequencystore/records/detectionresult.h"
#include "frequencystore/records/dfdata.h"
#include "frequencystore/records/dfsettings.h"
#include "frequencystore/records/ffmsettings.h"
#include "frequencystore/records/frequencystoreentry.h"
#include "frequencystore/records/frequencystorelist.h"
#include "frequencystore/records/generalsettings.h"
#include "frequencystore/records/locationresult.h"
#include "frequencystore/records/profiledata.h"
#include "frequencystore/records/pskfamilysettings.h"
#include "frequencystore/records/shapedetectorsettings.h"
#include "frequencystore/records/shorttimesettings.h"
#include "frequencystore/records/signalsettings.h"
#include "frequencystore/records/station.h"
#include "frequencystore/records/targetareas.h"

namespace Velmara {

template <class... R> struct RecordTypes {};

/// Every record class, for code that treats them all alike.
using AllRecords = RecordTypes<
    Coordinate, Area, Targetareas, Frequency, Bandwidth, Baudrate, Shift, IFBandwidth, SignalLength,
    FFM_SettingsDetail, PScanSettings, FFM_Settings, HopGridSegment, HopGrid, ShortTime_SettingsRange,
    ShortTime_SettingsDetail, ShortTime_Settings, DF_SettingsDetail, DF_Settings, Ellipse, PointOfInterestLocation,
    PointOfInterest, Profile_Data, GenericShape, Shape, ShapeDetectorSettings, Decoder, ChannelSelection,
    ToneSpacing, ChannelSpacing, VUHF, ASK_SettingsDetail, ASK_Settings, FSK_SettingsDetail, FSK_Settings,
    PSK_SettingsDetail, PSK_Settings, MPSK_SettingsDetail, MPSK_Settings, MFSK_SettingsDetail, MFSK_Settings,
    Morse_Settings, MPT_Settings, POCSAG_Settings, FAX_SettingsDetail, FAX_Settings, MT_SettingsDetail, MT_Settings,
    PACCLO_Settings, F7W_SettingsDetail, F7W_Settings, General_Settings, TransmissionSystemDetail,
    TransmissionSystem, STANAG_Settings, MILSTD_Settings, Demodulator_Settings, Burst, Bursts, Emission, Emissions,
    Plot_Info, DFDataDetail, DFData, Station, Value, FrequencyList, PlotDetail, Plot, LocationResultLocation,
    LocationResultDetail, LocationResult, FrequencyStoreEntryLocation, BlankingRange, Detection, ResultList,
    FrequencyStoreEntry, DetectionResult, DetectionResultList, FrequencyStoreList, FrequencyStoreListHelper>;

} // namespace Velmara
