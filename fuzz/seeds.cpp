/// Makes the inputs that every fuzz run starts from and every test run replays, in a folder for each target: the
/// examples, the golden files, a random record of each class in all forms, and whatever once broke something.

#include "base/errorhandler.h"
#include "frequencystore/records/allrecords.h"
#include "fuzz/dictionary.h"
#include "fuzz/subject.h"
#include "tests/hextext.h"
#include "tests/randomfiller.h"
#include "tests/recordforms.h"

#include <QDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstdio>

using namespace Velmara;
using namespace Velmara::fuzz;

namespace {

QString source(const QString& folder) { return VELMARA_SOURCE "/" + folder; }

class Seeds
{
public:
    explicit Seeds(const QString& root) : m_root(root) {}

    void add(const QString& target, const QString& name, const QByteArray& input) const
    {
        save(target + '/' + name, input);
    }
    void save(const QString& name, const QByteArray& content) const
    {
        QFile file(m_root.filePath(name));
        QDir().mkpath(QFileInfo(file).path());
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "seeds can be written");
    }

    /// Inputs for all that read records.
    void addRecord(const QString& name, const Subject& subject) const
    {
        static constexpr const char* targets[] = {"xml", "tagged", "packed", "compressed"};
        const QByteArray choice = choiceOf(subject);
        for (const Form form : allForms) {
            const QByteArray bytes = write(subject, form);
            add(targets[int(form)], name, choice + '\0' + bytes);
            add("forms", name + '.' + targets[int(form)], choice + char(form) + bytes);
        }
    }

private:
    QDir m_root;
};

QFileInfoList filesIn(const QString& folder, const QString& pattern)
{
    return QDir(folder).entryInfoList({pattern}, QDir::Files);
}

/// An empty record of the class that a document is of.
Subject subjectOf(const QByteArray& document)
{
    QXmlStreamReader reader(document);
    reader.readNextStartElement();
    const auto& all = RecordDescriptions();
    const auto isNamed = [&](const RecordDescription* record) { return record->element == reader.name(); };
    const auto found = std::find_if(all.begin(), all.end(), isNamed);
    require(found != all.end(), "a seed document is that of a record");
    return {**found};
}

void addDocument(const Seeds& seeds, const QFileInfo& file)
{
    const QByteArray document = contentOf(file.filePath());
    for (const bool isValidating : {true, false}) {
        Subject subject = subjectOf(document);
        subject.record->SetValidate(isValidating);
        read(subject, Form::Xml, document);
        const QString name = file.baseName() + (isValidating ? "" : ".unvalidated");
        seeds.addRecord(name, subject);
        seeds.add("xml", name + ".document", choiceOf(subject) + '\0' + document);
        seeds.add("documents", name, "seed" + QByteArray(1, char(isValidating)) + document);
    }
}

void addLists(const Seeds& seeds, const QFileInfo& file)
{
    const QString document = QString::fromUtf8(contentOf(file.filePath()));
    FrequencyStoreListHelper lists;
    lists.SetXmlString(document, false) || lists.GetFrequencyStoreList().SetXmlString(document, false)
        || lists.GetDetectionResultList().SetXmlString(document, false);
    for (int type = 0; type < FrequencyStoreListHelper::GetListTypes().size(); ++type)
        seeds.add("csvexport", file.baseName() + '.' + QString::number(type), char(type << 1) + packed(lists));
}

void addList(const Seeds& seeds, const QVector<FrequencyStoreEntry>& entries)
{
    FrequencyStoreList list;
    list.SetFrequencyStoreEntry(entries);
    const QByteArray document = list.GetXmlString().toUtf8();
    seeds.add("documents", "list", "seed\1" + document);
    const QByteArray forms[] = {document, list.GetBinaryRepresentationAsQByteArray(), packed(list),
                                list.GetCompressedBinaryRepresentationAsQByteArray()};
    for (int form = 0; form < 4; ++form)
        for (const bool isValidating : {true, false})
            seeds.add("lists", QString("%1.%2").arg(form).arg(isValidating),
                      QByteArray(1, char(form % 3 + form / 3)) + '\0' + char(isValidating << 1) + forms[form]);
}

template <class R> void addRandom(const Seeds& seeds)
{
    Subject subject{DescriptionOf(R())};
    const R record = RandomFiller(subject.of.id).setEverything().template make<R>();
    read(subject, Form::Packed, packed(record));
    seeds.addRecord(R::className, subject);
    if constexpr (std::is_same_v<R, FrequencyStoreEntry>)
        addList(seeds, {record, record});
}

template <class... R> void addAllRandom(const Seeds& seeds, RecordTypes<R...>) { (addRandom<R>(seeds), ...); }

void addTable(const Seeds& seeds, const QFileInfo& file)
{
    const QByteArray content = contentOf(file.filePath());
    seeds.add("csvloader", file.baseName(), '\0' + content);
    for (int type = 0; type < FrequencyStoreListHelper::GetListTypes().size(); ++type)
        for (const QByteArray& target : {QByteArray("csvimport"), QByteArray("lists")})
            seeds.add(target, file.baseName() + '.' + QString::number(type),
                      (target == "lists" ? "\3" : "") + QByteArray(1, char(type)) + '\0' + content);
}

void addFound(const Seeds& seeds)
{
    for (const QFileInfo& target : QDir(source("fuzz/found")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
        for (const QFileInfo& file : filesIn(target.filePath(), "*.hex"))
            seeds.add(target.fileName(), file.baseName(), fromHexText(contentOf(file.filePath())));
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
        return 2;
    }
    ErrorHandler::Instance().SetMask(0);
    const Seeds seeds(QString::fromLocal8Bit(arguments[1]));
    for (const char* folder : {"examples", "tests/fixtures"})
        for (const QFileInfo& file : filesIn(source(folder), "*.xml")) {
            addDocument(seeds, file);
            addLists(seeds, file);
        }
    for (const QFileInfo& file : filesIn(source("examples"), "*.csv"))
        addTable(seeds, file);
    addAllRandom(seeds, AllRecords());
    addFound(seeds);
    seeds.save("words.dict", dictionary());
}
