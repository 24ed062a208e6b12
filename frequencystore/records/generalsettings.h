#pragma once

#include "frequencystore/records/boundedvalues.h"

#include <QCoreApplication>

namespace Velmara {

/// One signal system out of a fixed catalogue, with its sub-type.
class VELMARA_EXPORT General_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::General_Settings)
    VELMARA_RECORD(General_Settings, "General_Settings", 0xAEC4D600)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM(Mode, 0x8DC1F911, mandatory().named(
                       "Hellschreiber|Packet Radio|SSTV|Selective Call|DTMF|ACARS|ACARS_HF|ATIS|FMS-BOS|ZVEI-VDEW|"
                       "WEFAX|AIS|ICAO_SELCAL|HC_ARQ|Mil-Std 188-110A|Mil-Std 188-141B (Appendix C)|"
                       "Mil-Std 188-110B (Appendix C)|STANAG|PSK31|FLEX|GMDSS|None"),
                 Hellschreiber, PacketRadio, SSTV, SelectiveCall, DTMF, ACARS, ACARS_HF, ATIS, FMS_BOS, ZVEI_VDEW,
                 WEFAX, AIS, ICAO_SELCAL, HC_ARQ, MilStd188_110A, MilStd188_141B_AppendixC, MilStd188_110B_AppendixC,
                 STANAG, PSK31, FLEX, GMDSS, None)
    VELMARA_ENUM(ModType, 0x842A8EED, named(
                       "AM|FM|300|1200|9600|AUTO|M1_3|M2_4|MHQ1YUV|MHQ2YUV|S1_3|S2_4|SDX|SDX2|R8BW|R12BW|R24BW|"
                       "R36BW|R43BW|R12YUV|R24YUV|R36YUV|R72YUV|SC1_8_16IBW|SC1_16_32BW|SC1_24BW|SC1_24_48l|"
                       "SC1_48_96|SC2_30_60|SC2_120|SC2_180|SM1|SM2|SMDX|AVT24|AVT24N|AVT24Q|AVT24NQ|AVT90|AVT90N|"
                       "AVT90Q|AVT90NQ|AVT94N|AVT94Q|AVT94NQ|AVT125BW|AVT125N|AVT125Q|AVT125NQ|AVT188|AVT188N|"
                       "AVT188Q|AVT188NQ|P|P3|P5|P7|PD50YUV|PD65YUV|PD90YUV|PD120YUV|PD160YUV|PD180YUV|PD240YUV|"
                       "PD290YUV|J120|GVA125BW|GVA125|GVA250|VF480BW|VFC|MS1|MS2|ZVEI-1|ZVEI-2|CCIR-1|CCIR-2|VDEW|"
                       "CCITT|EEA|EIA|EURO|NATEL|600|BPSK|QPSK"),
                 AM, FM, Rate300, Rate1200, Rate9600, AUTO, M1_3, M2_4, MHQ1YUV, MHQ2YUV, S1_3, S2_4, SDX, SDX2, R8BW,
                 R12BW, R24BW, R36BW, R43BW, R12YUV, R24YUV, R36YUV, R72YUV, SC1_8_16IBW, SC1_16_32BW, SC1_24BW,
                 SC1_24_48l, SC1_48_96, SC2_30_60, SC2_120, SC2_180, SM1, SM2, SMDX, AVT24, AVT24N, AVT24Q, AVT24NQ,
                 AVT90, AVT90N, AVT90Q, AVT90NQ, AVT94N, AVT94Q, AVT94NQ, AVT125BW, AVT125N, AVT125Q, AVT125NQ, AVT188,
                 AVT188N, AVT188Q, AVT188NQ, P, P3, P5, P7, PD50YUV, PD65YUV, PD90YUV, PD120YUV, PD160YUV, PD180YUV,
                 PD240YUV, PD290YUV, J120, GVA125BW, GVA125, GVA250, VF480BW, VFC, MS1, MS2, ZVEI_1, ZVEI_2, CCIR_1,
                 CCIR_2, VDEW, CCITT, EEA, EIA, EURO, NATEL, Rate600, BPSK, QPSK)
};
VELMARA_EXTERN_RECORD(General_Settings)

/// Raw parameters of a transmission system.
class VELMARA_EXPORT TransmissionSystemDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(TransmissionSystemDetail, "Detail", 0x01E5C1E8)

    VELMARA_VALUE(QString, Parameters, 0x084068EF, mandatory())
};
VELMARA_EXTERN_RECORD(TransmissionSystemDetail)

/// A signal system named by free text, for those that the catalogue lacks.
class VELMARA_EXPORT TransmissionSystem : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(TransmissionSystem, "TransmissionSystem", 0x07CFFF85)

    VELMARA_VALUE(QString,                  Mode,     0x2CB595F3, mandatory())
    VELMARA_VALUE(bool,                     UseMode,  0x66AAE607)
    VELMARA_VALUE(QString,                  ModType,  0x40DC50D6)
    VELMARA_CHILD(Baudrate,                 Baudrate, 0xA62286A5)
    VELMARA_LIST (Shift,                    Shift,    0xC92DBEDC)
    VELMARA_CHILD(TransmissionSystemDetail, Detail,   0xA543E06D)
};
VELMARA_EXTERN_RECORD(TransmissionSystem)

/// A signal of the STANAG family.
class VELMARA_EXPORT STANAG_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::STANAG_Settings)
    VELMARA_RECORD(STANAG_Settings, "STANAG_Settings", 0x213F9FDF)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory().named("Stanag 4285|Stanag 4529"), Stanag4285, Stanag4529)
    VELMARA_VALUE(QString, DataRate,        0xCF12A5C0, mandatory())
    VELMARA_VALUE(QString, InterleaverMode, 0x248C3F7C, mandatory())
};
VELMARA_EXTERN_RECORD(STANAG_Settings)

/// A signal of the MIL-STD family.
class VELMARA_EXPORT MILSTD_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::MILSTD_Settings)
    VELMARA_RECORD(MILSTD_Settings, "MILSTD_Settings", 0x0BDFE466)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory().named("188-110A|188-110A App. B|188-110B App. C|188-141B App. C"),
                  MilStd188_110A, MilStd188_110A_AppB, MilStd188_110B_AppC, MilStd188_141B_AppC)
    VELMARA_VALUE(QString, DataFormat,        0xC7625BAB, mandatory())
    VELMARA_VALUE(QString, Diversity,         0xEC7046D8, mandatory())
    VELMARA_VALUE(QString, InterleaverLength, 0x8A770C3B, mandatory())
    VELMARA_VALUE(QString, SpeedLevel,        0x2F611EE4, mandatory())
};
VELMARA_EXTERN_RECORD(MILSTD_Settings)

} // namespace Velmara
