#include "frequencystore/reflection.h"

#include "base/exceptions.h"
#include "frequencystore/records/allrecords.h"

#include <QDebug>
#include <QHash>

#include <algorithm>
#include <typeindex>
#include <unordered_map>

namespace Velmara {

namespace {

using Descriptions = QVector<const RecordDescription*>;
using ByType = std::unordered_map<std::type_index, const RecordDescription*>;

template <class... R> Descriptions describeAll(RecordTypes<R...>) { return {&kernel::Record<R>::description()...}; }
template <class... R> ByType describeByType(RecordTypes<R...>)
{
    return {{typeid(R), &kernel::Record<R>::description()}...};
}

/// What `print` gives of each item, behind one another.
template <class List, class Print> void printList(QDebug& debug, const List& list, Print print)
{
    const char* separator = "";
    for (const auto& item : list) {
        debug << separator;
        print(item);
        separator = ", ";
    }
}

void printContent(QDebug& debug, const MemberDescription& member, const TALLYFORM::ITallyObject& record)
{
    const auto printRecord = [&](const TALLYFORM::ITallyObject* child) { debug << *child; };
    const auto printText = [&](const QString& text) {
        if (member.kind == MemberDescription::Kind::Text)
            debug << text;
        else
            debug << qUtf8Printable(text.trimmed());
    };
    debug << qUtf8Printable(member.name) << (member.isList ? ": [" : ": ");
    if (member.holdsRecords())
        printList(debug, member.children(record), printRecord);
    else
        printList(debug, member.texts(record), printText);
    debug << (member.isList ? "]" : "");
}

} // namespace

const MemberDescription* RecordDescription::member(const QString& name) const
{
    const auto found
        = std::find_if(members.begin(), members.end(), [&](const MemberDescription& m) { return m.name == name; });
    return found == members.end() ? nullptr : found;
}

const QVector<const RecordDescription*>& RecordDescriptions()
{
    static const Descriptions all = describeAll(AllRecords());
    return all;
}

const RecordDescription* FindRecordDescription(const QString& name)
{
    const Descriptions& all = RecordDescriptions();
    const auto found
        = std::find_if(all.begin(), all.end(), [&](const RecordDescription* record) { return record->name == name; });
    return found == all.end() ? nullptr : *found;
}

const RecordDescription& DescriptionOf(const TALLYFORM::ITallyObject& record)
{
    static const ByType byType = describeByType(AllRecords());
    const auto found = byType.find(typeid(record));
    if (found == byType.end())
        throw TALLYFORM::TallyException(QStringLiteral("There is no description of '%1'.").arg(record.GetObjectName()));
    return *found->second;
}

} // namespace Velmara

QDebug TALLYFORM::operator<<(QDebug debug, const ITallyObject& record)
{
    using namespace Velmara;
    const QDebugStateSaver saver(debug);
    debug.nospace();
    const RecordDescription& description = DescriptionOf(record);
    debug << qUtf8Printable(description.name) << "(";
    QVector<MemberDescription> set;
    for (const MemberDescription& member : description.members)
        if (member.isSet(record))
            set += member;
    printList(debug, set, [&](const MemberDescription& member) { printContent(debug, member, record); });
    debug << ")";
    return debug;
}
