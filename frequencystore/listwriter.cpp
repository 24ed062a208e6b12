#include "frequencystore/listwriter.h"

#include "frequencystore/entries/binaryitems.h"
#include "frequencystore/entries/csvitems.h"
#include "frequencystore/entries/xmlitems.h"

using namespace TALLYFORM;

namespace Velmara {

namespace {

using ListType = FrequencyStoreListHelper::ListType;

template <class List, class Item>
std::unique_ptr<ListSink<List, Item>> sinkOf(const QString& path, ListForm form, ListType type, ExportReport& report)
{
    switch (form) {
    case ListForm::Xml: return std::make_unique<XmlItems<List, Item>>(path);
    case ListForm::Tagged: return std::make_unique<TaggedItems<List, Item>>(path);
    case ListForm::Packed: return std::make_unique<PackedItems<List, Item>>(path);
    case ListForm::Csv: break;
    }
    return std::make_unique<CsvItems<List, Item>>(path, type, report);
}

bool isValidated(ListForm form) { return form == ListForm::Xml || form == ListForm::Tagged; }

/// Readies the list to be written as if it held its items, or none.
template <class Item, class List> void prepare(const List& list, ListForm form, bool holdsItems)
{
    withItems<Item>(list, [&](const kernel::Member& m, const auto&) {
        if (holdsItems)
            kernel::Record<List>::ownData(list).mark(m);
    });
    if (isValidated(form))
        kernel::Record<List>::prepareWriting(list);
}

/// As the check of the list that holds the item.
template <class List, class Item> void check(const List& list, const Item& item, qint64 index)
{
    if (item.GetValidate() != list.GetValidate())
        item.SetValidate(list.GetValidate());
    withItems<Item>(list, [&](const kernel::Member& m, const auto&) {
        kernel::within(m, int(index), [&] { kernel::Record<Item>::checkOnWriting(item); });
    });
}

} // namespace

template <class List, class Item> ListWriter<List, Item>::ListWriter(const QString& path, ListForm form, ListType type)
    : m_form(form), m_sink(sinkOf<List, Item>(path, form, type, m_report))
{}

template <class List, class Item> ListWriter<List, Item>::~ListWriter() = default;

template <class List, class Item> void ListWriter<List, Item>::write(const Item& item)
{
    auto sink = std::move(m_sink); // nothing can be written behind a failure
    if (!sink)
        throw TallyException(QStringLiteral("Nothing can be written to the list any more."));
    if (m_count == 0) {
        prepare<Item>(m_heading, m_form, true);
        sink->begin(m_heading);
    }
    if (isValidated(m_form))
        check(m_heading, item, m_count);
    sink->put(m_heading, item, m_count);
    ++m_count;
    m_sink = std::move(sink);
}

template <class List, class Item> void ListWriter<List, Item>::finish()
{
    const auto sink = std::move(m_sink);
    if (!sink)
        throw TallyException(QStringLiteral("Nothing can be written to the list any more."));
    if (m_count == 0) {
        prepare<Item>(m_heading, m_form, false);
        sink->begin(m_heading);
    }
    sink->end(m_heading);
}

template class ListWriter<FrequencyStoreList, FrequencyStoreEntry>;
template class ListWriter<DetectionResultList, DetectionResult>;

} // namespace Velmara
