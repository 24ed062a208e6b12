#pragma once

#include "frequencystore/kernel/model/walk.h"

#include <QStringList>

#include <cmath>
#include <random>

/// Fills records with content that passes Check and that all three forms carry exactly.
class RandomFiller
{
public:
    explicit RandomFiller(unsigned seed) : m_random(seed) {}

    /// With `everything`, sets all members and gives lists two items.
    RandomFiller& setEverything()
    {
        m_everything = true;
        return *this;
    }

    /// Takes texts from these, instead of making up those that a form must quote.
    RandomFiller& setTexts(const QStringList& texts)
    {
        m_texts = texts;
        return *this;
    }

    template <class R> R make()
    {
        R record;
        fill(record);
        return record;
    }

    template <class R> void fill(R& record)
    {
        using namespace Velmara::kernel;
        auto& data = Record<R>::ownData(record);
        const int chosen = below(countOf<alternatives, std::remove_reference_t<decltype(data)>>);
        visit(data, [&](const Member& m, auto& field) {
            const bool isWanted
                = m.isAlternative() ? m.position == chosen : m.isMandatory() || m_everything || below(2);
            if (isWanted) {
                set(m, field);
                data.mark(m);
            }
        });
    }

    int below(int end) { return end > 0 ? std::uniform_int_distribution<int>(0, end - 1)(m_random) : 0; }

private:
    using Member = Velmara::kernel::Member;
    void set(const Member& m, double& value)
    {
        const double scale = std::pow(10., m.precision);
        const double free = 4e9 / (m.precision > 2 ? 1e6 : 1);
        const double lower = m.isBounded ? m.lower : -free, upper = m.isBounded ? m.upper : free;
        value = std::round(std::uniform_real_distribution<double>(lower, upper)(m_random) * scale) / scale;
    }
    void set(const Member&, int& value) { value = below(1 << 30) - (1 << 29); }
    void set(const Member&, unsigned int& value) { value = unsigned(below(1 << 30)); }
    void set(const Member&, quint64& value) { value = quint64(m_random()) << 30; }
    void set(const Member&, bool& value) { value = below(2); }
    void set(const Member&, QString& value)
    {
        if (!m_texts.isEmpty()) {
            value = m_texts[below(m_texts.size())];
            return;
        }
        static const QString letters = QString::fromUtf8("ab Z09<&>\"';-_.\u00e4\u20ac\u4e2d\ufeff\n");
        value = QLatin1String("");
        for (int i = below(12); i > 0; --i)
            value += letters[below(letters.size())];
    }
    void set(const Member&, QDateTime& value)
    {
        value = QDateTime({1990, 1, 1}, {0, 0}, Qt::UTC).addMSecs(qint64(below(1 << 30)) * 1000 + below(1000));
    }
    template <Velmara::kernel::IsEnum E> void set(const Member& m, E& value) { value = E(below(m.names().size())); }
    template <Velmara::kernel::IsRecord T> void set(const Member&, T& child) { fill(child); }
    template <class T> void set(const Member& m, QVector<T>& list)
    {
        for (int i = m_everything ? 2 : 1 + below(3); i > 0; --i) {
            T item{};
            set(m, item);
            list.append(item);
        }
    }

    std::mt19937 m_random;
    bool m_everything = false;
    QStringList m_texts;
};
