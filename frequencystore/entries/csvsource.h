#pragma once

#include "frequencystore/csv/rowreader.h"
#include "frequencystore/entries/source.h"

#include <optional>

namespace Velmara {

class CsvSource final : public ListSource<FrequencyStoreList, FrequencyStoreEntry>
{
public:
    CsvSource(const QString& path, FrequencyStoreListHelper::ListType type, ImportReport& report)
        : m_path(path), m_type(type), m_report(report)
    {}

    bool next(FrequencyStoreList& list) override
    {
        try {
            if (!m_rows)
                m_rows.emplace(csv::formatOf(m_type), m_path, m_report);
            return m_rows->next(list);
        } catch (TALLYFORM::TallyException& failure) {
            m_report.error = failure.GetMessage();
            failure.GetFault().place = {.source = m_path, .line = m_report.failed.line};
            throw;
        }
    }

private:
    const QString m_path;
    const FrequencyStoreListHelper::ListType m_type;
    ImportReport& m_report;
    std::optional<csv::RowReader> m_rows;
};

} // namespace Velmara
