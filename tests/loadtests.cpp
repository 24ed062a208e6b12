/// Loads that fail: where they say it was, what they leave, and how nothing of them stays.

#include "exchangefixture.h"
#include "recordvalues.h"

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

FrequencyStoreList listOf(const QStringList& types)
{
    const QString entries = "Type='" + types.join("'\nType='") + "'";
    FrequencyStoreList list;
    list.SetFrequencyStoreEntry(
        recordsIn<FrequencyStoreEntry>(entries, "FFM_Settings/Frequency='1e8' FFM_Settings/IFBandwidth='8300'"));
    return list;
}

QStringList typesOf(const FrequencyStoreList& list)
{
    QStringList types;
    for (const FrequencyStoreEntry& entry : list.GetFrequencyStoreEntry())
        types += entry.GetType();
    return types;
}

/// The bytes of a file: of a text, or else of two entries.
QByteArray contentOf(const QString& form, const QString& text)
{
    if (!text.isEmpty())
        return text.toUtf8();
    const FrequencyStoreList two = listOf({"one", "two"});
    if (form == "packed")
        return packed(two);
    return form == "tagged" ? two.GetBinaryRepresentationAsQByteArray()
                            : two.GetCompressedBinaryRepresentationAsQByteArray();
}

/// What is done to a file's content: its last bytes cut off, or the length of the second entry's text made another.
QByteArray damaged(QByteArray content, const QString& damage)
{
    if (damage == "damaged")
        return content.replace(content.indexOf("two") - 1, 1, "\x70");
    return content.chopped(damage.section(' ', 1).toInt());
}

bool load(const QString& form, const QString& path, FrequencyStoreList& list)
{
    if (form == "xml")
        return list.LoadXml(path);
    if (form == "csv")
        return FileHandling().ImportCSV(path, list, ListType::Suppress);
    if (form != "packed")
        return list.LoadBinary(path);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QDataStream stream(&file);
    list.SetVersionSpecificBinaryWithoutValidation(stream);
    return stream.status() == QDataStream::Ok;
}

/// A list of one entry, and what a load into it comes to.
struct Attempt
{
    FrequencyStoreList list = listOf({"zero"});
    std::shared_ptr<Recorder> logger = std::make_shared<Recorder>();
    QString outcome; ///< the result, or the message of the exception

    template <class Load> explicit Attempt(Load load)
    {
        list.SetLogger(logger);
        list.SetName("kept");
        try {
            outcome = load(list) ? "true" : "false";
        } catch (const TallyFormException& failure) {
            outcome = failure.GetMessage();
        }
    }
};

} // namespace

using Loading = ExchangeTest;

TEST_F(Loading, ComesToWhatItsExamplesTell)
{
    expectCases("loads.txt", [&](const QString& head, const QString& given) {
        SCOPED_TRACE(head.toStdString());
        const QString form = head.section(' ', 0, 0);
        const QString file = write("file", damaged(contentOf(form, given), head.section(' ', 1)));
        Attempt attempt([&](FrequencyStoreList& list) { return load(form, file, list); });
        attempt.list.Check(); // it can be used

        Attempt whole([&](FrequencyStoreList& list) {
            return LoadWhole(list, [&](FrequencyStoreList& fresh) { return load(form, file, fresh); });
        });
        const bool isLoaded = attempt.outcome == "true";
        EXPECT_EQ(whole.outcome, attempt.outcome);
        EXPECT_EQ(whole.logger->m_messages, attempt.logger->m_messages);
        EXPECT_EQ(typesOf(whole.list), isLoaded ? typesOf(attempt.list).mid(1) : QStringList{"zero"});
        EXPECT_EQ(whole.list.IsNameSet(), !isLoaded);
        whole.list.Check(); // which hands the logger down to what was appended
        EXPECT_EQ(std::as_const(whole.list).GetFrequencyStoreEntry()[0].GetLogger(), whole.logger);

        const QStringList trace{attempt.outcome, typesOf(attempt.list).join(' ')};
        return (trace + attempt.logger->m_messages).join('\n').replace(file, "FILE") + '\n';
    });
}

TEST_F(Loading, AllOrNothingFollowsTheFlag)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    const QString file = write("list", "<FrequencyStoreList Version='1.2'><FrequencyStoreEntry Version='2.0'><What/>"
                                       "</FrequencyStoreEntry></FrequencyStoreList>");
    EXPECT_TRUE(LoadWhole(list, [&](FrequencyStoreList& fresh) { return fresh.LoadXml(file); }));
    EXPECT_FALSE(list.GetValidate());
    EXPECT_FALSE(std::as_const(list).GetFrequencyStoreEntry()[0].GetValidate());
}

TEST_F(Loading, WhatCannotBeReadTouchesNothing)
{
    for (const QString& file : {path("missing"), path("")}) {
        for (const char* form : {"xml", "tagged", "csv"}) {
            const Attempt attempt([&](FrequencyStoreList& list) { return load(form, file, list); });
            EXPECT_EQ(attempt.outcome, "false");
            EXPECT_EQ(typesOf(attempt.list), QStringList{"zero"});
            EXPECT_TRUE(attempt.logger->m_messages.join('|').startsWith(file + ": ")) << form;
        }
    }
}

TEST_F(Loading, ALoggerMayTakeItselfOffTheListThatItHearsOf)
{
    static FrequencyStoreList list;
    static QStringList events;
    struct Leaver : Logger
    {
        ~Leaver() override { events += "gone"; }
        void Log(const QString&) override { list.ResetLogger(), events += "told"; }
    };
    for (const char* form : {"xml", "csv"}) {
        events.clear();
        list.SetLogger(std::make_shared<Leaver>());
        EXPECT_FALSE(load(form, path("missing"), list));
        EXPECT_EQ(events, QStringList({"told", "gone"}));
    }
}
