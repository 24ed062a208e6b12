#pragma once

#include "base/exceptions.h"
#include "base/xmlpull.h"

#include <memory>

class QFile;

namespace TALLYFORM {

class ITallyObject;

/// A document that is read: what stands around its root element, and what is wrong with it.
class TALLYBASE_EXPORT XmlDocument
{
public:
    /// Of a text. Throws TallyException for what no document can hold.
    static std::unique_ptr<XmlDocument> of(const QString& text, const QString& source);
    /// Of an open file, from its position on, which holds no more than `limit` bytes. Throws TallyException if it
    /// cannot be read or decoded.
    static std::unique_ptr<XmlDocument> of(QFile& file, qint64 limit);

    virtual ~XmlDocument();

    virtual XmlPull& pull() = 0;
    /// Lets so many bytes follow those that were read.
    virtual void allow(qint64) {}

    /// Goes to the root element; false if it is not the object's, of which end() tells.
    bool begin(const ITallyObject& object);
    /// Notes the place in a failure of reading; false if it is one because the document breaks off, of which end()
    /// tells.
    bool locate(TallyFormException& failure);
    /// Reads what is left. Throws TallyException for a document that is not well-formed or is another object's.
    void end();

protected:
    explicit XmlDocument(const QString& source) : m_source(source) {}

private:
    /// Why it ended early; null if it did not.
    virtual QString reason() const { return {}; }
    InputPlace place();

    const QString m_source;
    QString m_otherRoot;
};

} // namespace TALLYFORM
