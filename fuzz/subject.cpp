#include "fuzz/subject.h"

#include "frequencystore/kernel/text.h"
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
    if (const auto* const data = kernel::Record<R>::held(record))
        kernel::visit(*data, PutExact{*data, out});
}

template <class R> class SubjectOf final : public Subject
{
public:
    std::unique_ptr<Subject> another() const override
    {
        auto empty = std::make_unique<SubjectOf>();
        empty->m_record.SetValidate(m_record.GetValidate());
        return empty;
    }
    TALLYFORM::ITallyObject& record() override { return m_record; }
    const TALLYFORM::ITallyObject& record() const override { return m_record; }
    quint32 tag() const override { return quint32(R::GetId()); }
    QByteArray packed() const override { return ::packed(m_record); }
    void readPacked(QDataStream& stream) override { m_record.SetVersionSpecificBinaryWithoutValidation(stream); }
    bool equals(const Subject& other) const override
    {
        return m_record == static_cast<const SubjectOf&>(other).m_record;
    }
    QByteArray exactContent() const override
    {
        return bytesOf([this](QDataStream& out) { putExact(m_record, out); });
    }

private:
    R m_record;
};

template <class... R> std::vector<std::unique_ptr<Subject>> subjectsOf(RecordTypes<R...>)
{
    std::vector<std::unique_ptr<Subject>> all;
    (all.push_back(std::make_unique<SubjectOf<R>>()), ...);
    return all;
}

} // namespace

const std::vector<std::unique_ptr<Subject>>& subjects()
{
    static const auto all = subjectsOf(AllRecords());
    return all;
}

std::unique_ptr<Subject> chooseSubject(Input& input)
{
    const auto& all = subjects();
    const quint32 tag = input.word();
    const auto found = std::find_if(all.begin(), all.end(), [tag](const auto& each) { return each->tag() == tag; });
    auto subject = (found != all.end() ? *found : all[tag % all.size()])->another();
    subject->record().SetValidate(!input.bits()[0]);
    return subject;
}

QByteArray choiceOf(const Subject& subject)
{
    QByteArray choice(sizeof(quint32), '\0');
    qToBigEndian(subject.tag(), choice.data());
    return choice + char(!subject.record().GetValidate());
}

QByteArray write(const Subject& subject, Form form)
{
    QByteArray bytes;
    switch (form) {
    case Form::Xml: return subject.record().AppendXml(bytes, false) ? bytes : QByteArray();
    case Form::Tagged: return tagged(subject.record()).mid(2 * sizeof(quint32));
    case Form::Packed: return subject.packed();
    case Form::Compressed: return subject.record().GetCompressedBinaryRepresentationAsQByteArray();
    }
    return bytes;
}

bool read(Subject& subject, Form form, const QByteArray& bytes)
{
    QDataStream stream(bytes);
    switch (form) {
    case Form::Xml: return subject.record().SetXmlString(QString::fromUtf8(bytes), false);
    case Form::Tagged: subject.record().SetBinary(stream, bytes.size()); return true;
    case Form::Packed: subject.readPacked(stream); return true;
    case Form::Compressed: return subject.record().SetBinaryRepresentation(bytes);
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
    subject.record().HasData();
    subject.equals(*subject.another());
    isDone([&] { subject.record().Check(); });
    for (const Form form : {Form::Xml, Form::Tagged, Form::Packed})
        isDone([&] { write(subject, form); });
    const auto copy = subject.another();
    isDone([&] { copy->record().MergeTallyObject(subject.record()); });
    copy->equals(subject);
    copy->record().Reset();
}

} // namespace Velmara::fuzz
