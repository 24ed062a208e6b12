#pragma once

#include "base/fault.h"
#include "base/objecttypes.h"
#include "base/savefile.h"
#include "base/tallybase_export.h"

#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QString>
#include <QVarLengthArray>
#include <QVector>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

class QByteArray;
class QDataStream;
class QFile;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace TALLYFORM {

class Logger;
class XmlPull;

/// The forms that write values as texts.
enum class WrittenForm { Xml, Tagged };

/// What every record is to the outside: a named object that can be checked, written and read.
///
/// Reading goes over what the object holds. If it fails, by false or by an exception, the object stays as it was where
/// the input cannot be read, is too large or is not the object's own; else it holds what was read ahead of the fault,
/// and can be used, reset and read again. LoadWhole (base/wholeload.h) leaves an object as it was whatever fails. The
/// place of a failure goes to the logger and the trace, and with an exception to the caller.
///
/// The order of the virtual operations is binary interface: add new ones at the end.
class TALLYBASE_EXPORT ITallyObject
{
public:
    /// An object without name, type and identifier, whose validation flag is on.
    ITallyObject() = default;
    /// The same with a type.
    explicit ITallyObject(ObjectTypes type) : m_type(type) {}
    /// Takes over what `other` is; `other` stays usable.
    ITallyObject(ITallyObject&& other) noexcept;
    ITallyObject(const ITallyObject&) = delete;
    ITallyObject& operator=(const ITallyObject&) = delete;
    ITallyObject& operator=(ITallyObject&&) = delete;
    virtual ~ITallyObject();

    /// Whether the object holds enough to be written.
    virtual bool HasData() const = 0;
    /// Takes the object back to what it was when new.
    virtual void Reset() = 0;
    /// Tests the content. Throws a TallyException that names the first fault.
    virtual void Check(bool flag) const = 0;
    /// Tests the content. Throws a TallyException that names the first fault.
    virtual void Check() const = 0;

    ///@{
    /// Whether a value is other than the one that stands for "none" in its type (see SetInvalid); a bool always is.
    virtual bool IsValid(float value) const { return !std::isnan(value); }
    virtual bool IsValid(bool) const { return true; }
    virtual bool IsValid(unsigned int value) const { return value != std::numeric_limits<unsigned int>::max(); }
    virtual bool IsValid(qint64 value) const { return value != std::numeric_limits<qint64>::min(); }
    virtual bool IsValid(const QDateTime& value) const { return value.isValid(); }
    virtual bool IsValid(const QString& value) const { return !value.isNull(); }
    virtual bool IsValid(double value) const { return !std::isnan(value); }
    virtual bool IsValid(int value) const { return value != std::numeric_limits<int>::min(); }
    ///@}

    ///@{
    /// Gives a value what stands for "none" in its type: NaN, the largest unsigned, the most negative signed, null.
    virtual void SetInvalid(float& value) const { value = std::numeric_limits<float>::quiet_NaN(); }
    virtual void SetInvalid(unsigned int& value) const { value = std::numeric_limits<unsigned int>::max(); }
    virtual void SetInvalid(qint64& value) const { value = std::numeric_limits<qint64>::min(); }
    virtual void SetInvalid(QString& value) const { value = QString(); }
    virtual void SetInvalid(double& value) const { value = std::numeric_limits<double>::quiet_NaN(); }
    virtual void SetInvalid(int& value) const { value = std::numeric_limits<int>::min(); }
    ///@}

    /// Writes the object's element, or nothing. Throws what Check throws.
    virtual void GetXml(QXmlStreamWriter& writer) const = 0;
    /// Writes the object as a frame of tag (if asked for), length and fields; false if it wrote nothing. Throws what
    /// Check throws.
    virtual bool GetBinary(QDataStream& stream, int tag, bool writeTag) const = 0;
    /// Reads the fields of a frame of `length` bytes, tag and length being read. Throws BinaryParsingException and
    /// what the object's setters throw.
    virtual void SetBinary(QDataStream& stream, int length) = 0;

    /// Reads a document given as text, over what the object holds or, with `reset`, in place of it; false if the text
    /// is not well-formed or is another object's, when a reset has been done already. Throws what the object's setters
    /// throw.
    virtual bool SetXmlString(const QString& xml, bool reset);
    /// Reads a plain or compressed representation; false if the bytes are neither or are another object's. Throws
    /// BinaryParsingException and what the object's setters throw.
    virtual bool SetBinaryRepresentation(const QByteArray& representation);
    /// Reads a plain or compressed representation from a stream; false as above. Throws as above.
    virtual bool SetBinaryRepresentation(QDataStream& stream);
    /// Takes over what another object of the same class holds, as if its representation were read; false if it is of
    /// another class. Throws what the other's Check throws, with nothing taken over, and what the object's setters do.
    virtual bool MergeTallyObject(const ITallyObject& other);

    /// The kind of report the object is part of.
    virtual ObjectTypes GetObjectType() const { return m_type; }
    /// The name of the object's element.
    virtual const QString& GetObjectName() const;

    /// Reads the element on whose start the reader stands, up to its end. Throws what ProcessXmlStartElement throws.
    virtual void ProcessXml(QXmlStreamReader& reader);
    /// The object's element as text, without declaration and indentation; null if the object declines to be written
    /// or holds what XML cannot carry. Throws what Check throws.
    virtual QString GetXmlString() const;
    /// Writes the plain representation; false if nothing was written. Throws what Check throws.
    virtual bool GetBinaryRepresentation(QDataStream& stream) const;
    /// The plain representation, empty if the object declines to be written. Throws what Check throws.
    virtual QByteArray GetBinaryRepresentationAsQByteArray() const;
    /// Writes the compressed representation; false if nothing was written. Throws what Check throws.
    virtual bool GetCompressedBinaryRepresentation(QDataStream& stream) const;
    /// The compressed representation, empty if the object declines to be written. Throws what Check throws.
    virtual QByteArray GetCompressedBinaryRepresentationAsQByteArray() const;

    /// Reads a document from a file over what the object holds; false if it can't be read, is not well-formed or is
    /// another object's. Throws what the object's setters throw.
    virtual bool LoadXml(const QString& path);
    /// The same with a file that is read from its position if it is open, else opened and closed. Throws as above.
    virtual bool LoadXml(QFile& file);
    /// Reads a plain or compressed representation from a file; false if it can't be read or is neither. Throws
    /// BinaryParsingException and what the object's setters throw.
    virtual bool LoadBinary(const QString& path);
    /// Writes a document to a file, as a whole or not at all; false if it could not be written or the object declines
    /// to be. Throws what Check throws.
    virtual bool SaveXml(const QString& path) const;

    ///@{
    /// As LoadXml, LoadBinary and SaveXml, but throw TallyException where those answer with false.
    void ReadXml(QFile& file);
    void ReadBinary(const QString& path);
    void WriteXml(const QString& path) const;
    ///@}

    /// Switches validation: on, setters and writers refuse bad content; off, anything is stored and written.
    virtual void SetValidate(bool validate) const { m_validate = validate; }
    /// Whether validation is on.
    virtual bool GetValidate() const { return m_validate; }
    /// Sets where the object tells why an operation answered with false.
    virtual void SetLogger(std::shared_ptr<Logger> logger) const;
    /// Takes the logger away.
    virtual void ResetLogger() const { SetLogger(nullptr); }
    /// The version of the object's schema; empty if it has none.
    virtual const QString& GetVersion() const;
    /// Sets the kind of report the object is part of.
    virtual void SetObjectType(ObjectTypes type) { m_type = type; }
    /// Sets the name of the object's element.
    virtual void SetObjectName(const QString& name);

    /// The logger; null if there is none.
    const std::shared_ptr<Logger>& GetLogger() const { return m_extras ? m_extras->logger : noLogger; }
    /// Sets the logger that another object has.
    void ShareLogger(const ITallyObject& other) const
    {
        if (!HasLoggerOf(other))
            TakeLogger(other);
    }
    /// Whether both have the same logger, or both none.
    bool HasLoggerOf(const ITallyObject& other) const
    {
        return m_extras == other.m_extras || GetLogger() == other.GetLogger();
    }
    /// Whether the object was given a name of its own.
    bool HasOwnName() const { return m_extras && m_extras->name; }
    /// Passes over the `length` bytes of a field that the object does not know.
    static void skipCurrentElement(QDataStream& stream, int length, int tag);

protected:
    /// An object of a class: with its identifier.
    ITallyObject(qint64 id, ObjectTypes type) : m_id(quint32(id)), m_type(type) {}

    /// The name that the object was given, else that of its class.
    const QString& NameOr(const QString& nameOfClass) const { return HasOwnName() ? *m_extras->name : nameOfClass; }

    /// Reads the child element on whose start the reader stands; one left alone has its own children offered next.
    virtual void ProcessXmlStartElement(QXmlStreamReader& reader);

    /// The text of the current element, see ReadElementText; never null.
    QString GetTextValue(QXmlStreamReader& reader) const;

public:
    /// Appends the object's element in UTF-8 to a document, indented by one blank a level or not at all; false if it
    /// holds what XML cannot carry. Throws what Check throws. From a long document `sink`, if there is one, may take
    /// what is there so far, which then leaves it.
    virtual bool AppendXml(QByteArray& document, bool isIndented, const ByteSink& sink = nullptr) const;
    /// The first content that a form cannot carry, with its place: "FrequencyStoreEntry[2]/Comment: A character that
    /// XML cannot carry."; null if there is none, or none that the object knows of.
    virtual QString FindUncarried(WrittenForm form) const;
    /// All faults that the content has, each at the member where it is; Check throws for the first.
    virtual QVector<Fault> FindFaults() const;
    /// Reads the element on whose start a document stands, up to its end, as ProcessXml does. Throws what it throws.
    virtual void ReadElement(XmlPull& document);

private:
    /// What most objects do without or share with a whole tree, so that objects are small.
    struct Extras : QSharedData
    {
        std::shared_ptr<Logger> logger;
        std::optional<QString> name;
    };

    void TakeLogger(const ITallyObject& other) const;

    static const std::shared_ptr<Logger> noLogger;

    mutable QExplicitlySharedDataPointer<Extras> m_extras;

protected:
    /// Tells objects of different classes apart; the tag of the representation.
    quint32 m_id = 0;

private:
    ObjectTypes m_type = ObjectTypes::None;
    mutable bool m_validate = true;
};

/// Room for the text of most elements, without a string on the heap.
using ElementText = QVarLengthArray<QChar, 256>;

/// Reads the text of the element on whose start the reader stands and of all elements inside it, and gives a view of
/// it; leaves the reader on the element's end.
TALLYBASE_EXPORT QStringView ReadElementText(QXmlStreamReader& reader, ElementText& text);

} // namespace TALLYFORM
