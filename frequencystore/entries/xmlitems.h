#pragma once

#include "frequencystore/entries/sink.h"
#include "frequencystore/kernel/forms/xml.h"

#include <optional>

namespace Velmara {

template <class List, class Item> class XmlItems final : public ListSink<List, Item>
{
public:
    explicit XmlItems(const QString& path) : m_output(path) {}

    void begin(const List& list) override
    {
        m_xml.emplace(m_document, true, m_take);
        kernel::Record<List>::openXml(list, *m_xml);
    }

    void put(const List& list, const Item& item, qint64 index) override
    {
        withItems<Item>(list, [&](const kernel::Member& m, const auto&) {
            const kernel::XmlWriter writer(list, kernel::Record<List>::ownData(list), *m_xml);
            writer.putItem(m, item, int(index));
        });
        if (!m_xml->isCarried())
            throw TALLYFORM::TallyException(QStringLiteral("%1: %2[%3]/%4")
                                                .arg(list.GetObjectName(), QLatin1String(Item::className),
                                                     QString::number(index + 1),
                                                     item.FindUncarried(TALLYFORM::WrittenForm::Xml)),
                                            TALLYFORM::Fault::Kind::Uncarried);
    }

    void end(const List& list) override
    {
        m_xml->endElement(list.GetObjectName());
        m_xml.reset(); // which leaves the rest in the document
        m_output.write(m_document + '\n');
        m_output.save();
    }

private:
    Output m_output;
    QByteArray m_document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    const TALLYFORM::ByteSink m_take
        = [this](const char* bytes, int size) { m_output.write(QByteArray::fromRawData(bytes, size)); };
    std::optional<kernel::Utf8XmlSink> m_xml;
};

} // namespace Velmara
