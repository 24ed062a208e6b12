#pragma once

#include "base/readfile.h"
#include "base/xmldocument.h"
#include "frequencystore/entries/source.h"
#include "frequencystore/kernel/forms/xml.h"

#include <QFile>

namespace Velmara {

template <class List, class Item> class XmlSource final : public ListSource<List, Item>
{
public:
    explicit XmlSource(const QString& path) : m_file(path) {}

    bool next(List& list) override
    {
        try {
            if (!m_document && !begin(list))
                return false;
            m_document->allow(TALLYFORM::GetInputLimit());
            return readItem(list);
        } catch (TALLYFORM::TallyFormException& failure) {
            if (!m_document || m_document->locate(failure))
                throw;
            m_document->end();
            return false;
        }
    }

private:
    using Tag = TALLYFORM::XmlPull::Tag;

    bool begin(List& list)
    {
        if (!m_file.open(QIODevice::ReadOnly))
            throw TALLYFORM::TallyException(TALLYFORM::Fault{.kind = TALLYFORM::Fault::Kind::Unreadable,
                                                             .place = {.source = m_file.fileName()},
                                                             .message = m_file.errorString()});
        m_document = TALLYFORM::XmlDocument::of(m_file, std::numeric_limits<qint64>::max());
        if (!m_document->begin(list)) {
            m_document->end();
            return false;
        }
        kernel::Record<List>::propagate(list);
        kernel::Record<List>::readStartTag(list, m_document->pull());
        return true;
    }

    bool readItem(List& list)
    {
        bool isThere = false;
        while (m_open > 0 && !isThere) {
            const Tag tag = m_document->pull().next();
            if (tag == Tag::None)
                break;
            m_open += tag == Tag::Start ? kernel::Record<List>::readElement(list, m_document->pull()) : -1;
            withItems<Item>(list, [&](const kernel::Member&, const auto& items) { isThere = !items.isEmpty(); });
        }
        if (!isThere || m_document->pull().hasError()) { // an item in which the document breaks off is none
            m_document->end();
            return false;
        }
        return true;
    }

    QFile m_file;
    std::unique_ptr<TALLYFORM::XmlDocument> m_document;
    int m_open = 1; ///< elements that have not ended
};

} // namespace Velmara
