#include "schema.h"

using namespace Velmara;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

QString row(const QStringList& cells) { return QStringLiteral("| %1 |\n").arg(cells.join(QStringLiteral(" | "))); }
QString code(const QString& text) { return QStringLiteral("`%1`").arg(text); }

} // namespace

QString columnsAsMarkdown()
{
    const QStringList types = FrequencyStoreListHelper::GetListTypes();
    QString page = QStringLiteral("# The columns of CSV files\n");
    for (int type = 0; type <= int(ListType::DetectionResult); ++type) {
        page += QStringLiteral("\n## %1\n\n").arg(types[type])
              + row({QStringLiteral("Column"), QStringLiteral("Member"), QStringLiteral("Form")})
              + QStringLiteral("|---|---|---|\n");
        for (const CsvColumnDescription& column : FileHandling::DescribeCSV(ListType(type)))
            page += row({code(column.name), code(column.member), column.form});
    }
    return page;
}
