#pragma once

#include <QFile>
#include <QString>
#include <QStringView>
#include <QTextCodec>

namespace Velmara::csv {

/// Lines as QTextStream::readLine(maxLineLength) gives them: without their ends, long ones in pieces.
class Lines
{
public:
    virtual ~Lines();
    virtual bool atEnd() = 0;
    /// Empty at the end; valid until the next call of any kind.
    virtual QStringView next() = 0;
    /// Whether one of the lines that are left holds something.
    bool haveContent();
};

/// The lines of a text, which must outlive them. They end in line feeds alone.
class TextLines final : public Lines
{
public:
    explicit TextLines(QStringView text) : m_rest(text) {}
    bool atEnd() override { return m_rest.isEmpty(); }
    QStringView next() override;

private:
    QStringView m_rest;
};

/// The text of a file, which is UTF-8 unless a byte order mark tells otherwise, without its carriage returns. Tells
/// whether it holds bytes that are no characters, which become U+FFFD. Throws TallyException if it cannot be read.
QString readText(const QString& fileName, bool& isMisencoded);

/// The lines of such a file, of which a part is in memory.
class FileLines final : public Lines
{
public:
    /// Throws TallyException if the file cannot be opened.
    explicit FileLines(const QString& fileName);
    ///@{
    /// Throws TallyException if the file cannot be read.
    bool atEnd() override;
    QStringView next() override;
    ///@}
    /// Whether what was read so far holds bytes that are no characters.
    bool isMisencoded() const { return m_state.invalidChars > 0 || m_state.remainingChars > 0; }

private:
    /// Gives what is in memory, with a whole line in it if there is one.
    QStringView rest();

    QFile m_file;
    QTextCodec* m_codec = nullptr; ///< of which the first bytes tell
    QTextCodec::ConverterState m_state;
    QString m_text;
    int m_at = 0; ///< what of the text was given
};

} // namespace Velmara::csv
