#pragma once

/// What tests of files share: a scratch folder, texts in files, and the traces that an operation leaves.

#include "recordfixture.h"

#include <QFile>
#include <QTemporaryDir>

namespace Velmara {

/// A place in a CSV file, and what stands there.
inline QString told(const CsvCell& cell)
{
    return QStringLiteral("%1 %2 '%3'").arg(QString::number(cell.line), cell.column, cell.text);
}

/// What a report of an export tells, line by line.
inline QString told(const ExportReport& report)
{
    const char* const damages[] = {"LongLine", "BrokenLine", "NoCharacter", "ReadAsUnset", "ReadAsDashes"};
    EXPECT_TRUE(report.isComplete && report.error.isEmpty());
    QString text = QStringLiteral("%1 written\n").arg(report.entries);
    for (const CsvDamagedCell& cell : report.damaged)
        text += damages[int(cell.damage)] + (" at " + told(cell) + '\n');
    for (const int line : report.untuned)
        text += QStringLiteral("untuned at %1\n").arg(line);
    return text;
}

/// What a report of an import tells, line by line.
inline QString told(const ImportReport& report)
{
    EXPECT_EQ(report.isComplete, report.error.isEmpty());
    QStringList lines{QString("%1 read").arg(report.entries)};
    if (!report.isComplete)
        lines += "failed at " + told(report.failed) + ": " + report.error;
    for (const CsvBadRow& row : report.skipped)
        lines += "skipped " + told(row.place) + ": " + row.reason;
    if (report.isMisencoded)
        lines += "misencoded";
    if (report.emptyLine > 0)
        lines += QString("data behind the empty line %1").arg(report.emptyLine);
    for (const CsvCell& cell : report.misread)
        lines += "misread " + told(cell);
    for (const auto& [fault, columns] : {std::pair("unknown ", report.unknownColumns),
                                         {"repeated ", report.repeatedColumns},
                                         {"missing ", report.missingColumns}})
        for (const QString& column : columns)
            lines += fault + column;
    return lines.join('\n') + '\n';
}

} // namespace Velmara

class ExchangeTest : public testing::Test
{
protected:
    ExchangeTest()
    {
        traces().clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& message) { traces().append(message); });
    }
    ~ExchangeTest() override { qInstallMessageHandler(m_previous); }

    static QStringList& traces()
    {
        static QStringList list;
        return list;
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, const QByteArray& text) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path(name);
    }
    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

private:
    QTemporaryDir m_folder;
    QtMessageHandler m_previous;
};
