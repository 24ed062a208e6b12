#pragma once

#include "base/recenttexts.h"
#include "base/xmlpull.h"

#include <memory>
#include <string>
#include <vector>

namespace TALLYFORM {

/// A document from its beginning, and once more for Qt's reader.
class XmlInput
{
public:
    virtual ~XmlInput() = default;

    static constexpr int leastSize = 64;
    /// Gives some of `size` bytes of UTF-8, which are that many at least; 0 at the end, or where reading is to end.
    virtual int read(char* to, int size) = 0;
    /// Qt's reader at the document's beginning. Nothing is read here from then on.
    virtual QXmlStreamReader& restart() = 0;
};

/// Reads documents of elements, texts and few attributes several times as fast as Qt's reader. All else, and what is
/// not well-formed, is left to that one: it starts at the beginning and passes over the tags that were given, so that
/// it alone decides what is wrong with a document, and where.
class PlainPull final : public XmlPull
{
public:
    explicit PlainPull(XmlInput& input);

    Tag next() override;
    std::string_view name() override { return m_qt ? m_qt->name() : m_name; }
    std::optional<std::string_view> attribute(std::string_view name) override;
    std::string_view elementText() override;
    QString elementString() override;
    QXmlStreamReader& reader() override { return qt().reader(); }
    bool hasError() override { return m_qt && m_qt->hasError(); }

private:
    struct Attribute
    {
        std::string_view name, value;
    };

    QtPull& qt();

    /// Parses again while it stops only because the window ends there; false if the rest is for Qt's reader.
    bool completes(bool (PlainPull::*parse)());
    bool refill();
    void fill(char* to);

    // These give false, with no tag given, where they come to a stop.
    bool parseTag();
    bool parseStart(const char* at);
    bool parseAttribute(const char*& at);
    bool parseEnd(const char* at);
    bool parseText();
    bool endElement(std::string_view name, const char* behind);
    bool stop(const char* at);
    bool give(Tag tag, std::string_view name, const char* behind);
    const char* passText(const char* at, bool& isVerbatim) const;
    std::string_view rest(const char* at) const { return {at, std::size_t(m_end - at)}; }

    XmlInput& m_input;
    std::unique_ptr<QtPull> m_qt; ///< once it has taken over
    qint64 m_given = 0;           ///< how many tags were given

    /// What is in memory. Behind it stands a zero, where all loops end.
    std::unique_ptr<char[]> m_window;
    std::size_t m_capacity;
    const char* m_at;          ///< what is to be parsed next
    const char* m_end;         ///< of what is in memory
    const char* m_stop;        ///< where parsing came to a stop
    bool m_isComplete = false; ///< whether the document ends in memory

    Tag m_tag = Tag::None;
    std::string_view m_name;
    std::vector<Attribute> m_attributes;
    bool m_isEmptyElement = false; ///< whether the tag that was given is the end, too
    std::string_view m_text;
    std::string m_decoded;   ///< what the text is a view of if it is not in the window
    std::string m_openNames; ///< of the elements that have not ended, one behind the other
    std::vector<std::size_t> m_openSizes;
    RecentTexts m_recent;
};

} // namespace TALLYFORM
