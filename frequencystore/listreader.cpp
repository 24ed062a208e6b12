#include "frequencystore/listreader.h"

#include "frequencystore/entries/binarysource.h"
#include "frequencystore/entries/csvsource.h"
#include "frequencystore/entries/xmlsource.h"

using namespace TALLYFORM;

namespace Velmara {

namespace {

using ListType = FrequencyStoreListHelper::ListType;

template <class List, class Item> std::unique_ptr<ListSource<List, Item>> sourceOf(const QString& path, ListForm form,
                                                                                   ListType type, ImportReport& report)
{
    switch (form) {
    case ListForm::Xml: return std::make_unique<XmlSource<List, Item>>(path);
    case ListForm::Tagged: return std::make_unique<TaggedSource<List, Item>>(path);
    case ListForm::Packed: return std::make_unique<PackedSource<List, Item>>(path);
    case ListForm::Csv:
        if constexpr (std::is_same_v<List, FrequencyStoreList>)
            return std::make_unique<CsvSource>(path, type, report);
    }
    throw TallyException(QStringLiteral("This list type cannot be read from CSV."));
}

/// A list to which items are read one by one has but the first.
template <class Item> void setIndex(Fault& fault, qint64 index)
{
    const QString first = QLatin1String(Item::className) + QLatin1String("[1]");
    if (fault.path == first || fault.path.startsWith(first + u'/'))
        fault.path.replace(first.size() - 2, 1, QString::number(index + 1));
}

} // namespace

template <class List, class Item>
ListReader<List, Item>::ListReader(const QString& path, ListForm form, ListType type, BadRows badRows)
    : m_source(sourceOf<List, Item>(path, form, type, m_report))
{
    m_report.badRows = badRows;
}

template <class List, class Item> ListReader<List, Item>::~ListReader() = default;

/// A failure leaves in the heading what it has of an item.
template <class List, class Item> bool ListReader<List, Item>::next()
{
    auto source = std::move(m_source); // nothing can be read behind a failure
    if (!source)
        return false;
    bool isThere = false;
    try {
        isThere = source->next(m_heading);
    } catch (TallyFormException& failure) {
        withItems<Item>(m_heading, [&](const kernel::Member&, auto& items) { items.clear(); });
        setIndex<Item>(failure.GetFault(), m_count);
        throw;
    }
    if (!isThere)
        return false;
    m_item.ITallyObject::SetValidate(m_heading.GetValidate());
    m_item.ShareLogger(m_heading);
    withItems<Item>(m_heading, [&](const kernel::Member& m, auto& items) {
        m_item = std::move(items.first());
        kernel::clear(kernel::Record<List>::ownData(m_heading), m, items);
    });
    ++m_count;
    m_source = std::move(source);
    return true;
}

template class ListReader<FrequencyStoreList, FrequencyStoreEntry>;
template class ListReader<DetectionResultList, DetectionResult>;

} // namespace Velmara
