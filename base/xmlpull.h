#pragma once

#include "base/tallybase_export.h"

#include <QByteArray>
#include <QString>
#include <QVarLengthArray>
#include <QXmlStreamReader>

#include <optional>
#include <string_view>

namespace TALLYFORM {

/// The tags of a document, one after the other. Texts are UTF-8 and views of them valid until the next step.
class TALLYBASE_EXPORT XmlPull
{
public:
    /// What stands at a place of a document; None where it ends.
    enum class Tag { None, Start, End };

    virtual ~XmlPull();

    /// Goes on to the next tag; None at the end of the document and where it is not well-formed. The tag of an empty
    /// element is a start and an end.
    virtual Tag next() = 0;
    /// The name of the element on whose tag this stands.
    virtual std::string_view name() = 0;
    /// An attribute of the element on whose start this stands.
    virtual std::optional<std::string_view> attribute(std::string_view name) = 0;
    ///@{
    /// The text of the element on whose start this stands and of all elements inside it; goes on to the element's end.
    virtual std::string_view elementText() = 0;
    virtual QString elementString() = 0; ///< never null
    ///@}
    /// Qt's reader, which stands on the same tag. It may be moved: what comes next is what comes behind it then.
    virtual QXmlStreamReader& reader() = 0;
    /// Whether the document ended where it is not well-formed.
    virtual bool hasError() = 0;
};

/// What Qt's reader finds.
class TALLYBASE_EXPORT QtPull final : public XmlPull
{
public:
    /// Goes on from where the reader stands, which outlives this.
    explicit QtPull(QXmlStreamReader& reader) : m_reader(reader) {}

    Tag next() override;
    std::string_view name() override;
    std::optional<std::string_view> attribute(std::string_view name) override;
    std::string_view elementText() override;
    QString elementString() override;
    QXmlStreamReader& reader() override { return m_reader; }
    bool hasError() override;

private:
    std::string_view utf8(QStringView text);

    QXmlStreamReader& m_reader;
    std::optional<QXmlStreamAttributes> m_attributes; ///< of the tag, once they were asked for
    QVarLengthArray<char, 256> m_ascii;
    QByteArray m_utf8; ///< of a text with other characters
};

} // namespace TALLYFORM
