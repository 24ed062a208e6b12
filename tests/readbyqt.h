#pragma once

/// Two readers of documents, side by side: ours must give what Qt's gives.

#include "base/exceptions.h"
#include "base/plainpull.h"
#include "frequencystore/frequencystore.h"
#include "recorder.h"

#include <QXmlStreamReader>

#include <random>

/// A document that comes in pieces, of random sizes or as large as they are wanted.
class PiecesInput final : public TALLYFORM::XmlInput
{
public:
    explicit PiecesInput(const QByteArray& document, std::mt19937* random = nullptr)
        : m_document(document), m_random(random)
    {}

    int read(char* to, int size) override
    {
        ++m_reads;
        const int wanted = m_random ? std::uniform_int_distribution<int>(leastSize, size)(*m_random) : size;
        const QByteArray piece = m_document.mid(m_at, wanted);
        std::copy(piece.begin(), piece.end(), to);
        m_at += piece.size();
        return piece.size();
    }
    QXmlStreamReader& restart() override
    {
        m_reader.emplace(m_document).setNamespaceProcessing(false);
        return *m_reader;
    }

    int m_reads = 0;

private:
    const QByteArray m_document;
    int m_at = 0;
    std::mt19937* const m_random;
    std::optional<QXmlStreamReader> m_reader;
};

/// Also behind a byte of zero.
inline QString textOf(const QByteArray& utf8) { return QString::fromUtf8(utf8.constData(), utf8.size()); }

/// What a reader gives while it goes by tags and texts at random, line by line; the last tells its end.
inline QStringList transcriptOf(TALLYFORM::XmlPull& document, unsigned seed)
{
    using Tag = TALLYFORM::XmlPull::Tag;
    std::mt19937 random(seed);
    const auto text = [](std::string_view utf8) { return textOf(QByteArray(utf8.data(), int(utf8.size()))); };
    const auto place = [&] {
        const QXmlStreamReader& reader = document.reader();
        return QStringLiteral("at %1, %2").arg(reader.lineNumber()).arg(reader.columnNumber());
    };
    QStringList lines;
    for (Tag tag = document.next(); tag != Tag::None; tag = document.next()) {
        lines += (tag == Tag::Start ? "start " : "end ") + text(document.name());
        if (tag == Tag::Start)
            for (const char* name : {"a", "Version"})
                if (const auto value = document.attribute(name))
                    lines += name + QStringLiteral(": ") + text(*value);
        const unsigned step = random() % 32;
        if (step == 0)
            lines += place();
        else if (tag == Tag::Start && step < 12)
            lines += step % 2 ? "text " + text(document.elementText()) : "string " + document.elementString();
    }
    return lines << (document.hasError() ? document.reader().errorString() + ' ' + place() : "whole");
}

/// The difference between both, if there is one. Of bytes that are no UTF-8, Qt's reader loses what is ahead of them.
inline QString differenceOfReaders(const QByteArray& bytes, unsigned seed)
{
    std::mt19937 random(seed);
    PiecesInput input(bytes, &random);
    TALLYFORM::PlainPull plain(input);
    PiecesInput whole(bytes);
    TALLYFORM::QtPull qt(whole.restart());
    const QStringList expected = transcriptOf(qt, seed), found = transcriptOf(plain, seed);
    const bool isUtf8 = textOf(bytes).toUtf8() == bytes; // but for a byte order mark
    if (isUtf8 ? found == expected : found.last() == expected.last())
        return {};
    return "expected:\n" + expected.join('\n') + "\nfound:\n" + found.join('\n');
}

/// A list of store entries that Qt's reader alone reads, for a class of its own may read elements in its own way.
class ListByQt final : public Velmara::FrequencyStoreList
{};

/// What comes of reading a document: the result, what the failure tells, what was logged, and the content.
template <class Read> QString outcomeOf(Velmara::FrequencyStoreList&& list, bool isValidated, Read read)
{
    const auto log = std::make_shared<Recorder>();
    list.SetValidate(isValidated);
    list.SetLogger(log);
    QStringList outcome;
    try {
        outcome += read(list) ? "read" : "refused";
    } catch (const TALLYFORM::TallyFormException& failure) {
        const TALLYFORM::Fault& fault = failure.GetFault();
        outcome += {fault.place.text(), fault.path, fault.member, fault.message};
    }
    list.SetValidate(false);
    outcome += log->m_messages;
    return (outcome << list.GetXmlString()).join('\n');
}

/// The difference between both in what comes of a list, if there is one.
template <class Read> QString differenceOfLists(bool isValidated, Read read)
{
    const QString expected = outcomeOf(ListByQt(), isValidated, read);
    const QString found = outcomeOf(Velmara::FrequencyStoreList(), isValidated, read);
    return expected == found ? QString() : "expected:\n" + expected + "\nfound:\n" + found;
}
