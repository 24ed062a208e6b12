#include "fuzz/subject.h"

#include "frequencystore/kernel/forms/text.h"
#include "frequencystore/records/allrecords.h"
#include "tests/pipe.h"
#include "tests/recordforms.h"

#include <QtEndian>

#include <algorithm>

namespace Velmara::fuzz {

namespace {

template <class R> void putExact(const R& record, QDataStream& out);

/// Gathers what is to be written and is not nothing: what a text form writes of a member without a value comes back as
/// an empty one.
struct PutExact
{
    const kernel::RecordData& data;
    QDataStream& out;

    template <class T> void operator()(const kernel::Member& m, const T& field) const
    {
        if (kernel::isWritten<T>(data, m))
            put(field);
    }
    template <class T> void operator()(const kernel::Member& m, const QVector<T>& list) const
    {
        if (kernel::IsRecord<T> && m.isMandatory() && !data.isSet(m))
            return;
        for (const T& item : list)
            put(item);
    }

private:
    template <class T> void put(const T& field) const
    {
        if constexpr (kernel::IsEnum<T>)
            out << (int(field) == -1 ? QByteArray() : QByteArray::number(int(field)));
    }
    template <kernel::IsRecord T> void put(const T& record) const
    {
        if (!record.GetValidate() || record.HasData())
            putExact(record, out);
    }
    void put(QString text) const // XML knows one line end
    {
        out << QString(text + QLatin1Char('.')).replace(QLatin1String("\r\n"), QLatin1String("\n")).replace('\r', '\n');
    }
    void put(const QDateTime& time) const { out << (time.isValid() ? time.toMSecsSinceEpoch() : -1); }
};

template <class R> void putExact(const R& record, QDataStream& out)
{
    if (const auto* const data = kernel::Record<R>::peekData(record))
        kernel::visit(*data, PutExact{*data, out});
}

using ExactContent = QByteArray (*)(const TALLYFORM::ITallyObject& record);

/// In the order of the descriptions.
template <class... R> QVector<ExactContent> exactContents(RecordTypes<R...>)
{
    return {[](const TALLYFORM::ITallyObject& record) {
        return bytesOf([&](QDataStream& out) { putExact(static_cast<const R&>(record), out); });
    }...};
}

} // namespace

Subject Subject::another() const
{
    Subject empty{of};
    empty.record->SetValidate(record->GetValidate());
    return empty;
}

QByteArray Subject::exactContent() const
{
    static const QVector<ExactContent> contents = exactContents(AllRecords());
    return contents[RecordDescriptions().indexOf(&of)](*record);
}

Subject chooseSubject(Input& input)
{
    const auto& all = RecordDescriptions();
    const quint32 tag = input.word();
    const auto found = std::find_if(all.begin(), all.end(), [tag](const auto* each) { return each->id == tag; });
    Subject subject{found != all.end() ? **found : *all[int(tag % quint32(all.size()))]};
    subject.record->SetValidate(!input.bits()[0]);
    return subject;
}

QByteArray choiceOf(const Subject& subject)
{
    QByteArray choice(sizeof(quint32), '\0');
    qToBigEndian(subject.of.id, choice.data());
    return choice + char(!subject.record->GetValidate());
}

QByteArray write(const Subject& subject, Form form)
{
    QByteArray bytes;
    switch (form) {
    case Form::Xml: return subject.record->AppendXml(bytes, false) ? bytes : QByteArray();
    case Form::Tagged: return tagged(*subject.record).mid(2 * sizeof(quint32));
    case Form::Packed: return bytesOf([&](QDataStream& out) { subject.of.getPacked(*subject.record, out); });
    case Form::Compressed: return subject.record->GetCompressedBinaryRepresentationAsQByteArray();
    }
    return bytes;
}

bool read(Subject& subject, Form form, const QByteArray& bytes)
{
    QDataStream stream(bytes);
    switch (form) {
    case Form::Xml: return subject.record->SetXmlString(QString::fromUtf8(bytes), false);
    case Form::Tagged: subject.record->SetBinary(stream, bytes.size()); return true;
    case Form::Packed: subject.of.setPacked(*subject.record, stream); return true;
    case Form::Compressed: return subject.record->SetBinaryRepresentation(bytes);
    }
    return false;
}

void readFromStream(Input& input, const std::function<void(QDataStream& stream, int size)>& read)
{
    const std::bitset<8> options = input.bits();
    const QByteArray bytes = input.rest();
    QDataStream memory(bytes);
    Pipe pipe(bytes);
    QDataStream fromPipe(&pipe);
    QDataStream& stream = options[0] ? fromPipe : memory;
    stream.setByteOrder(options[1] ? QDataStream::LittleEndian : QDataStream::BigEndian);
    stream.setVersion(options[2] ? QDataStream::Qt_5_0 : QDataStream::Qt_5_15);
    stream.setFloatingPointPrecision(options[3] ? QDataStream::SinglePrecision : QDataStream::DoublePrecision);
    qint32 size = bytes.size();
    if (options[4])
        stream >> size;
    read(stream, size);
}

void exercise(const Subject& subject)
{
    const auto compare = [&](const Subject& other) { subject.of.areEqual(*subject.record, *other.record); };
    const Subject copy = subject.another();
    subject.record->HasData();
    compare(copy);
    isDone([&] { subject.record->Check(); });
    const bool hasFaults = !subject.record->FindFaults().isEmpty();
    for (const Form form : {Form::Xml, Form::Tagged, Form::Packed})
        isDone([&] { write(subject, form); });
    isDone([&] { copy.record->MergeTallyObject(*subject.record); });
    compare(copy);
    copy.record->Reset();
    require(hasFaults || isDone([&] { subject.record->Check(); }), "who has no faults passes the check");
}

} // namespace Velmara::fuzz
