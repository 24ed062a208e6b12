#pragma once

#include "base/fault.h"

#include <QByteArray>

#include <exception>

namespace TALLYFORM {

/// Root of all failures: a message for people, and for programs what it is about.
class TALLYBASE_EXPORT TallyFormException : public std::exception
{
public:
    /// A failure with its message, and what is known of it where it arises.
    explicit TallyFormException(const QString& message, Fault::Kind kind = Fault::Kind::Other,
                                const QString& member = QString());
    /// A failure with all that is known of it.
    explicit TallyFormException(const Fault& fault);

    /// The message in UTF-8, valid as long as the exception.
    const char* what() const noexcept override;
    /// The class of the failure, its message and, when known, its origin.
    virtual QString GetDetail() const;
    /// The message as it was given.
    QString GetMessage() const { return m_fault.message; }
    /// Where in an input the failure arose, such as "list.xml, line 12, column 5"; empty when unknown.
    QString GetOrigin() const { return m_fault.place.text(); }

    /// What the failure is about. Who lets it pass may add to it; the message stays as it is.
    Fault& GetFault() { return m_fault; }
    /// What the failure is about.
    const Fault& GetFault() const { return m_fault; }

protected:
    /// The text of GetDetail for a class of failures.
    QString detail(const QString& failure) const;

private:
    Fault m_fault;
    QByteArray m_utf8;
};

/// What callers catch: every failure of a record or a file format is one of these.
class TALLYBASE_EXPORT TallyException : public TallyFormException
{
public:
    /// A failure with its message or, as data, with all that is known of it.
    using TallyFormException::TallyFormException;
    QString GetDetail() const override;
};

/// A value lies outside what its member allows.
class TALLYBASE_EXPORT OutOfRangeException : public TallyException
{
public:
    using TallyException::TallyException;
    QString GetDetail() const override;
};

/// A binary form does not hold together.
class TALLYBASE_EXPORT BinaryParsingException : public TallyException
{
public:
    using TallyException::TallyException;
    QString GetDetail() const override;
};

/// An XML document is well-formed but holds what its schema does not know or allow.
class TALLYBASE_EXPORT InvalidXmlException : public TallyException
{
public:
    using TallyException::TallyException;
    QString GetDetail() const override;
};

/// A record lacks what it must have.
class TALLYBASE_EXPORT IncompleteDefinitionException : public TallyException
{
public:
    using TallyException::TallyException;
    QString GetDetail() const override;
};

} // namespace TALLYFORM
