#pragma once

#include "frequencystore/exchangereport.h"
#include "frequencystore/records/detectionresult.h"
#include "frequencystore/records/frequencystorelist.h"

namespace Velmara {

/// Turns detection results into store entries with the demodulator settings that their modulation text tells, and
/// renders them as CSV. Refers to both lists, which must outlive it; keep them to one thread meanwhile.
class VELMARA_EXPORT DetectionResultHelper
{
public:
    /// Converts: appends a heading entry, which a store under validation declines, and an entry per result. Throws
    /// TallyException for a result that gives no valid entry, with the entries ahead of it in the store.
    DetectionResultHelper(DetectionResultList& results, FrequencyStoreList& store);
    /// Does the same, but catches TallyException, and tells which results gave no entry and what was left out of the
    /// others. A store under validation takes only entries here that can be written, too.
    ///
    /// Left out is what a result holds and its entry does not; an empty text is not missed. With a modulation, a result
    /// loses its ID and those values that the demodulator has no place for; without, its confidence and all that
    /// belongs to a demodulator. Both lose the bounds of the bandwidth, the bearing unless both coordinates are set,
    /// and receiver settings that cannot be read; of those that can, its own frequency, bandwidth and level take the
    /// place, which is not told. The heading is not converted where the store declines its entry.
    static ConversionReport Convert(DetectionResultList const& results, FrequencyStoreList& store,
                                    BadResults badResults = BadResults::EndConversion);
    /// Refers to the same lists, without another conversion.
    DetectionResultHelper(DetectionResultHelper const& other);
    virtual ~DetectionResultHelper();

    /// A header line and a line per result.
    QString GetCSVString() const;
    /// The same; adds to the report what it writes and what a reader will not get back.
    QString GetCSVString(ExportReport& report) const;

private:
    DetectionResultList& m_results;
    FrequencyStoreList& m_store;
};

} // namespace Velmara
