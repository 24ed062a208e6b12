/// Builds a list of one channel, saves it, and loads it again.

#include <frequencystore/frequencystore.h>

#include <cstdio>

using namespace Velmara;

int main()
{
    try {
        FrequencyStoreEntry entry;
        entry.SetType(QStringLiteral("airband"));
        entry.GetFFM_Settings().GetFrequency().SetValue(121.5e6);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(8300);
        entry.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod::AM);

        FrequencyStoreList list;
        list.SetName(QStringLiteral("My channels"));
        list.AppendFrequencyStoreEntry(entry); // throws if the entry lacks anything it must have

        const QString path = QStringLiteral("channels.xml");
        FrequencyStoreList loaded;
        if (!list.SaveXml(path) || !loaded.LoadXml(path))
            return 1;
        const FrequencyStoreEntry& first = std::as_const(loaded).GetFrequencyStoreEntry().first();
        std::printf("%s at %.0f\n", qPrintable(first.GetType()), first.GetFFM_Settings().GetFrequency().GetValue());
        return 0;
    } catch (const TALLYFORM::TallyException& failure) {
        std::fprintf(stderr, "%s\n", failure.what()); // names the object and the member
        return 1;
    }
}
