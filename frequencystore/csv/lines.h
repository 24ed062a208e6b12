#pragma once

#include <QString>
#include <QStringView>

namespace Velmara::csv {

/// Lines as QTextStream::readLine(maxLineLength) gives them: without their ends, long ones in pieces.
class Lines
{
public:
    virtual ~Lines();
    virtual bool atEnd() const = 0;
    /// Empty at the end; valid until the next call.
    virtual QStringView next() = 0;
    /// Whether one of the lines that are left holds something.
    bool haveContent();
};

/// The lines of a text, which must outlive them. They end in line feeds alone.
class TextLines final : public Lines
{
public:
    explicit TextLines(QStringView text) : m_rest(text) {}
    bool atEnd() const override { return m_rest.isEmpty(); }
    QStringView next() override;

private:
    QStringView m_rest;
};

/// The text of a file, which is UTF-8 unless a byte order mark tells otherwise, without its carriage returns. Tells
/// whether it holds bytes that are no characters, which become U+FFFD. Throws TallyException if it cannot be read.
QString readText(const QString& fileName, bool& isMisencoded);

} // namespace Velmara::csv
