#pragma once

/// What tests of files share: a scratch folder, texts in files, and the traces that an operation leaves.

#include "recordfixture.h"

#include <QFile>
#include <QTemporaryDir>

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
