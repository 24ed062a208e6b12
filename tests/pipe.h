#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

/// A pipe: nothing but reading on, a few bytes at a time.
class Pipe : public QIODevice
{
public:
    explicit Pipe(const QByteArray& bytes) : m_bytes(bytes) { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_at + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        const QByteArray piece = m_bytes.mid(m_at, int(size));
        std::copy(piece.begin(), piece.end(), data);
        m_at += piece.size();
        return piece.size();
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    int m_at = 0;
};
