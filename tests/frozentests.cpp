/// The rows of each schema version stay as they were published: readers of older versions rely on them.

#include "frequencystore/reflection.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QFile>
#include <QSet>
#include <QTextStream>

using namespace Velmara;

namespace {

/// All that the forms make of the rows; of children without a version of their own too, for they have none to raise.
QString rowsOf(const RecordDescription& record)
{
    QString rows;
    QTextStream out(&rows);
    for (const MemberDescription& m : record.members) {
        out << m.element << '\t' << QString::number(m.tag, 16) << '\t' << int(m.kind) << '\t' << int(m.isList) << '\t'
            << int(m.need) << '\t' << int(m.form) << '\t';
        if (m.range)
            out << m.range->lower << ".." << m.range->upper;
        out << '\t' << m.width << '.' << m.decimals << '\t' << m.names.join('|') << '\n';
        if (m.holdsRecords())
            out << (m.record().version.isNull() ? rowsOf(m.record()) : m.record().name + '\n');
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
            = name + ' ' + QCryptographicHash::hash(rowsOf(*record).toUtf8(), QCryptographicHash::Sha1).toHex();
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
