#pragma once

#include "base/tallybase_export.h"

#include <QByteArray>
#include <QString>

#include <exception>

namespace TALLYFORM {

/// Root of all failures: one message for people and, when known, the place in an input where the failure arose.
class TALLYBASE_EXPORT TallyFormException : public std::exception
{
public:
    /// A failure with its message.
    explicit TallyFormException(const QString& message);

    /// The message in UTF-8, valid as long as the exception.
    const char* what() const noexcept override;
    /// The class of the failure, its message and, when known, its origin.
    virtual QString GetDetail() const;
    /// The message as it was given.
    QString GetMessage() const { return m_message; }

    /// Notes where in an input the failure arose, such as "list.xml, line 12, column 5"; the message stays as it is.
    void SetOrigin(const QString& origin) { m_origin = origin; }
    /// Where in an input the failure arose; null when unknown.
    QString GetOrigin() const { return m_origin; }

protected:
    /// The text of GetDetail for a class of failures.
    QString detail(const QString& failure) const;

private:
    QString m_message;
    QByteArray m_utf8;
    QString m_origin;
};

/// What callers catch: every failure of a record or a file format is one of these.
class TALLYBASE_EXPORT TallyException : public TallyFormException
{
public:
    /// A failure with its message.
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
