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
    /// Refers to the same lists, without another conversion.
    DetectionResultHelper(DetectionResultHelper const& other);
    virtual ~DetectionResultHelper();

    /// A header line and a line per result.
    QString GetCSVString() const;
    /// The same; adds to the report what it writes and what a reader will not get back.
    QString GetCSVString(ExportReport& report) const;

private:
    void Init();
    void InitHeading();
    void InitTuning(FrequencyStoreEntry& entry, DetectionResult const& result, QString const& failurePrefix);
    void InitCommonSettings(FrequencyStoreEntry& entry, DetectionResult const& result);
    void InitWithoutDemodulator(DetectionResult const& result);
    void InitWithDemodulator(DetectionResult const& result);

    DetectionResultList& m_results;
    FrequencyStoreList& m_store;
};

} // namespace Velmara
