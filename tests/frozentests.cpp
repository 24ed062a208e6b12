/// The rows of each schema version stay as they were published: readers of older versions rely on them.

#include "frequencystore/reflection.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QFile>
#include <QSet>

using namespace Velmara;

namespace {

/// All that the forms make of the rows; of children without a version of their own too, for they have none to raise.
QByteArray rowsOf(const RecordDescription& record)
{
    QByteArray rows;
    for (const MemberDescription& m : record.members) {
        const QStringList facts{m.element,
                                QString::number(m.tag, 16),
                                QString::number(int(m.kind)),
                                QString::number(m.isList),
                                QString::number(int(m.need)),
                                QString::number(int(m.form)),
                                m.range ? QString("%1..%2").arg(m.range->lower).arg(m.range->upper) : QString(),
                                QString("%1.%2").arg(m.width).arg(m.decimals),
                                m.names.join('|')};
        rows += facts.join('\t').toUtf8() + '\n';
        if (m.holdsRecords())
            rows += m.record().version.isNull() ? rowsOf(m.record()) : m.record().name.toUtf8() + '\n';
    }
    return rows;
}

} // namespace

TEST(Frozen, ARowChangesWithASchemaVersionAlone)
{
    QFile file(VELMARA_FIXTURES "/schemaversions.txt");
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QList<QByteArray> known = file.readAll().split('\n');
    QSet<const RecordDescription*> held;
    for (const RecordDescription* const record : RecordDescriptions())
        for (const MemberDescription& member : record->members)
            held += member.holdsRecords() ? &member.record() : nullptr;
    for (const RecordDescription* const record : RecordDescriptions()) {
        if (record->version.isNull() && held.contains(record))
            continue; // it is among the rows of those that hold it
        const QString version = record->version.isNull() ? "-" : record->version;
        const QByteArray name = (record->name + ' ' + version).toUtf8();
        const QByteArray line
            = name + ' ' + QCryptographicHash::hash(rowsOf(*record), QCryptographicHash::Sha1).toHex();
        const bool isPublished = std::any_of(known.begin(), known.end(),
                                             [&](const QByteArray& each) { return each.startsWith(name + ' '); });
        if (!isPublished && qEnvironmentVariableIsSet("VELMARA_ACCEPT"))
            file.write(line + '\n');
        else
            EXPECT_TRUE(known.contains(line))
                << (isPublished ? "The rows of this version were published as others: raise the version of "
                                : "To publish this version, run the test again with VELMARA_ACCEPT=1: ")
                << name.toStdString();
    }
}
