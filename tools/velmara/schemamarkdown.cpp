#include "schema.h"

#include <QMap>

#include <algorithm>

using namespace Velmara;

namespace {

using Form = MemberDescription::Form;

const char introduction[] = R"(# The records

What every record class is made of, and how its members look in files. The program `velmara schema --markdown` writes
this page from the library itself. The largest records come first; the classes by name:

)";

const char legend[] = R"(
A table has a line for each member:

- **Member**: X of `SetX` and `GetX`, and behind it the name of the element in XML where that is another.
- **Kind**: the type of the content. A list repeats its element.
- **Need**: what is mandatory must be set when a record is checked. Of the alternatives of a choice a record holds one at
  a time. A member is an element in XML unless it is called an attribute or the content, which is the text of the element.
- **Text**: how the value looks in XML and in tagged binary. A text of a lesser width gets blanks on its left. Values
  beyond a range, and names that are not listed, are refused under validation. Where the C++ enumerator differs from the
  name, it stands behind it. Integers, bools (`true`, `false`), texts and date-times (`2026-11-22T20:15:00,250Z`, UTC)
  look the same everywhere.
- **Default**: the value after `Reset`; *written* where `ResetToDefault` marks the member as present.
- **Tag**: of the field in tagged binary. **Bit**: the place in packed binary.

[formats.md](formats.md) describes the forms.
)";

QString code(const QString& text) { return QString("`%1`").arg(text); }
QString hex(quint32 number) { return code("0x" + QString::number(number, 16).toUpper().rightJustified(8, '0')); }
QString list(const QStringList& texts) { return texts.join(", "); }
QString row(const QStringList& cells) { return QString("| %1 |\n").arg(cells.join(" | ")); }

QString link(const RecordDescription& record) { return QString("[%1](#%2)").arg(record.name, record.name.toLower()); }

/// Links to the records for which a function gives true, by name.
template <class IsMeant> QString links(IsMeant isMeant)
{
    QMap<QString, QString> links;
    for (const RecordDescription* record : RecordDescriptions())
        if (isMeant(*record))
            links.insert(record->name.toLower(), link(*record));
    return list(links.values());
}

bool holds(const RecordDescription& whole, const RecordDescription& part)
{
    return std::any_of(whole.members.begin(), whole.members.end(), [&](const MemberDescription& member) {
        return member.holdsRecords() && &member.record() == &part;
    });
}

QString nameOf(const MemberDescription& member)
{
    const QString name = code(member.name);
    return member.element == member.name ? name : QString("%1 (%2)").arg(name, code(member.element));
}

QString kindOf(const MemberDescription& member)
{
    const QString kind = member.holdsRecords() ? link(member.record()) : wordFor(member.kind);
    return member.isList ? QString("list of %1").arg(kind) : kind;
}

QString needOf(const MemberDescription& member)
{
    const QString need = wordFor(member.need);
    return member.form == Form::Element ? need : QString("%1 %2").arg(need, wordFor(member.form));
}

QString numberFormOf(const MemberDescription& member)
{
    QStringList texts{QString("%1 decimals").arg(member.decimals)};
    if (member.width > 0)
        texts += QString("width %1").arg(member.width);
    if (member.range)
        texts += QString("%1 to %2").arg(textOf(member.range->lower), textOf(member.range->upper));
    return list(texts);
}

QString textFormOf(const MemberDescription& member)
{
    if (member.kind == MemberDescription::Kind::Double)
        return numberFormOf(member);
    QStringList names; // of an enumeration
    for (int i = 0; i < member.names.size(); ++i)
        names += member.names[i] == member.identifiers[i]
                   ? code(member.names[i])
                   : QString("%1 (%2)").arg(code(member.names[i]), member.identifiers[i]);
    return list(names);
}

QString defaultOf(const MemberDescription& member)
{
    const QString value = member.initialText.isEmpty() ? QString() : code(member.initialText.trimmed());
    return member.isMarkedByDefault ? QString("%1 *written*").arg(value).trimmed() : value;
}

QString choiceOf(const ChoiceDescription& choice)
{
    QStringList alternatives;
    for (const QString& name : choice.alternatives)
        alternatives += code(name);
    return QString("The choice %1 holds %2 one of %3.\n\n")
        .arg(code(choice.name), choice.isMandatory ? "exactly" : "at most", list(alternatives));
}

QString sectionOf(const RecordDescription& record)
{
    QString text
        = QString("\n## %1\n\nElement %2, identifier %3").arg(record.name, code(record.element), hex(record.id));
    if (!record.version.isNull())
        text += QString(", schema version %1").arg(record.version);
    text += '.';
    const QString holders = links([&](const RecordDescription& other) { return holds(other, record); });
    if (!holders.isEmpty())
        text += QString(" Part of %1.").arg(holders);
    text += "\n\n";
    if (record.choice)
        text += choiceOf(*record.choice);
    text += "| Member | Kind | Need | Text | Default | Tag | Bit |\n|---|---|---|---|---|---|---|\n";
    for (const MemberDescription& member : record.members)
        text += row({nameOf(member), kindOf(member), needOf(member), textFormOf(member), defaultOf(member),
                     hex(member.tag), QString::number(member.bit)});
    return text;
}

} // namespace

QString recordsAsMarkdown()
{
    const auto& records = RecordDescriptions();
    QString text = QString(introduction) + links([](const RecordDescription&) { return true; }) + '\n' + legend;
    std::for_each(records.rbegin(), records.rend(),
                  [&](const RecordDescription* record) { text += sectionOf(*record); });
    return text;
}

QString columnsAsMarkdown()
{
    using ListType = FrequencyStoreListHelper::ListType;
    const QStringList types = FrequencyStoreListHelper::GetListTypes();
    QString page = "# The columns of CSV files\n";
    for (int type = 0; type <= int(ListType::DetectionResult); ++type) {
        page += QString("\n## %1\n\n| Column | Member | Form |\n|---|---|---|\n").arg(types[type]);
        for (const CsvColumnDescription& column : FileHandling::DescribeCSV(ListType(type)))
            page += row({code(column.name), code(column.member), column.form});
    }
    return page;
}
