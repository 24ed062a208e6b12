/// The CSV format of detection results, which is only written.

#include "frequencystore/csv/forms.h"

namespace Velmara::csv {

const Format<DetectionResult>& formatOfResults()
{
    using R = DetectionResult;
    // clang-format off
    static const Format<R> format{
        .columns = {
            VELMARA_COLUMN ("ID",                 Whole, ID,                 Text).blank(),
            VELMARA_BOUNDED("Frequency",          Whole, Frequency,          TwoDecimals).filled(),
            VELMARA_BOUNDED("Bandwidth",          Whole, Bandwidth,          TwoDecimals).filled(),
            VELMARA_COLUMN ("Level",              Whole, Level,              TwoDecimals),
            VELMARA_COLUMN ("StartTime",          Whole, StartTime,          Time).blank(),
            VELMARA_COLUMN ("StopTime",           Whole, StopTime,           Time),
            VELMARA_COLUMN ("Confidence",         Whole, Confidence,         Integer),
            VELMARA_COLUMN ("Modulation",         Whole, Modulation,         Text),
            VELMARA_COLUMN ("TransmissionSystem", Whole, TransmissionSystem, Text),
            VELMARA_BOUNDED("Baudrate",           Whole, Baudrate,           TwoDecimals),
            VELMARA_BOUNDED("Shift",              Whole, Shift,              TwoDecimals),
            VELMARA_COLUMN ("Decoders",           Whole, Decoder,            Text),
            VELMARA_COLUMN ("Azimuth",            Whole, Azimuth,            TwoDecimals),
            VELMARA_COLUMN ("Quality",            Whole, DFQuality,          TwoDecimals),
            VELMARA_COLUMN ("Longitude",          Whole, Longitude,          SixDecimals),
            VELMARA_COLUMN ("Latitude",           Whole, Latitude,           SixDecimals).blank(),
        },
        .hasTrailingSeparator = false,
        .areEmptyCellsMarked = false,
    };
    // clang-format on
    return format;
}

} // namespace Velmara::csv
