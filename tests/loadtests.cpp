/// Loads that fail: where they say it was, what they leave, and how nothing of them stays.

#include "exchangefixture.h"

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

class Recorder : public Logger
{
public:
    void Log(const QString& message) override { m_messages += message; }

    QStringList m_messages;
};

/// Takes itself off the list that owns it while it is told something.
class Leaver : public Logger
{
public:
    Leaver(FrequencyStoreList& list, QStringList& events) : m_list(list), m_events(events) {}
    ~Leaver() override { m_events += "gone"; }
    void Log(const QString&) override
    {
        QStringList& events = m_events;
        m_list.ResetLogger();
        events += "told";
    }

private:
    FrequencyStoreList& m_list;
    QStringList& m_events;
};

FrequencyStoreList listOf(const QStringList& types)
{
    FrequencyStoreList list;
    for (const QString& type : types) {
        FrequencyStoreEntry entry;
        entry.SetType(type);
        entry.GetFFM_Settings().GetFrequency().SetValue(1e8);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(8300);
        list.AppendFrequencyStoreEntry(entry);
    }
    return list;
}

QStringList typesOf(const FrequencyStoreList& list)
{
    QStringList types;
    for (const FrequencyStoreEntry& entry : list.GetFrequencyStoreEntry())
        types += entry.GetType();
    return types;
}

/// What an operation gives: its result, or the message of its exception.
template <class Operation> QString outcomeOf(Operation operation)
{
    try {
        return operation() ? "true" : "false";
    } catch (const TallyFormException& failure) {
        return failure.GetMessage();
    }
}

enum class Form { Xml, Binary, Packed, Csv };

bool load(Form form, const QString& path, FrequencyStoreList& list)
{
    switch (form) {
    case Form::Xml: return list.LoadXml(path);
    case Form::Binary: return list.LoadBinary(path);
    case Form::Csv: return FileHandling().ImportCSV(path, list, ListType::Suppress);
    case Form::Packed: break;
    }
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QDataStream stream(&file);
    list.SetVersionSpecificBinaryWithoutValidation(stream);
    return stream.status() == QDataStream::Ok;
}

struct Case
{
    const char* name;
    Form form;
    QByteArray content;
    QString outcome;
    QString reason;    ///< what the logger is told behind the name of the file, if anything
    QStringList taken; ///< the entries that were read
};

const QByteArray opening = "<FrequencyStoreList Version=\"1.2\">\n";
const QByteArray settings = "<FFM_Settings Version=\"1.2\"><Frequency>1</Frequency><IFBandwidth>1</IFBandwidth>"
                            "</FFM_Settings></FrequencyStoreEntry>\n";

QByteArray xmlEntry(const QByteArray& members) { return "<FrequencyStoreEntry Version=\"2.0\">" + members + settings; }

/// Files that are whole, and files broken in their second entry or ahead of the first.
QVector<Case> cases()
{
    const FrequencyStoreList two = listOf({"one", "two"});
    const QByteArray frame = two.GetBinaryRepresentationAsQByteArray(), body = packed(two);
    const auto damaged = [&](QByteArray bytes) {
        return bytes.replace(bytes.indexOf("two") - 1, 1, "\x70"); // the length of the text
    };
    const QByteArray documents = opening + xmlEntry("<Type>one</Type>");
    const QString incomplete
        = "FrequencyStoreList: Tried to append not completely defined or invalid item FrequencyStoreEntry.";
    const QString length
        = "FrequencyStoreEntry::SetBinary(...): Length error occurred during processing of binary representation";
    return {
        {"xml",
         Form::Xml,
         documents + xmlEntry("<Type>two</Type>") + "</FrequencyStoreList>",
         "true",
         "",
         {"one", "two"}},
        {"xml that breaks off",
         Form::Xml,
         documents + "<Freq",
         "false",
         ", line 3, column 5: Premature end of document.",
         {"one"}},
        {"xml of unknown content",
         Form::Xml,
         documents + xmlEntry("<What/>"),
         "Unknown Tag 'What' in 'FrequencyStoreEntry'.",
         ", line 3, column 42: Unknown Tag 'What' in 'FrequencyStoreEntry'.",
         {"one"}},
        {"xml of another root",
         Form::Xml,
         "<Note/>",
         "false",
         ", line 1, column 7: The root element is 'Note', not 'FrequencyStoreList'.",
         {}},
        {"tagged", Form::Binary, frame, "true", "", {"one", "two"}},
        {"compressed", Form::Binary, qCompress(frame), "true", "", {"one", "two"}},
        {"tagged with a wrong length",
         Form::Binary,
         damaged(frame),
         length,
         ", byte " + QString::number(frame.size()) + ": " + length,
         {"one"}},
        {"tagged that breaks off",
         Form::Binary,
         frame.chopped(1),
         "The binary representation of 'FrequencyStoreList' is of another length than it says.",
         ", byte 8: The binary representation of 'FrequencyStoreList' is of another length than it says.",
         {}},
        {"tagged of another class",
         Form::Binary,
         listOf({"one"}).GetFrequencyStoreEntry()[0].GetBinaryRepresentationAsQByteArray(),
         "false",
         ": No binary representation of 'FrequencyStoreList'.",
         {}},
        {"packed", Form::Packed, body, "true", "", {"one", "two"}},
        {"packed that breaks off", Form::Packed, body.chopped(20), incomplete, "", {"one"}},
        {"csv", Form::Csv, "Type;Frequency;IFBandwidth\none;1;1\ntwo;1;1\n", "true", "", {"one", "two"}},
        {"csv without a type",
         Form::Csv,
         "Type;Frequency;IFBandwidth\none;1;1\n;1;1\n",
         "false",
         ", line 3, column 'Type': Data is corrupted. 'Type' is not allowed to be empty!",
         {"one"}},
        {"csv of bad rows",
         Form::Csv,
         "Type;Frequency;IFBandwidth\none;1;1\ntwo\n",
         "false",
         ", line 3: Data is corrupt!. It can't be assigned to the header!",
         {}},
        {"csv that does not begin", Form::Csv, "#\n", "false", ", line 1: # is empty!", {}},
    };
}

} // namespace

class Loading : public ExchangeTest
{
protected:
    QString place(const Case& each) { return write(each.name, each.content); }
};

TEST_F(Loading, SaysWhereItFailedAndKeepsWhatStoodAheadOfThat)
{
    for (const Case& each : cases()) {
        SCOPED_TRACE(each.name);
        const auto logger = std::make_shared<Recorder>();
        FrequencyStoreList list = listOf({"zero"});
        list.SetLogger(logger);
        const QString file = place(each);
        EXPECT_EQ(outcomeOf([&] { return load(each.form, file, list); }), each.outcome);
        EXPECT_EQ(typesOf(list), QStringList{"zero"} + each.taken);
        EXPECT_EQ(logger->m_messages,
                  each.reason.isEmpty() ? QStringList() : QStringList{file + QString(each.reason).replace("#", file)});
        EXPECT_EQ(outcomeOf([&] {
                      list.Check();
                      return true;
                  }),
                  "true")
            << "can be used";
        list.Reset();
        EXPECT_FALSE(list.AnyData());
    }
}

TEST_F(Loading, AllOrNothingIsLoadedIntoAFreshObject)
{
    for (const Case& each : cases()) {
        SCOPED_TRACE(each.name);
        const auto logger = std::make_shared<Recorder>();
        FrequencyStoreList list = listOf({"zero"});
        list.SetLogger(logger);
        list.SetName("kept");
        const QByteArray before = packed(list);
        const QString file = place(each);
        const auto into = [&](FrequencyStoreList& fresh) { return load(each.form, file, fresh); };
        EXPECT_EQ(outcomeOf([&] { return LoadWhole(list, into); }), each.outcome);
        EXPECT_EQ(packed(list) == before, each.outcome != "true");
        EXPECT_EQ(typesOf(list), each.outcome == "true" ? each.taken : QStringList{"zero"});
        EXPECT_EQ(list.IsNameSet(), each.outcome != "true");
        EXPECT_EQ(logger->m_messages.isEmpty(), each.reason.isEmpty());
        list.Check(); // which hands the logger down to what was appended
        EXPECT_EQ(list.GetLogger(), logger);
        EXPECT_EQ(std::as_const(list).GetFrequencyStoreEntry()[0].GetLogger(), logger);
    }
}

TEST_F(Loading, AllOrNothingFollowsTheFlag)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    const QString file = write("list", opening + xmlEntry("<What/>") + "</FrequencyStoreList>");
    EXPECT_TRUE(LoadWhole(list, [&](FrequencyStoreList& fresh) { return fresh.LoadXml(file); }));
    EXPECT_FALSE(list.GetValidate());
    EXPECT_FALSE(std::as_const(list).GetFrequencyStoreEntry()[0].GetValidate());
}

TEST_F(Loading, WhatCannotBeReadTouchesNothing)
{
    for (const QString& file : {path("missing"), path("")}) {
        const auto logger = std::make_shared<Recorder>();
        FrequencyStoreList list = listOf({"zero"});
        list.SetLogger(logger);
        EXPECT_FALSE(list.LoadXml(file));
        EXPECT_FALSE(list.LoadBinary(file));
        EXPECT_FALSE(FileHandling().ImportCSV(file, list, ListType::Suppress));
        EXPECT_EQ(typesOf(list), QStringList{"zero"});
        ASSERT_EQ(logger->m_messages.size(), 3);
        for (const QString& message : logger->m_messages)
            EXPECT_TRUE(message.startsWith(file + ": ")) << qPrintable(message);
    }
}

TEST_F(Loading, ALoggerMayTakeItselfOffTheListThatItHearsOf)
{
    QStringList events;
    FrequencyStoreList list;
    list.SetLogger(std::make_shared<Leaver>(list, events));
    EXPECT_FALSE(FileHandling().ImportCSV(path("missing"), list, ListType::Suppress));
    EXPECT_EQ(events, QStringList({"told", "gone"}));
}
