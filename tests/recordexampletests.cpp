/// Records as examples in files: steps that are done to a record of some class, and what comes of them.

#include "everyrecord.h"
#include "goldencases.h"

#include <QDebug>
#include <QRegularExpression>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

/// The bytes of hexadecimal digits, of texts in "" as streams have them, and of texts in '' in UTF-8 with their length.
QByteArray bytesFrom(const QString& notation)
{
    static const QRegularExpression part("\"([^\"]*)\"|'([^']*)'|([0-9a-f]+)");
    return bytesOf([&](QDataStream& out) {
        for (auto parts = part.globalMatch(notation); parts.hasNext();) {
            const auto match = parts.next();
            const QByteArray digits = QByteArray::fromHex(match.captured(3).toLatin1());
            if (match.lastCapturedIndex() == 1)
                out << match.captured(1);
            else if (match.lastCapturedIndex() == 2)
                out << match.captured(2).toUtf8();
            else
                out.writeRawData(digits.constData(), digits.size());
        }
    });
}

QString placeOf(const Fault& fault)
{
    static const QStringList kinds{"Other",   "BadValue",    "Missing",      "Incomplete", "Unknown",   "Uncarried",
                                   "Damaged", "OtherObject", "OtherVersion", "Unreadable", "Unwritable"};
    return kinds.value(int(fault.kind)) + " at " + fault.path + '.' + fault.member;
}

/// A record that goes through the steps of an example.
class Example
{
public:
    explicit Example(const QString& name) : m_root(FindRecordDescription(name)->make()), m_at(m_root.get())
    {
        m_root->SetLogger(m_recorder);
    }

    /// What a step tells; null if it tells nothing.
    QString run(const QString& step)
    {
        const QString verb = step.section(' ', 0, 0), words = step.section(' ', 1);
        try {
            return change(verb, words, words.section(' ', 0, 0), words.section(' ', 1)) ? QString() : look(verb, words);
        } catch (const TallyFormException& failure) {
            const Fault& fault = failure.GetFault();
            return failure.GetDetail().section(':', 0, 0) + " (" + placeOf(fault) + "): " + fault.message;
        }
    }

private:
    bool change(const QString& verb, const QString& words, const QString& name, const QString& text)
    {
        const MemberDescription* const member = DescriptionOf(*m_at).member(name);
        if (verb == "strict" || verb == "lenient")
            m_at->SetValidate(verb == "strict");
        else if (verb == "set")
            SetTextAt(*m_at, name, text);
        else if (verb == "give")
            member->set(*m_at, *FindRecordDescription(text)->make());
        else if (verb == "add")
            member->append(*m_at, *FindRecordDescription(text)->make());
        else if (verb == "append")
            member->append(*m_at, text);
        else if (verb == "remove")
            member->remove(*m_at, text.toInt() - 1);
        else if (verb == "reset")
            member->reset(*m_at);
        else if (verb == "in")
            m_at = &member->edit(*m_at, text.isEmpty() ? 0 : text.toInt() - 1);
        else if (verb == "out")
            m_at = m_root.get();
        else if (verb == "rename")
            m_at->SetObjectName(words);
        else if (verb == "tagged")
            readTagged(*m_at, bytesOf([&](QDataStream& out) { out << 0 << bytesFrom(words); }));
        else if (verb == "packed")
            readPacked(*m_at, bytesFrom(words));
        else
            return false;
        return true;
    }

    QString look(const QString& verb, const QString& words)
    {
        if (verb == "read")
            return m_at->SetXmlString(words, false) ? QString() : "refused";
        if (verb == "xml")
            return "'" + xml(*m_at) + "'";
        if (verb == "frame")
            return "'" + tagged(*m_at).toHex() + "'";
        if (verb == "body")
            return packed(*m_at).toHex();
        if (verb == "document")
            return withMessages(m_at->GetXmlString().isNull());
        if (verb == "representation")
            return withMessages(m_at->GetBinaryRepresentationAsQByteArray().isEmpty());
        if (verb == "losses")
            return "XML: " + loss(WrittenForm::Xml) + "; tagged: " + loss(WrittenForm::Tagged);
        if (verb == "forms")
            return forms();
        if (verb == "equals")
            return comparison(words);
        if (verb == "check")
            return m_at->Check(), "sound";
        QStringList places;
        for (const Fault& fault : m_at->FindFaults())
            places += placeOf(fault);
        if (verb == "faults")
            return places.join(", ");
        EXPECT_EQ(verb, "show");
        QString text;
        QDebug(&text).nospace() << *m_at;
        return text;
    }

    QString loss(WrittenForm form) const
    {
        const QString reason = m_at->FindUncarried(form);
        return reason.isNull() ? "nothing" : reason;
    }

    QString withMessages(bool isRefused)
    {
        const QStringList words{isRefused ? "refused" : "written"};
        return (words + std::exchange(m_recorder->m_messages, {})).join(", ");
    }

    /// The forms that give back an equal record.
    QString forms() const
    {
        const RecordDescription& of = DescriptionOf(*m_at);
        const auto fromXml = of.make(), fromTagged = of.make(), fromPacked = of.make();
        fromXml->SetXmlString(m_at->GetXmlString(), false);
        readTagged(*fromTagged, tagged(*m_at));
        readPacked(*fromPacked, packed(*m_at));
        QStringList carrying;
        for (const auto& [form, read] : {std::pair("XML", &fromXml), {"tagged", &fromTagged}, {"packed", &fromPacked}})
            if (of.areEqual(**read, *m_at))
                carrying += form;
        return carrying.isEmpty() ? "none" : carrying.join(", ");
    }

    QString comparison(const QString& document) const
    {
        static const QString words[] = {"different", "equal"};
        const RecordDescription& of = DescriptionOf(*m_at);
        const auto other = of.make();
        other->SetXmlString(document, false);
        return words[of.areEqual(*m_at, *other)] + ", " + words[of.areEqual(*other, *m_at)];
    }

    const std::shared_ptr<Recorder> m_recorder = std::make_shared<Recorder>();
    std::unique_ptr<ITallyObject> m_root;
    ITallyObject* m_at;
};

void expectExamples(const QString& name)
{
    expectRows("records/" + name + ".txt", [](const QStringList& cells) {
        Example example(cells[0]);
        QStringList told;
        for (const QString& step : cells.mid(1))
            if (const QString words = example.run(unescaped(step)); !words.isNull())
                told += words;
        return told.join("; ");
    });
}

} // namespace

TEST(Records, TakeAndRefuseWhatTheirExamplesTell) { expectExamples("values"); }
TEST(Xml, IsWhatItsExamplesTell) { expectExamples("xml"); }
TEST(Binary, IsWhatItsExamplesTell) { expectExamples("binary"); }
TEST(Losses, AreWhatTheirExamplesTell) { expectExamples("losses"); }
