#pragma once

#include "frequencystore/csv/rowwriter.h"
#include "frequencystore/entries/sink.h"

#include <QTemporaryDir>

namespace Velmara {

/// The columns depend on all items, which wait in a file of their own until the last is there.
template <class List, class Item> class CsvItems final : public ListSink<List, Item>
{
public:
    CsvItems(const QString& path, FrequencyStoreListHelper::ListType type, ExportReport& report)
        : m_output(path), m_format(formatOf(type)), m_columns(m_format), m_report(report)
    {
        m_waiting.heading().SetValidate(false);
    }

    void begin(const List&) override {}

    void put(const List&, const Item& item, qint64) override
    {
        m_columns.note(item);
        m_waiting.write(item);
    }

    void end(const List&) override
    {
        constexpr int many = 1 << 18;
        m_waiting.finish();
        csv::RowWriter<Item> rows(m_format, m_columns.columns(), m_report);
        ListReader<List, Item> reader(m_path, ListForm::Packed);
        reader.heading().SetValidate(false);
        for (const Item& item : reader) {
            rows.put(item);
            if (rows.text().size() >= many)
                m_output.write(std::exchange(rows.text(), QString()).toUtf8());
        }
        m_output.write(rows.text().toUtf8());
        m_output.save();
        m_report.isComplete = true;
    }

private:
    static const csv::Format<Item>& formatOf(FrequencyStoreListHelper::ListType type)
    {
        if constexpr (std::is_same_v<Item, FrequencyStoreEntry>)
            return csv::formatOf(type);
        else
            return csv::formatOfResults();
    }

    Output m_output;
    const csv::Format<Item>& m_format;
    csv::NeededColumns<Item> m_columns;
    ExportReport& m_report;
    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("list"));
    ListWriter<List, Item> m_waiting{m_path, ListForm::Packed};
};

} // namespace Velmara
