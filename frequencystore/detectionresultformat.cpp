/// The CSV format of detection results, which is only written.

#include "base/converters.h"
#include "frequencystore/csvtext.h"
#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/readable.h"

#include <iterator>

using TALLYFORM::Converters;

namespace Velmara {

namespace {

struct Cell
{
    QLatin1String name;
    QString (*text)(const DetectionResult&);
    /// Whether the result has something that the text does not tell from nothing; null for numbers.
    bool (*isLost)(const DetectionResult&, QStringView text) = nullptr;
};

QString degrees(double value) { return csv::fixed(value, 6); }
bool isEmpty(QStringView cell) { return cell.isEmpty(); }

// clang-format off
#define VELMARA_CELL(NAME, ITEM, ...)                                                                                  \
    Cell{QLatin1String(NAME), [](const DetectionResult& result) -> QString { return ITEM; }, __VA_ARGS__}
#define VELMARA_CELL_IF_SET(NAME, MEMBER, ITEM, ...)                                                                   \
    VELMARA_CELL(NAME, result.Is##MEMBER##Set() ? ITEM : csv::absent(), __VA_ARGS__)
/// A text or time of which a cell for which TEST holds tells nothing.
#define VELMARA_LOST_IF(TEST, MEMBER)                                                                                  \
    [](const DetectionResult& result, QStringView text) { return TEST(text) && result.Is##MEMBER##Set(); }

const Cell cells[] = {
    VELMARA_CELL       ("ID",        result.GetID(), VELMARA_LOST_IF(isEmpty, ID)),
    VELMARA_CELL       ("Frequency", csv::fixed(valueOf(result.GetFrequency()))),
    VELMARA_CELL       ("Bandwidth", csv::fixed(valueOf(result.GetBandwidth()))),
    VELMARA_CELL_IF_SET("Level",      Level,      csv::fixed(result.GetLevel())),
    VELMARA_CELL       ("StartTime", Converters::ToString(result.GetStartTime()), VELMARA_LOST_IF(isEmpty, StartTime)),
    VELMARA_CELL_IF_SET("StopTime",   StopTime,   Converters::ToString(result.GetStopTime()),
                        VELMARA_LOST_IF(isEmpty, StopTime)),
    VELMARA_CELL_IF_SET("Confidence", Confidence, QString::number(result.GetConfidence())),
    VELMARA_CELL_IF_SET("Modulation", Modulation, result.GetModulation(), VELMARA_LOST_IF(csv::isAbsent, Modulation)),
    VELMARA_CELL_IF_SET("TransmissionSystem", TransmissionSystem, result.GetTransmissionSystem(),
                        VELMARA_LOST_IF(csv::isAbsent, TransmissionSystem)),
    VELMARA_CELL_IF_SET("Baudrate",   Baudrate,   csv::fixed(valueOf(result.GetBaudrate()))),
    VELMARA_CELL_IF_SET("Shift",      Shift,      csv::fixed(valueOf(result.GetShift()))),
    VELMARA_CELL_IF_SET("Decoders",   Decoder,    result.GetDecoder(), VELMARA_LOST_IF(csv::isAbsent, Decoder)),
    VELMARA_CELL_IF_SET("Azimuth",    Azimuth,    csv::fixed(result.GetAzimuth())),
    VELMARA_CELL_IF_SET("Quality",    DFQuality,  csv::fixed(result.GetDFQuality())),
    VELMARA_CELL_IF_SET("Longitude",  Longitude,  degrees(result.GetLongitude())),
    VELMARA_CELL       ("Latitude",  result.IsLatitudeSet() ? degrees(result.GetLatitude()) : QString()),
};
// clang-format on

/// Appends a line with one text for each cell.
template <class TextOf> void appendLine(QString& text, TextOf textOf)
{
    for (const Cell& cell : cells) {
        if (&cell != cells)
            text += QLatin1Char(';');
        text += textOf(cell);
    }
    text += QLatin1Char('\n');
}

void watchCell(const DetectionResult& result, const Cell& cell, const QString& text, csv::LineWatch& watch)
{
    if (!cell.isLost)
        return;
    watch.cell(cell.name, text);
    if (cell.isLost(result, text))
        watch.damage(CsvDamage::ReadAsUnset, cell.name, text);
}

} // namespace

QString DetectionResultHelper::GetCSVString() const
{
    ExportReport report;
    return GetCSVString(report);
}

QString DetectionResultHelper::GetCSVString(ExportReport& report) const
{
    csv::LineWatch watch(report);
    QString text;
    appendLine(text, [](const Cell& cell) -> QString { return cell.name; });
    const QVector<DetectionResult> results = m_results.GetDetectionResult();
    for (const DetectionResult& each : results) {
        const DetectionResult& result = readable(each);
        const int start = text.size();
        appendLine(text, [&](const Cell& cell) {
            const QString item = cell.text(result);
            watchCell(result, cell, item, watch);
            return item;
        });
        watch.endLine(text.size() - start - 1);
    }
    return text;
}

} // namespace Velmara
