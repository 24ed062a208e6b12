#pragma once

/// Files of cases, and what comes of each. Where something else comes of one, the test fails and shows the difference;
/// with VELMARA_ACCEPT=1 the file takes it over.

#include "recordfixture.h"

#include <QFile>

inline QString fixture(const QString& name)
{
    QFile file(VELMARA_FIXTURES "/" + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return QString::fromUtf8(file.readAll());
}

/// Holds a file below the fixtures against what `tell` makes of its text.
template <class Tell> void expectGolden(const QString& name, Tell tell)
{
    const QString known = fixture(name);
    const std::string told = tell(known).toStdString();
    if (!qEnvironmentVariableIsSet("VELMARA_ACCEPT")) {
        EXPECT_EQ(known.toStdString(), told) << "If that is meant: ./dev accept";
        return;
    }
    QFile file(VELMARA_FIXTURES "/" + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(told.data(), qint64(told.size()));
}

/// A file of cases: a line "== " and the head, what is given, a line "-->", and what `run(head, given)` tells.
template <class Run> void expectCases(const QString& name, Run run)
{
    const QString start = QStringLiteral("\n== "), end = QStringLiteral("\n-->\n");
    expectGolden(name, [&](const QString& known) {
        QStringList cases = known.split(start);
        for (int i = 1; i < cases.size(); ++i) {
            const QString asked = cases[i].section(end, 0, 0);
            cases[i] = asked + end + run(asked.section('\n', 0, 0), asked.section('\n', 1));
        }
        return cases.join(start);
    });
}

/// A file of rows: cells that are given, and behind the last " | " what `run(cells)` tells.
template <class Run> void expectRows(const QString& name, Run run)
{
    const QString separator = QStringLiteral(" | ");
    expectGolden(name, [&](const QString& known) {
        QStringList rows = known.split('\n');
        for (QString& row : rows)
            if (!row.isEmpty() && !row.startsWith('#'))
                row = row.section(separator, 0, -2) + separator + run(row.section(separator, 0, -2).split(separator));
        return rows.join('\n');
    });
}

/// Takes \n, \r and \uXXXX for the characters that they stand for.
inline QString unescaped(QString text)
{
    text.replace("\\n", "\n").replace("\\r", "\r");
    for (int at = text.indexOf("\\u"); at >= 0; at = text.indexOf("\\u"))
        text.replace(at, 6, QChar(text.mid(at + 2, 4).toUShort(nullptr, 16)));
    return text;
}
