#include "bench/packedfloor.h"

#include "base/converters.h"
#include "bench/require.h"
#include "entry.pb.h"

namespace Velmara::bench {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using velmara::message::FrequencyStoreList;

namespace {

/// An enumeration's name in the message type: an identifier, behind that of its type.
std::string identifierOf(const FieldDescriptor& field, QString name)
{
    for (QChar& c : name)
        if (!c.isLetterOrNumber())
            c = QLatin1Char('_');
    return field.enum_type()->name() + '_' + name.toStdString();
}

void setEnum(Message& message, const FieldDescriptor& field, const QString& text)
{
    const auto* value = field.enum_type()->FindValueByName(identifierOf(field, text));
    require(value, "the message type has each name of an enumeration");
    message.GetReflection()->SetEnum(&message, &field, value);
}

/// Sets a field from its text in the document.
void setValue(Message& message, const FieldDescriptor& field, const QString& text)
{
    const auto& fields = *message.GetReflection();
    switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_DOUBLE: fields.SetDouble(&message, &field, text.toDouble()); break;
    case FieldDescriptor::CPPTYPE_INT32: fields.SetInt32(&message, &field, text.toInt()); break;
    case FieldDescriptor::CPPTYPE_UINT64: fields.SetUInt64(&message, &field, text.toULongLong()); break;
    case FieldDescriptor::CPPTYPE_INT64:
        fields.SetInt64(&message, &field, TALLYFORM::Converters::ToDateTime(text).toMSecsSinceEpoch());
        break;
    case FieldDescriptor::CPPTYPE_BOOL: fields.SetBool(&message, &field, text == QLatin1String("true")); break;
    case FieldDescriptor::CPPTYPE_STRING: fields.SetString(&message, &field, text.toStdString()); break;
    case FieldDescriptor::CPPTYPE_ENUM: setEnum(message, field, text); break;
    default: require(false, "the message type has fields of these types only");
    }
}

const FieldDescriptor& fieldOf(const Message& message, const QString& name)
{
    const FieldDescriptor* field = message.GetDescriptor()->FindFieldByName(name.toLower().toStdString());
    require(field, "the message type has each member");
    return *field;
}

/// Builds a message from the tokens of its document.
class Filler
{
public:
    explicit Filler(const std::vector<XmlToken>& tokens) : m_token(tokens.data()) {}

    /// Reads behind the start of the message's element, up to its end.
    void fill(Message& message)
    {
        for (++m_token; m_token->kind != XmlToken::Kind::End; ++m_token) {
            switch (m_token->kind) {
            case XmlToken::Kind::Start: fillMember(message, fieldOf(message, m_token->name)); break;
            case XmlToken::Kind::Attribute: setAttribute(message); break;
            default: setValue(message, fieldOf(message, QStringLiteral("Value")), m_token->text);
            }
        }
    }

private:
    void setAttribute(Message& message)
    {
        if (!m_token->isVersion())
            setValue(message, fieldOf(message, m_token->name), m_token->text);
    }

    void fillMember(Message& message, const FieldDescriptor& field)
    {
        const auto& fields = *message.GetReflection();
        if (field.is_repeated())
            fill(*fields.AddMessage(&message, &field));
        else if (field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE)
            fill(*fields.MutableMessage(&message, &field));
        else
            fillLeaf(message, field);
    }

    void fillLeaf(Message& message, const FieldDescriptor& field)
    {
        ++m_token;
        const bool isEmpty = m_token->kind == XmlToken::Kind::End;
        setValue(message, field, isEmpty ? QString() : m_token->text);
        m_token += !isEmpty;
    }

    const XmlToken* m_token;
};

double numberOf(const Message& message, const FieldDescriptor& field)
{
    const auto& fields = *message.GetReflection();
    switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_DOUBLE: return fields.GetDouble(message, &field);
    case FieldDescriptor::CPPTYPE_INT32: return fields.GetInt32(message, &field);
    case FieldDescriptor::CPPTYPE_UINT64: return double(fields.GetUInt64(message, &field));
    default: return 0;
    }
}

bool isNumber(const FieldDescriptor& field)
{
    const auto type = field.cpp_type();
    return type == FieldDescriptor::CPPTYPE_DOUBLE || type == FieldDescriptor::CPPTYPE_INT32
        || type == FieldDescriptor::CPPTYPE_UINT64;
}

void addTo(Tally& tally, const Message& message)
{
    const auto& reflection = *message.GetReflection();
    std::vector<const FieldDescriptor*> fields;
    reflection.ListFields(message, &fields);
    for (const FieldDescriptor* field : fields) {
        if (field->is_repeated()) {
            for (int i = 0; i < reflection.FieldSize(message, field); ++i)
                addTo(tally, reflection.GetRepeatedMessage(message, field, i));
        } else if (field->cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
            addTo(tally, reflection.GetMessage(message, field));
        } else {
            ++tally.values;
            tally.numbers += isNumber(*field);
            tally.sum += numberOf(message, *field);
        }
    }
}

const FrequencyStoreList& listIn(const std::shared_ptr<void>& list)
{
    return *static_cast<const FrequencyStoreList*>(list.get());
}

} // namespace

bool PackedFloor::isAvailable() { return true; }

PackedFloor::PackedFloor(const std::vector<XmlToken>& tokens)
{
    const auto list = std::make_shared<FrequencyStoreList>();
    Filler(tokens).fill(*list);
    m_list = list;
}

std::string PackedFloor::write() const
{
    std::string bytes;
    require(listIn(m_list).SerializeToString(&bytes), "a message is written");
    return bytes;
}

std::shared_ptr<void> PackedFloor::read(const std::string& bytes)
{
    const auto list = std::make_shared<FrequencyStoreList>();
    require(list->ParseFromString(bytes), "a message is read");
    return list;
}

Tally PackedFloor::tallyOf(const std::string& bytes)
{
    Tally tally;
    addTo(tally, listIn(read(bytes)));
    return tally;
}

} // namespace Velmara::bench
