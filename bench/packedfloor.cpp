#include "bench/floors.h"
#include "bench/require.h"

#include "base/converters.h"
#include "frequencystore/reflection.h"

#include <google/protobuf/text_format.h>

namespace Velmara::bench {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::TextFormat;
using TALLYFORM::ITallyObject;

namespace {

/// What is in a list, to tell whether two hold the same. Sums may be taken in another order.
struct Values
{
    qint64 count = 0;
    qint64 numbers = 0;
    double sum = 0;

    void take(const QString& text)
    {
        bool isNumber = false;
        sum += text.toDouble(&isNumber);
        numbers += isNumber;
        ++count;
    }
    bool operator==(const Values& other) const
    {
        return count == other.count && numbers == other.numbers && isNear(sum, other.sum);
    }
};

/// A message of the type that was generated for a record class.
std::unique_ptr<Message> messageFor(const ITallyObject& record)
{
    const auto* type = google::protobuf::DescriptorPool::generated_pool()->FindMessageTypeByName(
        "velmara.message." + DescriptionOf(record).name.toStdString());
    require(type, "each record class has a message type");
    return std::unique_ptr<Message>(google::protobuf::MessageFactory::generated_factory()->GetPrototype(type)->New());
}

/// A value in the text format of protocol buffers.
std::string literalOf(const MemberDescription& member, const QString& text)
{
    switch (member.kind) {
    case MemberDescription::Kind::Text: return '"' + google::protobuf::CEscape(text.toStdString()) + '"';
    case MemberDescription::Kind::Enumeration: return std::to_string(member.names.indexOf(text));
    case MemberDescription::Kind::DateTime:
        return std::to_string(TALLYFORM::Converters::ToDateTime(text).toMSecsSinceEpoch());
    default: return text.toStdString();
    }
}

void fill(Message& message, const ITallyObject& record)
{
    const auto& reflection = *message.GetReflection();
    for (const MemberDescription& member : DescriptionOf(record).members) {
        const FieldDescriptor* field = message.GetDescriptor()->FindFieldByNumber(member.bit + 1);
        for (const QString& text : member.texts(record))
            require(TextFormat::ParseFieldValueFromString(literalOf(member, text), field, &message),
                    "a field takes each value of its member");
        for (const ITallyObject* child : member.children(record))
            fill(member.isList ? *reflection.AddMessage(&message, field) : *reflection.MutableMessage(&message, field),
                 *child);
    }
}

/// Takes a value as it stands in a document, where times are no numbers.
void take(Values& values, const Message& message, const FieldDescriptor* field, int item)
{
    std::string literal;
    TextFormat::PrintFieldValueToString(message, field, item, &literal);
    const bool isTime = field->cpp_type() == FieldDescriptor::CPPTYPE_INT64;
    values.take(isTime ? QString() : QString::fromStdString(literal));
}

void takeAll(Values& values, const Message& message)
{
    const auto& reflection = *message.GetReflection();
    std::vector<const FieldDescriptor*> fields;
    reflection.ListFields(message, &fields);
    for (const FieldDescriptor* field : fields) {
        const bool isList = field->is_repeated();
        for (int i = 0; i < (isList ? reflection.FieldSize(message, field) : 1); ++i)
            if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE)
                take(values, message, field, isList ? i : -1);
            else
                takeAll(values, isList ? reflection.GetRepeatedMessage(message, field, i)
                                       : reflection.GetMessage(message, field));
    }
}

} // namespace

PackedFloor::PackedFloor(const ITallyObject& record, const std::vector<XmlToken>& tokens)
    : m_message(messageFor(record))
{
    fill(*m_message, record);
    m_bytes = write();
    Values document, message;
    for (const XmlToken& token : tokens)
        if (token.hasText() && !token.isVersion())
            document.take(token.text);
    takeAll(message, *read(m_bytes));
    require(message == document, "the message holds the values of the document");
}

std::string PackedFloor::write() const
{
    std::string bytes;
    require(m_message->SerializeToString(&bytes), "a message is written");
    return bytes;
}

std::unique_ptr<Message> PackedFloor::read(const std::string& bytes) const
{
    std::unique_ptr<Message> message(m_message->New());
    require(message->ParseFromString(bytes), "a message is read");
    return message;
}

} // namespace Velmara::bench
