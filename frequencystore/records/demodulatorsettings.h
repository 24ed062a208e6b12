#pragma once

#include "frequencystore/records/askfsksettings.h"
#include "frequencystore/records/demodulatorparts.h"
#include "frequencystore/records/generalsettings.h"
#include "frequencystore/records/pskfamilysettings.h"
#include "frequencystore/records/signalsettings.h"

#include <QCoreApplication>

namespace Velmara {

/// How a signal is demodulated and decoded: a common part and the choice of one settings record.
class VELMARA_EXPORT Demodulator_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::Demodulator_Settings)
    VELMARA_RECORD(Demodulator_Settings, "Demodulator_Settings", 0xA341BD61)
    VELMARA_VERSION("1.0")
    VELMARA_CHOICE(ChoiceDemodulator_Settings, optional().comparesChosenAlone(),
                   ASK_Settings, FSK_Settings, PSK_Settings, Morse_Settings, MPSK_Settings, MFSK_Settings,
                   MPT_Settings, POCSAG_Settings, FAX_Settings, MT_Settings, PACCLO_Settings, F7W_Settings,
                   General_Settings, TransmissionSystem, STANAG_Settings, MILSTD_Settings)

    VELMARA_ENUM       (Mode, 0x8DC1F911, optional(),
                        NONE, ASK, FSK, PSK, Morse, MPSK, MFSK, POCSAG, FAX, MT, PACCLO, F7W, MPT, General,
                        TransmissionSystem, STANAG, MILSTD, Unknown)
    VELMARA_VALUE      (double,                    FrequencyOffset,    0xE80F6123)
    VELMARA_CHILD      (Decoder,                   Decoder,            0xC4117FE9)
    VELMARA_CHILD      (ChannelSelection,          ChannelSelection,   0x42E69099)
    VELMARA_VALUE      (QString,                   Alphabet,           0x41BE883B)
    VELMARA_VALUE      (QString,                   Parameters,         0x084068EF)
    VELMARA_ALTERNATIVE(CHILD, ASK_Settings,       ASK_Settings,       0x4AA421D3)
    VELMARA_ALTERNATIVE(CHILD, FSK_Settings,       FSK_Settings,       0xCEA95A96)
    VELMARA_ALTERNATIVE(CHILD, PSK_Settings,       PSK_Settings,       0xC6A688D7)
    VELMARA_ALTERNATIVE(CHILD, Morse_Settings,     Morse_Settings,     0xC0457C0B)
    VELMARA_ALTERNATIVE(CHILD, MPSK_Settings,      MPSK_Settings,      0x6D3D1035)
    VELMARA_ALTERNATIVE(CHILD, MFSK_Settings,      MFSK_Settings,      0x068C128F)
    VELMARA_ALTERNATIVE(CHILD, MPT_Settings,       MPT_Settings,       0x684AE47C)
    VELMARA_ALTERNATIVE(CHILD, POCSAG_Settings,    POCSAG_Settings,    0x0EA6646B)
    VELMARA_ALTERNATIVE(CHILD, FAX_Settings,       FAX_Settings,       0xC2D6551D)
    VELMARA_ALTERNATIVE(CHILD, MT_Settings,        MT_Settings,        0xA0B38868)
    VELMARA_ALTERNATIVE(CHILD, PACCLO_Settings,    PACCLO_Settings,    0x2449C1C2)
    VELMARA_ALTERNATIVE(CHILD, F7W_Settings,       F7W_Settings,       0x2972C02D)
    VELMARA_ALTERNATIVE(CHILD, General_Settings,   General_Settings,   0xABCBC889)
    VELMARA_ALTERNATIVE(CHILD, TransmissionSystem, TransmissionSystem, 0x0122C93D)
    VELMARA_ALTERNATIVE(CHILD, STANAG_Settings,    STANAG_Settings,    0xA76034A7)
    VELMARA_ALTERNATIVE(CHILD, MILSTD_Settings,    MILSTD_Settings,    0x2A128236)
};
VELMARA_EXTERN_RECORD(Demodulator_Settings)

} // namespace Velmara
