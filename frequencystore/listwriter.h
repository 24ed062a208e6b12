#pragma once

#include "frequencystore/listreader.h"

namespace Velmara {

template <class List, class Item> class ListSink;

/// Writes a list to a file item by item, so that it may be longer than memory. The file is the same, byte for byte, as
/// that of the list saved whole, and is there as a whole or not at all. What is no regular file, such as a pipe, gets
/// the bytes in the end, until when they are kept in memory.
///
///     EntryReader reader("year.xml", ListForm::Xml);
///     EntryWriter writer("year.packed", ListForm::Packed);
///     while (reader.next()) {
///         if (writer.count() == 0)
///             writer.heading() = reader.heading();
///         writer.write(reader.item());
///     }
///     writer.finish();
template <class List, class Item> class ListWriter
{
public:
    /// Touches nothing yet. CSV needs the list type of store entries.
    ListWriter(const QString& path, ListForm form,
               FrequencyStoreListHelper::ListType type = FrequencyStoreListHelper::ListType::Invalid);
    /// Unless it was finished, the path holds what it held.
    ~ListWriter();
    ListWriter(const ListWriter&) = delete;
    ListWriter& operator=(const ListWriter&) = delete;

    /// The list without its items, to be filled ahead of the first one. Its validation flag is that of writing.
    List& heading() { return m_heading; }
    /// Writes an item, which takes over the heading's flag. Throws what Check throws, and TallyException for what the
    /// form cannot carry; nothing can be written behind that.
    void write(const Item& item);
    /// Puts the file in its place. Throws TallyException if it cannot be written, and what Check throws for the list.
    void finish();
    /// How many items were written.
    qint64 count() const { return m_count; }
    /// What a reader of CSV will not get back, behind finish().
    const ExportReport& report() const { return m_report; }

private:
    List m_heading;
    const ListForm m_form;
    ExportReport m_report;
    qint64 m_count = 0;
    std::unique_ptr<ListSink<List, Item>> m_sink;
};

/// Writes store entries one by one.
using EntryWriter = ListWriter<FrequencyStoreList, FrequencyStoreEntry>;
/// Writes detection results one by one.
using ResultWriter = ListWriter<DetectionResultList, DetectionResult>;

extern template class VELMARA_EXPORT ListWriter<FrequencyStoreList, FrequencyStoreEntry>;
extern template class VELMARA_EXPORT ListWriter<DetectionResultList, DetectionResult>;

} // namespace Velmara
