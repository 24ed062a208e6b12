#pragma once

#include <frequencystore/frequencystore.h>

#include <memory>
#include <optional>

class QTemporaryFile;

using ListType = Velmara::FrequencyStoreListHelper::ListType;

/// The forms in which a list can stand in a file.
enum class Form { Csv, Xml, Tagged, Packed };

/// The form of this name, which is also the extension of its files.
std::optional<Form> formNamed(const QString& name);

/// A file with a list, as the command line tells it.
struct ListFile
{
    QString path; ///< "-" for a standard stream
    QString name; ///< what the operator calls it, visible (see terminal.h)
    Form form;
    ListType type;                              ///< Invalid where nobody told it
    bool skipsBad = false;                      ///< passes over what gives no entry, and warns of it
    std::shared_ptr<const QTemporaryFile> copy; ///< where the path leads to one

    bool isStream() const { return path == "-"; }
};

/// Reads and checks a list of store entries, or of detection results for that list type; warns of what is not as it
/// should be, the first of many like cases. Throws TallyFormException, which tells the place in the file where it is
/// known.
Velmara::FrequencyStoreListHelper readList(const ListFile& file);
/// The same into a helper, but goes on behind rows of CSV that are no entries, and gives all that there is to say of
/// the file.
QStringList readThoroughly(ListFile file, Velmara::FrequencyStoreListHelper& helper);

/// Writes the list of entries, or detection results as CSV. Warns of what a reader will not get back. Throws
/// TallyFormException; a file that was there then stays as it was, and standard output gets nothing.
void writeList(const ListFile& file, Velmara::FrequencyStoreListHelper& helper);
/// Reads a list of store entries and writes it, as both above do, but entry by entry, so that it may be longer than
/// memory; gives their count. None, with nothing written, if the list's own values stand behind its entries.
std::optional<qint64> copyList(const ListFile& from, const ListFile& to);
/// Writes a file, or to standard output for "-". Throws as above.
void writeBytes(const QString& path, const QByteArray& bytes);
