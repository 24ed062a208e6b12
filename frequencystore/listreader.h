#pragma once

#include "frequencystore/exchangereport.h"
#include "frequencystore/records/detectionresult.h"
#include "frequencystore/records/frequencystorelist.h"

#include <iterator>
#include <memory>

namespace Velmara {

/// The forms of a list in a file.
enum class ListForm { Xml, Tagged, Packed, Csv };

template <class List, class Item> class ListSource;

/// Reads a list from a file item by item, so that it may be longer than memory. What is read and what is refused are
/// the same as for a list that is read whole; but the limit on input (see SetInputLimit) bounds an item and not the
/// file, and the items ahead of a fault were given when it is met.
///
///     EntryReader reader("year.xml", ListForm::Xml);
///     for (const FrequencyStoreEntry& entry : reader)
///         sum += entry.GetFFM_Settings().GetFrequency().GetValue();
template <class List, class Item> class ListReader
{
public:
    /// Reads nothing yet. CSV, which store entries alone have, needs a list type.
    ListReader(const QString& path, ListForm form,
               FrequencyStoreListHelper::ListType type = FrequencyStoreListHelper::ListType::Invalid,
               BadRows badRows = BadRows::EndReading);
    ~ListReader();
    ListReader(const ListReader&) = delete;
    ListReader& operator=(const ListReader&) = delete;

    /// The list without its items, as far as it was read. Its validation flag is that of reading.
    List& heading() { return m_heading; }
    /// Reads the next item; false behind the last one. Throws TallyException where the file cannot be read or is not
    /// what it should be, and what the item's setters throw; nothing can be read behind that.
    bool next();
    /// The item that was read last; it may be changed and moved away.
    Item& item() { return m_item; }
    /// How many were read.
    qint64 count() const { return m_count; }
    /// What reading CSV met so far.
    const ImportReport& report() const { return m_report; }

    /// Goes over the items once.
    class Iterator
    {
    public:
        ///@{
        /// As the standard has them.
        using iterator_category = std::input_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using pointer = Item*;
        using reference = Item&;
        ///@}

        /// Stands on the item that a reader read last; without one, behind all items.
        explicit Iterator(ListReader* reader = nullptr) : m_reader(reader) {}
        /// The item.
        Item& operator*() const { return m_reader->item(); }
        /// Reads the next one. Throws as next() does.
        Iterator& operator++()
        {
            if (!m_reader->next())
                m_reader = nullptr;
            return *this;
        }
        /// Whether both stand behind all items, or on the same one.
        bool operator==(const Iterator& other) const { return m_reader == other.m_reader; }

    private:
        ListReader* m_reader;
    };
    /// Reads the first item that was not read yet. Throws as next() does.
    Iterator begin() { return ++Iterator(this); }
    /// Behind the last item.
    Iterator end() { return Iterator(); }

private:
    List m_heading;
    Item m_item;
    ImportReport m_report;
    qint64 m_count = 0;
    std::unique_ptr<ListSource<List, Item>> m_source; ///< null behind the end
};

/// Reads store entries one by one.
using EntryReader = ListReader<FrequencyStoreList, FrequencyStoreEntry>;
/// Reads detection results one by one.
using ResultReader = ListReader<DetectionResultList, DetectionResult>;

extern template class VELMARA_EXPORT ListReader<FrequencyStoreList, FrequencyStoreEntry>;
extern template class VELMARA_EXPORT ListReader<DetectionResultList, DetectionResult>;

} // namespace Velmara
