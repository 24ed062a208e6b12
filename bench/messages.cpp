/// Prints the message types of protocol buffers that have the members of the records, for the floor of packed binary.

#include "frequencystore/reflection.h"

#include <QTextStream>

using namespace Velmara;

namespace {

QString typeOf(const MemberDescription& member)
{
    using Kind = MemberDescription::Kind;
    switch (member.kind) {
    case Kind::Double: return "double";
    case Kind::Int: return "int32";
    case Kind::UnsignedInt: return "uint32";
    case Kind::UnsignedInt64: return "uint64";
    case Kind::Bool: return "bool";
    case Kind::Text: return "string";
    case Kind::DateTime: return "int64";
    case Kind::Enumeration: return member.name;
    case Kind::Record: return member.record().name;
    }
    return {};
}

/// Fields are numbered as the members stand in packed binary, from 1.
QString fieldOf(const MemberDescription& member)
{
    return QStringLiteral("%1 %2 = %3;\n").arg(typeOf(member), member.name.toLower()).arg(member.bit + 1);
}

/// Its names are unique within the message only with that of the enumeration.
void printEnumeration(QTextStream& out, const MemberDescription& member)
{
    out << "enum " << member.name << " {\n";
    for (int value = 0; value < member.identifiers.size(); ++value)
        out << member.name << '_' << member.identifiers[value] << " = " << value << ";\n";
    out << "}\n";
}

void printMessage(QTextStream& out, const RecordDescription& record)
{
    using Need = MemberDescription::Need;
    QString alternatives;
    out << "message " << record.name << " {\n";
    for (const MemberDescription& member : record.members) {
        if (member.kind == MemberDescription::Kind::Enumeration)
            printEnumeration(out, member);
        if (member.need == Need::Alternative)
            alternatives += fieldOf(member);
        else
            out << (member.isList ? "repeated " : "optional ") << fieldOf(member);
    }
    if (record.choice)
        out << "oneof " << record.choice->name << " {\n" << alternatives << "}\n";
    out << "}\n";
}

} // namespace

int main()
{
    QTextStream out(stdout);
    out << "syntax = \"proto2\";\npackage velmara.message;\n";
    for (const RecordDescription* record : RecordDescriptions())
        printMessage(out, *record);
}
