#pragma once

#include "frequencystore/entries/source.h"
#include "frequencystore/entries/window.h"
#include "frequencystore/kernel/forms/packed.h"
#include "frequencystore/kernel/forms/tagged.h"

namespace Velmara {

/// What both binary forms share: fields of the list, and somewhere a count and as many items.
template <class List, class Item> class BinaryListSource : public ListSource<List, Item>
{
public:
    bool next(List& list) final
    {
        try {
            if (std::exchange(m_isAtBeginning, false))
                begin(list);
            while (m_items <= 0) // whatever a damaged count says
                if (!readOn(list))
                    return false;
            --m_items;
            readItem(list);
            return true;
        } catch (TALLYFORM::TallyFormException& failure) {
            if (failure.GetFault().place.text().isEmpty())
                failure.GetFault().place = m_window.place();
            throw;
        }
    }

protected:
    BinaryListSource(const QString& path, std::optional<quint32> tag) : m_window(path, tag) {}

    virtual void begin(List& list) = 0;
    /// Reads up to items; false if none are to come.
    virtual bool readOn(List& list) = 0;
    virtual void readItem(List& list) = 0;

    kernel::BinarySource& in() { return m_window.in(); }
    [[noreturn]] void fail(const List& list, const char* text) const
    {
        throw TALLYFORM::BinaryParsingException(QString(QLatin1String(text)).arg(list.GetObjectName()),
                                                TALLYFORM::Fault::Kind::Damaged);
    }

    Window m_window;
    qint32 m_items = 0; ///< those to come

private:
    bool m_isAtBeginning = true;
};

template <class List, class Item> class TaggedSource final : public BinaryListSource<List, Item>
{
public:
    explicit TaggedSource(const QString& path) : BinaryListSource<List, Item>(path, quint32(List::id)) {}

private:
    static constexpr const char* ofAnotherLength
        = "The binary representation of '%1' is of another length than it says.";

    using BinaryListSource<List, Item>::m_window;
    using BinaryListSource<List, Item>::m_items;
    using BinaryListSource<List, Item>::in;
    using BinaryListSource<List, Item>::fail;

    void begin(List& list) override
    {
        quint32 tag = 0;
        if (m_window.hold(frameSize))
            in() >> tag;
        if (tag != quint32(List::id))
            fail(list, "No binary representation of '%1'.");
        qint32 length = 0;
        in() >> length;
        m_left = length;
        kernel::Record<List>::propagate(list);
        kernel::Record<List>::ownData(list);
    }

    bool readOn(List& list) override
    {
        if (m_left <= 0) {
            if (m_left < 0 || !m_window.atEnd())
                fail(list, ofAnotherLength);
            return false;
        }
        quint32 tag = 0;
        qint32 length = 0;
        if (!m_window.hold(frameSize))
            fail(list, ofAnotherLength);
        in() >> tag >> length;
        m_left -= frameSize + qint64(length);
        bool areItems = false;
        withItems<Item>(list, [&](const kernel::Member& m, const auto&) { areItems = m.tag == tag; });
        if (!m_window.hold(areItems ? int(sizeof m_items) : length))
            fail(list, ofAnotherLength);
        if (areItems)
            in() >> m_items;
        else
            kernel::readField(list, in(), tag, length);
        if (!in().isOk())
            fail(list, ofAnotherLength);
        return true;
    }

    void readItem(List& list) override
    {
        if (!m_window.hold(sizeof(qint32)) || !m_window.hold(qint64(sizeof(qint32)) + m_window.nextWord()))
            fail(list, ofAnotherLength);
        withItems<Item>(list, [&](const kernel::Member& m, auto& items) {
            kernel::TaggedReader(list, kernel::Record<List>::ownData(list), in(), 0).readItem(m, items);
        });
    }

    static constexpr int frameSize = 8; // tag and length
    qint64 m_left = 0;                  ///< how much of the list's frame is to come
};

template <class List, class Item> class PackedSource final : public BinaryListSource<List, Item>
{
public:
    explicit PackedSource(const QString& path) : BinaryListSource<List, Item>(path, std::nullopt) {}

private:
    using BinaryListSource<List, Item>::m_window;
    using BinaryListSource<List, Item>::m_items;
    using BinaryListSource<List, Item>::in;
    using BinaryListSource<List, Item>::fail;

    void begin(List& list) override
    {
        kernel::Record<List>::propagate(list);
        m_window.readWhole([&] { readHeading(list); }, [&] { list.Reset(); });
        if (!in().isOk())
            fail(list, "The packed form of '%1' ends early.");
    }

    /// The items stand behind all else.
    void readHeading(List& list)
    {
        auto& data = kernel::Record<List>::ownData(list);
        kernel::BinarySource& source = in();
        qint32& count = m_items;
        data.bits = kernel::getBits<std::remove_reference_t<decltype(data)>::count>(source);
        if constexpr (kernel::IsVersioned<List>) {
            const quint64 bits = std::exchange(data.bits, 0);
            const QString version = kernel::getVersion(list, source, List::schemaVersion());
            data.bits = bits;
            kernel::upgrade(list, version);
        }
        kernel::visit(data, [&]<class T>(const kernel::Member& m, T& field) {
            if constexpr (!std::is_same_v<T, QVector<Item>>)
                kernel::PackedReader(list, data, source)(m, field);
            else if (kernel::isCountWritten(data, m))
                source >> count;
        });
    }

    bool readOn(List& list) override
    {
        if (!m_window.atEnd())
            fail(list, "More follows behind the packed form of '%1'.");
        return false;
    }

    void readItem(List& list) override
    {
        withItems<Item>(list, [&](const kernel::Member& m, auto& items) {
            m_window.readWhole(
                [&] { kernel::PackedReader(list, kernel::Record<List>::ownData(list), in()).readItem(m, items); },
                [&] { items.clear(); });
        });
        if (!in().isOk())
            fail(list, "The packed form of '%1' ends early.");
    }
};

} // namespace Velmara
