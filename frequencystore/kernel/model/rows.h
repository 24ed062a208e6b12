#pragma once

/// The vocabulary of record classes. A record is VELMARA_RECORD and one row per member, in the order of the presence
/// bits, which is the order of packed binary; XML and tagged binary put attributes first and the content last. A row
/// gives the member its field, its description (see member.h) and its accessors. All accessors that validate do so
/// while the record's validation flag is on.

#include "frequencystore/kernel/model/access.h"

#include <string_view>

/// The class itself. R's operations are defined where the family is implemented, see VELMARA_EXTERN_RECORD.
#define VELMARA_RECORD(R, ELEMENT, ID)                                                                                 \
public:                                                                                                                \
    /** The identifier of the class, see GetId. */                                                                     \
    static constexpr qint64 id = ID;                                                                                   \
    /** The name of the class. */                                                                                      \
    static constexpr const char* className = #R;                                                                       \
    /** The identifier of the class. */                                                                                \
    static qint64 GetId() { return id; }                                                                               \
    /** The name of the record's XML element. */                                                                       \
    static QString GetStaticObjectName() { return elementName(); }                                                     \
    /** A record that holds nothing, and validates. */                                                                 \
    R() : ITallyObject(id, TALLYFORM::ObjectTypes::None) {}                                                            \
    /** Copies the content and the flag; the logger stays behind. The copy may go to another thread. */                \
    R(const R& other);                                                                                                 \
    /** The same with the content taken over; the other stays usable. */                                               \
    R(R&& other) noexcept;                                                                                             \
    ~R() override;                                                                                                     \
    /** Takes over the content alone: flag, logger and name stay. Keep both records to one thread. */                  \
    R& operator=(const R& other);                                                                                      \
    /** Takes over the content alone; the other stays usable. */                                                       \
    R& operator=(R&& other) noexcept;                                                                                  \
    /** Whether both hold the same content. */                                                                         \
    bool operator==(const R& other) const;                                                                             \
    /** Whether the content differs. */                                                                                \
    bool operator!=(const R& other) const { return !(*this == other); }                                                \
    /** Whether all mandatory content is there. */                                                                     \
    bool HasData() const override;                                                                                     \
    /** Whether any member holds something. */                                                                         \
    bool AnyData() const;                                                                                              \
    /** The name that the record was given, else that of its class. */                                                 \
    const QString& GetObjectName() const override { return NameOr(elementName()); }                                    \
    /** Whether the record has been used, so that there is data behind it. */                                          \
    bool IsInitialized() const { return m_data; }                                                                      \
    /** Takes the record back to what it was when new. */                                                              \
    void Reset() override;                                                                                             \
    /** Resets the record and marks those members as present that have a default worth writing. */                     \
    void ResetToDefault();                                                                                             \
    /** Throws OutOfRangeException or IncompleteDefinitionException for the first member that is not as it must be. */ \
    void Check() const override;                                                                                       \
    void Check(bool flag) const override;                                                                              \
    void SetObjectType(TALLYFORM::ObjectTypes) override;                                                               \
    /** Sets the flag here and in the whole tree below. */                                                             \
    void SetValidate(bool validate) const override;                                                                    \
    /** Sets the logger here and in the whole tree below. */                                                           \
    void SetLogger(std::shared_ptr<TALLYFORM::Logger> logger) const override;                                          \
    /** Writes the element; under validation, throws what Check throws, and nothing at all if HasData() is false. */   \
    void GetXml(QXmlStreamWriter& writer) const override;                                                              \
    /** Appends the element in UTF-8, taken by a sink or not; false if XML cannot carry it. Throws as GetXml does. */  \
    bool AppendXml(QByteArray& document, bool isIndented, const TALLYFORM::ByteSink& sink = nullptr) const override;   \
    /** The first content that a form cannot carry, with its path; null if there is none. */                           \
    QString FindUncarried(TALLYFORM::WrittenForm form) const override;                                                 \
    /** All faults of the tree, validated or not, each at the member where it is. */                                   \
    QVector<TALLYFORM::Fault> FindFaults() const override;                                                             \
    /** Reads the element on whose start the reader stands over what the record holds; throws as setters do. */        \
    void ProcessXml(QXmlStreamReader& reader) override;                                                                \
    void ReadElement(TALLYFORM::XmlPull& document) override;                                                           \
    /** Writes the tagged form, on a device that can seek; false if nothing was written. Throws as GetXml does. */     \
    bool GetBinary(QDataStream& stream, int tag, bool writeTag) const override;                                        \
    /** Reads a body of the tagged form; throws BinaryParsingException if its length is wrong, and as setters do. */   \
    void SetBinary(QDataStream& stream, int length) override;                                                          \
    /** Writes the packed form, which only the same schema version reads. */                                           \
    void GetVersionSpecificBinaryWithoutValidation(QDataStream& stream) const;                                         \
    /** Reads the packed form; throws BinaryParsingException for another schema version, and as appends do. Of one */  \
    /** that ends early it takes what is there, and the stream's status tells. */                                      \
    void SetVersionSpecificBinaryWithoutValidation(QDataStream& stream);                                               \
                                                                                                                       \
protected:                                                                                                             \
    void ProcessXmlStartElement(QXmlStreamReader& reader) override;                                                    \
                                                                                                                       \
private:                                                                                                               \
    friend ::Velmara::kernel::Record<R>;                                                                               \
    using Self = R;                                                                                                    \
    static constexpr std::string_view element = ELEMENT;                                                               \
    static const QString& elementName()                                                                                \
    {                                                                                                                  \
        static const QString name = QStringLiteral(ELEMENT);                                                           \
        return name;                                                                                                   \
    }                                                                                                                  \
    static ::Velmara::kernel::RecordData* rows(::Velmara::kernel::Rank<0>);                                            \
    ::Velmara::kernel::RecordData& ownData() const                                                                     \
    {                                                                                                                  \
        if (!m_data || m_data->ref.loadRelaxed() != 1)                                                                 \
            InitData();                                                                                                \
        return *m_data;                                                                                                \
    }                                                                                                                  \
    void InitData() const;                                                                                             \
    mutable ::Velmara::kernel::DataPointer m_data;                                                                     \
                                                                                                                       \
public:

/// Behind a record class: its operations are instantiated only in the source file that the build makes of the header.
#define VELMARA_EXTERN_RECORD(R) extern template struct kernel::Record<R>;

/// A record with a schema version.
#define VELMARA_VERSION(VERSION)                                                                                       \
private:                                                                                                               \
    static ::Velmara::kernel::VersionedData* rows(::Velmara::kernel::Rank<1>);                                         \
                                                                                                                       \
public:                                                                                                                \
    /** The schema version of this code, see GetVersion. */                                                            \
    static const QString& schemaVersion()                                                                              \
    {                                                                                                                  \
        static const QString version = QStringLiteral(VERSION);                                                        \
        return version;                                                                                                \
    }                                                                                                                  \
    /** The schema version of this code. */                                                                            \
    const QString& GetVersion() const override                                                                         \
    {                                                                                                                  \
        ownData();                                                                                                     \
        return schemaVersion();                                                                                        \
    }                                                                                                                  \
    /** The schema version of the input that was read; null before that. */                                            \
    const QString& GetInitialVersionLoaded() const                                                                     \
    {                                                                                                                  \
        return static_cast<::Velmara::kernel::VersionedData&>(ownData()).versionLoaded;                                \
    }

/// The field of member X in the private data, which is made if need be.
#define VELMARA_FIELD(X) static_cast<X##Row&>(ownData()).m_##X

/// What all rows share: the member's field, its description, and the accessors of every kind.
#define VELMARA_ROW(T, X, TAG, ...)                                                                                    \
private:                                                                                                               \
    static_assert(::Velmara::kernel::isField<T>, "a member is a number, bool, QString, QDateTime, enumeration or "     \
                                                 "record, or a list of records, double or QString");                   \
    struct X##Row                                                                                                      \
        : ::Velmara::kernel::After<std::remove_pointer_t<decltype(rows(::Velmara::kernel::Rank<>()))>, X##Row>         \
    {                                                                                                                  \
        static constexpr ::Velmara::kernel::Member info = ::Velmara::kernel::Member{                                   \
            className, QLatin1String(#X, sizeof(#X) - 1), QLatin1String(#X, sizeof(#X) - 1), TAG, bit,                 \
            position} __VA_OPT__(.) __VA_ARGS__;                                                                       \
        T m_##X = info.initial<T>();                                                                                   \
        T& field() { return m_##X; }                                                                                   \
        const T& field() const { return m_##X; }                                                                       \
    };                                                                                                                 \
    static X##Row* rows(::Velmara::kernel::Rank<X##Row::count + 1>);                                                   \
    static_assert(!X##Row::info.isBounded || std::is_same_v<T, double>, "only a double has a range");                  \
    static_assert(X##Row::info.form == ::Velmara::kernel::Member::Form::Element || ::Velmara::kernel::IsValue<T>,      \
                  "an attribute or the content is a value; records and lists are elements");                           \
                                                                                                                       \
public:                                                                                                                \
    /** Whether the member is set: given a value, read, or given out for editing. */                                   \
    bool Is##X##Set() const { return m_data && m_data->isSet(X##Row::info); }                                          \
    /** Takes the member back to what it is in a new record. */                                                        \
    void Reset##X()                                                                                                    \
    {                                                                                                                  \
        if (m_data)                                                                                                    \
            ::Velmara::kernel::clear(ownData(), X##Row::info, VELMARA_FIELD(X));                                       \
    }                                                                                                                  \
    /** Whether the setter takes the value under validation. */                                                        \
    bool IsValid##X(const T& value) const { return ::Velmara::kernel::isValid(X##Row::info, value); }

/// The setter, the editing getter and the default, which several kinds have.
#define VELMARA_SET(PARAMETER, X)                                                                                      \
    /** Sets the member; under validation, throws OutOfRangeException for a value that it does not allow. */           \
    void Set##X(PARAMETER value) { ::Velmara::kernel::assign(*this, ownData(), X##Row::info, VELMARA_FIELD(X), value); }
#define VELMARA_EDIT(T, X)                                                                                             \
    /** Gives the member out for editing, and so marks it as set. */                                                   \
    T& Get##X() { return ::Velmara::kernel::edit(ownData(), X##Row::info, VELMARA_FIELD(X)); }
#define VELMARA_DEFAULT(T, X)                                                                                          \
    /** What the member holds in a new record. */                                                                      \
    T GetDefault##X() const { return X##Row::info.initial<T>(); }

/// A number, a bool or a QString. SetX throws OutOfRangeException for a null QString and beyond a range.
#define VELMARA_VALUE(T, X, TAG, ...)                                                                                  \
    static_assert(::Velmara::kernel::IsValue<T>, "VELMARA_VALUE is for one value; a record is a VELMARA_CHILD");       \
    VELMARA_ROW(T, X, TAG __VA_OPT__(, ) __VA_ARGS__)                                                                  \
    VELMARA_SET(T, X)                                                                                                  \
    VELMARA_DEFAULT(T, X)                                                                                              \
    /** The value; that of a new record while the member is not set. */                                                \
    T Get##X() const { return VELMARA_FIELD(X); }

/// The value that is the text of a value record's element.
#define VELMARA_CONTENT(T, X, TAG)                                                                                     \
    VELMARA_VALUE(T, X, TAG, content())                                                                                \
    /** Reads the element as ProcessXml of this class does. */                                                         \
    void ReadValuesFromXml(QXmlStreamReader& reader) { Self::ProcessXml(reader); }

/// The flag that says whether a bounded value is to be used: an attribute, true unless it is told otherwise.
#define VELMARA_USE(TAG) VELMARA_VALUE(bool, Use, TAG, attribute().blankIs(true).initially(true).marked())

/// A value whose name the base class has taken: SetLocalX, which validates nothing, and GetLocalX.
#define VELMARA_LOCAL_VALUE(T, X, TAG)                                                                                 \
    VELMARA_ROW(T, X, TAG)                                                                                             \
    VELMARA_DEFAULT(T, X)                                                                                              \
    /** Sets the member, whatever the value. */                                                                        \
    void SetLocal##X(T value) { ::Velmara::kernel::edit(ownData(), X##Row::info, VELMARA_FIELD(X)) = value; }          \
    /** The value; that of a new record while the member is not set. */                                                \
    T GetLocal##X() const { return VELMARA_FIELD(X); }

/// A point in time.
#define VELMARA_TIME(X, TAG, ...)                                                                                      \
    VELMARA_ROW(QDateTime, X, TAG __VA_OPT__(, ) __VA_ARGS__)                                                          \
    VELMARA_SET(const QDateTime&, X)                                                                                   \
    VELMARA_EDIT(QDateTime, X)                                                                                         \
    VELMARA_DEFAULT(QDateTime, X)                                                                                      \
    /** The value; null while the member is not set. */                                                                \
    const QDateTime& Get##X() const { return VELMARA_FIELD(X); }

/// An enumeration with its identifiers, which are also the names in the formats unless the description has named().
/// SetX throws OutOfRangeException for a value outside the list. NameToX gives Invalid for an unknown name, XToName a
/// null QString for a value outside the list.
#define VELMARA_ENUM(X, TAG, DESCRIPTION, ...)                                                                         \
public:                                                                                                                \
    /** The values of the member of this name. */                                                                      \
    enum class X : qint8 { Invalid = -1, __VA_ARGS__ };                                                                \
    /** Its identifiers, from 0 on, separated by commas. */                                                            \
    static constexpr std::string_view identifiersOf##X = #__VA_ARGS__;                                                 \
                                                                                                                       \
private:                                                                                                               \
    static const QStringList& namesOf##X()                                                                             \
    {                                                                                                                  \
        static const QStringList names = ::Velmara::kernel::splitNames(X##Row::info.labels);                           \
        return names;                                                                                                  \
    }                                                                                                                  \
    VELMARA_ROW(X, X, TAG, enumeration(&namesOf##X, #__VA_ARGS__).DESCRIPTION)                                         \
    static_assert(::Velmara::kernel::countNames(X##Row::info.labels) == ::Velmara::kernel::countNames(#__VA_ARGS__),   \
                  "an enumeration has one name per identifier");                                                       \
    VELMARA_SET(const X&, X)                                                                                           \
    VELMARA_DEFAULT(X, X)                                                                                              \
    /** The value; that of a new record while the member is not set. */                                                \
    const X& Get##X() const { return VELMARA_FIELD(X); }                                                               \
    /** What stands for no value. */                                                                                   \
    X GetInvalid##X() const { return X::Invalid; }                                                                     \
    /** The name of the value as the formats have it. */                                                               \
    const QString& Get##X##AsString() const { return X##ToName(Get##X()); }                                            \
    /** The name of a value; null if it has none. */                                                                   \
    const QString& X##ToName(const X& value) const { return X##Row::info.nameAt(int(value)); }                         \
    /** The value of that name; Invalid if there is none. */                                                           \
    X NameTo##X(const QString& name) const { return X(X##Row::info.valueOf(name)); }                                   \
    /** The same for a part of a text. */                                                                              \
    X NameTo##X(QStringView name) const { return X(X##Row::info.valueOf(name)); }                                      \
    /** The names of all values, in their order. */                                                                    \
    static QStringList Get##X##s() { return namesOf##X(); }                                                            \
    /** The same in the language of the application. */                                                                \
    static QStringList GetGUI##X##s() { return ::Velmara::kernel::translated(namesOf##X()); }

/// What children and lists share.
#define VELMARA_CONTAINER(T, X, TAG, ...)                                                                              \
    VELMARA_ROW(T, X, TAG __VA_OPT__(, ) __VA_ARGS__)                                                                  \
    VELMARA_SET(const T&, X)                                                                                           \
    VELMARA_EDIT(T, X)                                                                                                 \
    /** The content, for reading. */                                                                                   \
    const T& Get##X() const { return VELMARA_FIELD(X); }
#define VELMARA_ANY_LIST(T, X, TAG, ...)                                                                               \
    VELMARA_CONTAINER(QVector<T>, X, TAG __VA_OPT__(, ) __VA_ARGS__)                                                   \
    /** Whether the item has a value that is allowed; AppendX asks for completeness too. */                            \
    bool IsValid##X(const T& item) const { return ::Velmara::kernel::isValid(X##Row::info, item); }                    \
    /** Appends; under validation, throws IncompleteDefinitionException for an item that lacks content. */             \
    void Append##X(const T& item) { ::Velmara::kernel::append(*this, ownData(), X##Row::info, VELMARA_FIELD(X), item); }

/// A child record. The editing GetX marks it as present; a const record only reads.
#define VELMARA_CHILD(T, X, TAG, ...)                                                                                  \
    static_assert(::Velmara::kernel::IsRecord<T>, "VELMARA_CHILD is for one record; a value is a VELMARA_VALUE");      \
    VELMARA_CONTAINER(T, X, TAG __VA_OPT__(, ) __VA_ARGS__)

/// A list of child records. AppendX throws IncompleteDefinitionException for an item that lacks mandatory content.
#define VELMARA_LIST(T, X, TAG, ...)                                                                                   \
    static_assert(::Velmara::kernel::IsRecord<T>, "VELMARA_LIST is for records; values are VELMARA_VALUES");           \
    VELMARA_ANY_LIST(T, X, TAG __VA_OPT__(, ) __VA_ARGS__)

/// A list of double or QString. AppendX throws IncompleteDefinitionException for NaN and a null QString.
#define VELMARA_VALUES(T, X, TAG, ...)                                                                                 \
    static_assert(std::is_same_v<T, double> || std::is_same_v<T, QString>,                                             \
                  "VELMARA_VALUES is for double or QString; records are a VELMARA_LIST");                              \
    VELMARA_ANY_LIST(T, X, TAG __VA_OPT__(, ) __VA_ARGS__)                                                             \
    VELMARA_DEFAULT(T, X)

/// A choice group with its alternatives, which are the VELMARA_ALTERNATIVE rows in the same order. InitChoice resets
/// the record and throws OutOfRangeException for Invalid; only setting an alternative chooses it.
#define VELMARA_CHOICE(G, DESCRIPTION, ...)                                                                            \
public:                                                                                                                \
    /** The alternatives of which the record holds one. */                                                             \
    enum class G : qint8 { Invalid = -1, __VA_ARGS__ };                                                                \
                                                                                                                       \
private:                                                                                                               \
    static const QStringList& namesOf##G()                                                                             \
    {                                                                                                                  \
        static const QStringList names = ::Velmara::kernel::splitNames(choiceGroup.labels);                            \
        return names;                                                                                                  \
    }                                                                                                                  \
                                                                                                                       \
public:                                                                                                                \
    /** The group as the kernel knows it; see RecordDescription. */                                                    \
    static constexpr ::Velmara::kernel::ChoiceGroup choiceGroup                                                        \
        = ::Velmara::kernel::ChoiceGroup{#G, #__VA_ARGS__, &namesOf##G}.DESCRIPTION;                                   \
    /** The alternative that is chosen. */                                                                             \
    const G& Get##G() const { return ::Velmara::kernel::choiceAs<G>(ownData().choice); }                               \
    /** Chooses none; the alternatives keep their content. */                                                          \
    void Reset##G()                                                                                                    \
    {                                                                                                                  \
        if (m_data)                                                                                                    \
            ownData().choice = qint8(G::Invalid);                                                                      \
    }                                                                                                                  \
    /** Resets the record, and throws OutOfRangeException for Invalid; what is set next is chosen. */                  \
    void InitChoice(const G& choice)                                                                                   \
    {                                                                                                                  \
        Reset();                                                                                                       \
        if (!IsValid##G(choice))                                                                                       \
            ::Velmara::kernel::refuseChoice(*this);                                                                    \
    }                                                                                                                  \
    /** Whether it is other than Invalid. */                                                                           \
    bool IsValid##G(const G& choice) const                                                                             \
    {                                                                                                                  \
        ownData();                                                                                                     \
        return choice != G::Invalid;                                                                                   \
    }                                                                                                                  \
    /** The name of an alternative; null if it has none. */                                                            \
    QString G##ToName(const G& choice) const                                                                           \
    {                                                                                                                  \
        ownData();                                                                                                     \
        return namesOf##G().value(int(choice));                                                                        \
    }                                                                                                                  \
    /** The alternative of that name; Invalid if there is none. */                                                     \
    G NameTo##G(const QString& name) const { return G(namesOf##G().indexOf(name)); }                                   \
    /** The names of all alternatives, in their order. */                                                              \
    static QStringList Get##G##s() { return namesOf##G(); }                                                            \
    /** The same in the language of the application. */                                                                \
    static QStringList GetGUI##G##s() { return ::Velmara::kernel::translated(namesOf##G()); }

/// An alternative of the record's choice group, FAMILY being VALUE or CHILD.
#define VELMARA_ALTERNATIVE(FAMILY, T, X, TAG) VELMARA_##FAMILY(T, X, TAG, alternative())
