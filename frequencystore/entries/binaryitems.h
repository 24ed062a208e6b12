#pragma once

#include "frequencystore/entries/sink.h"
#include "frequencystore/kernel/forms/packed.h"
#include "frequencystore/kernel/forms/tagged.h"

#include <limits>
#include <optional>

namespace Velmara {

/// What both binary forms share: the bytes ahead of the items end with their count, which is known in the end alone.
template <class List, class Item> class BinaryItems : public ListSink<List, Item>
{
public:
    void begin(const List& list) final
    {
        restart();
        putHeading(list);
        m_headSize = m_out->position();
    }

    void put(const List& list, const Item& item, qint64 index) final
    {
        withItems<Item>(list, [&](const kernel::Member& m, const auto&) {
            kernel::within(m, int(index), [&] { putItem(m, item); });
        });
        constexpr int many = 1 << 18;
        if (m_out->position() >= many)
            flush();
    }

    void end(const List&) final
    {
        flush();
        if (m_count > std::numeric_limits<qint32>::max() || !close())
            throw TALLYFORM::TallyException(QStringLiteral("The list is longer than the form can tell."),
                                            TALLYFORM::Fault::Kind::Uncarried);
        if (m_count > 0)
            m_output.rewrite(m_headSize - wordSize, quint32(m_count));
        m_output.save();
    }

protected:
    explicit BinaryItems(const QString& path) : m_output(path) { m_stream.setVersion(QDataStream::Qt_5_15); }

    virtual void putHeading(const List& list) = 0;
    virtual void putItem(const kernel::Member& m, const Item& item) = 0;
    /// Writes what else is known in the end alone; false if the form has no room for it.
    virtual bool close() { return true; }

    static constexpr int wordSize = sizeof(quint32);
    kernel::BinarySink& out() { return *m_out; }

    Output m_output;
    qint64 m_count = 0;
    qint64 m_headSize = 0;

private:
    void restart()
    {
        m_out.reset();
        m_stream.setDevice(nullptr);
        m_buffer.close();
        m_buffer.setData(QByteArray());
        m_buffer.open(QIODevice::WriteOnly);
        m_stream.setDevice(&m_buffer);
        m_out.emplace(m_stream);
    }
    void flush()
    {
        m_out->flush();
        m_output.write(m_buffer.data());
        restart();
    }

    QBuffer m_buffer;
    QDataStream m_stream;
    std::optional<kernel::BinarySink> m_out;
};

template <class List, class Item> class TaggedItems final : public BinaryItems<List, Item>
{
public:
    explicit TaggedItems(const QString& path) : BinaryItems<List, Item>(path) {}

private:
    using Base = BinaryItems<List, Item>;

    void putHeading(const List& list) override
    {
        kernel::Record<List>::writeTagged(list, Base::out(), quint32(List::id), true);
        withItems<Item>(list, [&](const kernel::Member& m, const auto&) {
            const bool isHolding = kernel::Record<List>::ownData(list).isSet(m);
            m_hasField = m.isMandatory() || isHolding;
            if (!m.isMandatory() && isHolding) // where an empty list is passed over
                Base::out() << m.tag << quint32(Base::wordSize) << quint32(0);
        });
    }

    void putItem(const kernel::Member& m, const Item& item) override
    {
        if (kernel::Record<Item>::declines(item))
            return;
        kernel::Record<Item>::writeTagged(item, Base::out(), m.tag, false);
        ++Base::m_count;
    }

    /// The lengths of the list and of the field with the items.
    bool close() override
    {
        const qint64 list = Base::m_output.size() - 2 * Base::wordSize;
        const qint64 items = Base::m_output.size() - Base::m_headSize + Base::wordSize;
        Base::m_output.rewrite(Base::wordSize, quint32(list));
        if (m_hasField)
            Base::m_output.rewrite(Base::m_headSize - 2 * Base::wordSize, quint32(items));
        return list <= std::numeric_limits<qint32>::max();
    }

    bool m_hasField = false; ///< for the items
};

template <class List, class Item> class PackedItems final : public BinaryItems<List, Item>
{
public:
    explicit PackedItems(const QString& path) : BinaryItems<List, Item>(path) {}

private:
    using Base = BinaryItems<List, Item>;

    void putHeading(const List& list) override { kernel::Record<List>::writePacked(list, Base::out()); }
    void putItem(const kernel::Member&, const Item& item) override
    {
        kernel::putPacked(Base::out(), item);
        ++Base::m_count;
    }
};

} // namespace Velmara
